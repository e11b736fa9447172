// The format of a project file: its version, and the steps that bring an older file up to it.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "project/data/ProjectContents.h"

namespace velmoor {

// A project whose format is newer than this program's; what() tells both versions.
class NewerFormat : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Brings the working file of a project up to the present format, step by step, in one transaction:
// every version that was ever written is understood. What the template has and the project does not
// is added with the template's value and, where the amplifier has it too, marked to download;
// returns what was. Throws NewerFormat, and DatabaseError for a file that is no project, or holds
// what none does; the file is then as it was.
[[nodiscard]] std::vector<LaidAnew> BringUpToDate(const std::string& workingFile,
                                                  const std::string& templatePath);

}  // namespace velmoor
