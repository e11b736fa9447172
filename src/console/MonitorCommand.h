// velmoorctl monitor: values over time, of one axis or of all axes of a line.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "console/CommandContext.h"
#include "console/TableOut.h"
#include "online/MonitoredItems.h"

namespace velmoor {

// By the options --items and --count. Both throw UsageError.
[[nodiscard]] std::vector<MonitoredItem> ItemsChosen(const Context& context);
[[nodiscard]] std::int64_t PassesChosen(const Context& context);
[[nodiscard]] TableOut::Column ColumnOf(const MonitoredItem& item);
// The values of the axis that the device speaks with, as cells. False: one of them could not be
// read, of which the user was told.
[[nodiscard]] bool ReadItems(clsHX7Helix7& helix, const std::vector<MonitoredItem>& items,
                             CsvRow& cells);

// The two cells in front: the moment, and the seconds since the monotonic time `start`.
[[nodiscard]] CsvRow MomentCells(std::chrono::milliseconds start);

[[nodiscard]] Commands MonitorCommands();

}  // namespace velmoor
