// What the working file says of its rows, against what the amplifier holds.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "fault_campaign/Wiring.h"
#include "project/clsHX7Project.h"

namespace velmoor::campaign {

// One row of the working file, as it goes over the wire.
struct FileRow {
  std::string table;
  std::vector<std::string> questions;  // "POST5"
  std::vector<std::string> values;     // as they are sent
  std::vector<std::string> shown;      // as the user sees them
  std::string mark;                    // of what was not sent yet

  [[nodiscard]] const std::string& Name() const { return questions.front(); }
  [[nodiscard]] bool IsMarked() const { return mark == "1"; }
};

// All rows that are sent, in a fixed order. Throws DatabaseError where the file cannot be read.
[[nodiscard]] std::vector<FileRow> ReadRows(const std::string& workingFile);

// Rows that the program never sends as the file has them: the axis digit, and what is read only.
using Exempt = std::set<std::string>;

enum class Rows { unmarked, all };

// What is wrong with rows that should be as the amplifier holds them.
[[nodiscard]] std::vector<std::string> Untruths(const std::vector<FileRow>& rows, Wiring& wiring,
                                                const Exempt& exempt, Rows which);

// What is wrong with the project in itself: rows of the file that are half filled or whose two
// forms disagree, memory that differs from the file, flags that do not offer what is marked.
[[nodiscard]] std::vector<std::string> Inconsistencies(clsHX7Project& project,
                                                       const std::vector<FileRow>& rows);

}  // namespace velmoor::campaign
