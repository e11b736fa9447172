// The items of a transfer: one tool, or a group of them, as the menu and the command line name
// them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/Tools.h"

namespace velmoor {

struct TransferItem {
  std::optional<MainCommand> command{};  // of the menu; none: made by JoinedItem
  std::string name{};                    // "Jog Table"
  std::vector<Tool> tools{};
};

[[nodiscard]] const std::vector<TransferItem>& UploadItemsOfMenu();
// The machine's description travels with the parameters that it is made of.
[[nodiscard]] const std::vector<TransferItem>& DownloadItemsOfMenu();

// The first item that begins with the tool, out of those; it must be there.
[[nodiscard]] const TransferItem& ItemOf(const std::vector<TransferItem>& items, Tool tool);
// Several tools as one item, in their order: "Index Table, Jog Table".
[[nodiscard]] TransferItem JoinedItem(const std::vector<TransferItem>& items,
                                      const std::vector<Tool>& tools);

}  // namespace velmoor
