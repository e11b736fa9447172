// What a change of the machine makes of every parameter: one rule a parameter, and no copy of any.
//
// Pure: the same store and the same change give the same result, which is shown before the commit
// and is what the commit writes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "mechanics/MachineDescription.h"
#include "session/Project.h"

namespace velmoor {

struct ParameterStep {
  ParameterChanges changes;           // the machine's own among them
  std::vector<RescaledValue> values;  // what is shown of it; the machine's own are not
  // Parameters in which a limit replaced a value, with the tool that names them: homing and over
  // travel name theirs, the others are the editor's.
  std::map<std::string, Tool> limited;
};

[[nodiscard]] ParameterStep StepParameters(const ParameterStore& store,
                                           const MachineChange& change);

// Every value in units that `changes` leaves alone keeps its number in the units after them, and
// its counts change: adds that to the changes, and what it limited to `limited`.
void KeepNumbers(const ParameterStore& store, const Units& after, ParameterChanges& changes,
                 std::map<std::string, Tool>& limited);

// A change of system together with the resolution discards what the old numbers meant: index and
// zone table are emptied, and travel limits go back to the catalogue's.
[[nodiscard]] bool DiscardsData(const MachineDescription& from, const MachineDescription& to);

}  // namespace velmoor
