// The format of a project file: its version, and the steps that bring an older file up to it.
#pragma once

#include <string>
#include <vector>

#include "project/data/ProjectContents.h"

namespace velmoor {

// A project whose format is newer than this program's; what() tells both versions.
class NewerFormat : public DatabaseError {
 public:
  explicit NewerFormat(const std::string& versions)
      : DatabaseError(DatabaseError::Kind::foreign, versions) {}
};
// For the user, with the project's file title in front.
[[nodiscard]] std::string InWords(const NewerFormat& newer, const std::string& fileTitle);

// What becomes of such a project at its opening.
enum class NewerProject { refuse, readOnly };

// Throws NewerFormat, and DatabaseError for a version that is none.
void RefuseNewer(Database& project);

// Looks whether a file of a newer format holds all that this program would show of it, beside
// whatever else. Throws DatabaseError where it does not.
void CheckReadable(const std::string& workingFile, const std::string& templatePath);

// Brings the working file of a project up to the present format: every version that was ever
// written is understood. Columns that an older format lacks are added first, then its steps follow
// in one transaction. What the template has and the project does not is added with the template's
// value and, where the amplifier has it too, marked to download; returns which records were. Throws
// NewerFormat, and DatabaseError for a file that is no project, or holds what none does.
[[nodiscard]] std::vector<LaidAnew> BringUpToDate(const std::string& workingFile,
                                                  const std::string& templatePath);

}  // namespace velmoor
