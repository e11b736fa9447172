// When a tool's values were last sent or read, as the project's file keeps it.
#pragma once

#include <optional>

#include "platform/Database.h"
#include "project/clsHX7Project.h"
#include "session/Tools.h"

namespace velmoor {

// Nothing: the file tells none, or in no form of this program's.
[[nodiscard]] std::optional<LastTransfer> TransferIn(Database& database, Tool tool);
// True: it was another before. The caller commits.
bool PutTransfer(Database& database, Tool tool, const LastTransfer& transfer);

}  // namespace velmoor
