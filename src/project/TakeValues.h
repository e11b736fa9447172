// Single values of another project, or of an earlier state of the same one, put into a project.
#pragma once

#include <string>
#include <vector>

#include "mechanics/MachineDescription.h"
#include "project/ProjectCompare.h"

namespace velmoor {

class clsHX7Project;

// A place where two projects differ, and what is wanted there, in the amplifier's form.
struct WantedValue {
  ProjectDifference place;
  std::string controller;
};

// Puts them into the project as if somebody had typed what shows them, and marks what changed. A
// value of the machine brings `machine` as a whole, before the others. Each refusal is a line of
// the result, and of what was refused together nothing is changed; empty: all were taken, and the
// project needs saving. Edits that windows hold of the tables are dropped.
[[nodiscard]] std::vector<std::string> TakeValues(clsHX7Project& project,
                                                  const std::vector<WantedValue>& values,
                                                  const MachineDescription& machine);

// The machine that the file describes. Throws DatabaseError.
[[nodiscard]] MachineDescription MachineAt(const std::string& path);

}  // namespace velmoor
