// The command with which the amplifier stores a table.
#pragma once

#include "link/CommandWords.h"
#include "session/Tools.h"

namespace velmoor {

// Of the index table for any tool that is neither the jog nor the zone table.
[[nodiscard]] inline SimpleCommand StoreCommandOf(Tool table) {
  if (table == Tool::jog) return SimpleCommand::jogStore;
  return table == Tool::zone ? SimpleCommand::zoneStore : SimpleCommand::indexStore;
}

}  // namespace velmoor
