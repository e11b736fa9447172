// The machine on the command line: shown as a table, changed by assignments such as "measure=5".
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Csv.h"

namespace velmoor {

class clsHX7Project;

// name, value and unit, in front of which these names stand: the description, the values in user
// units, and what derives from them.
[[nodiscard]] std::vector<CsvRow> SystemRows(clsHX7Project& project);

using Assignment = std::pair<std::string, std::string>;

// True for system, measure, n1, n2, resolution, units, time, encoder and motor, the rated power in
// watts.
[[nodiscard]] bool IsSystemKey(const std::string& key);
// Takes all assignments together, judges the machine that they make, and commits it, the whole or
// nothing. False: refused, in the words of the machine's window.
[[nodiscard]] bool SetSystem(clsHX7Project& project, std::vector<Assignment> assignments);

}  // namespace velmoor
