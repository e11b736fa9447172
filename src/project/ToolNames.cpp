#include "project/ToolNames.h"

namespace velmoor {

std::string ToolName(Tool tool) {
  switch (tool) {
    case Tool::editor:
      return "All Parameters";
    case Tool::tuning:
      return "Tuning Parameters";
    case Tool::flexibleIO:
      return "Flexible I/O Parameters";
    case Tool::homing:
      return "Homing Parameters";
    case Tool::interface:
      return "Interface Parameters";
    case Tool::mechanicalSystem:
      return "Mechanical System Parameters";
    case Tool::overTravel:
      return "Over Travel Parameters";
    case Tool::position:
      return "Index Table";
    case Tool::jog:
      return "Jog Table";
    case Tool::zone:
      return "Zone Table";
  }
  return {};
}

}  // namespace velmoor
