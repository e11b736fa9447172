// The machine as its parameters describe it, and a change of it.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "mechanics/GearRatio.h"
#include "project/data/ParameterStore.h"

namespace velmoor {

struct MachineDescription {
  Machine machine;
  std::string distanceUnits = "mm";
  std::string timeUnits = "seconds";

  [[nodiscard]] Units ShownUnits() const {
    return Units::Of(machine.resolution, distanceUnits, timeUnits);
  }
  // What the gear ratio hangs on is the same.
  [[nodiscard]] bool SameGear(const MachineDescription& other) const;
  // The unit fits the system; else "Selected system cannot have rotary units!" and the like.
  [[nodiscard]] std::string UnitFault() const;
};

// Reads the description out of the store's parameters. Throws ProjectDataError and NumberError.
[[nodiscard]] MachineDescription DescribeMachine(const ParameterStore& store);
// The same out of values in the controller's form, by name.
using ControllerValues = std::function<std::string(const char* strPn)>;
[[nodiscard]] MachineDescription DescribeMachine(const ControllerValues& valueOf);
// Its gear terms as the store has them, which another tool or an upload may have set.
[[nodiscard]] GearRatio StoredRatio(const ParameterStore& store);

// What the user makes of the machine: nothing of it is the project's before it is committed.
struct MachineChange {
  MachineDescription to;
  GearRatio ratio;
  // Values of Pn81E, Pn81F and Pn820 to Pn822 that were typed, in the new units.
  std::map<std::string, std::string> typed;
};

// The eight parameters of the description and the two gear terms, with the checksum. Marked; those
// alone that differ from the store's.
[[nodiscard]] ParameterChanges DescriptionChanges(const ParameterStore& store,
                                                  const MachineChange& change);

}  // namespace velmoor
