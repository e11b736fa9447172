// The menu of the connection: the ports and what stands behind them, the speeds, and their choice.
//
// Owned by the main window, whose commands it fills; a submenu of Tools that the toolbar shows too,
// under the state of the connection in words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "link/BaudRates.h"
#include "platform/SerialPorts.h"
#include "session/Session.h"
#include "session/Tools.h"

namespace velmoor {

// The port that the entry stands for, from 0; nothing for another command.
[[nodiscard]] std::optional<std::int16_t> PortOfCommand(MainCommand command);
// The speed in bits per second, likewise.
[[nodiscard]] std::optional<std::int32_t> RateOfCommand(MainCommand command);

// Shows what stands behind the ports now, and which port and speed are the session's.
void ShowConnectionMenu(const layouts::frmMain& window, const Session& session);
// Offers ports and speeds, or the end of the search that is under way.
void EnableConnectionMenu(const layouts::frmMain& window, bool ready, bool searching);

// "ttyUSB0"; short enough for a list, "none" where nothing stands behind the port.
[[nodiscard]] std::string DeviceName(const PortLook& look);
// "free", "absent", "in use", "no access"; "connected" of the session's own port.
[[nodiscard]] const char* PortWord(const PortLook& look, std::int16_t com, const Session& session);

}  // namespace velmoor
