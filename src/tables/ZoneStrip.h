// A strip of the axis with its limits, the zones and the travel of the programme, and what is odd
// about the zones. Derived from the cells as they stand.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Drawing.h"
#include "session/Project.h"

namespace velmoor {

class clsHX7Zone;

struct ZoneSpan {
  int zone = 0;  // from 0
  double lower = 0, upper = 0;
};

// The zones that have both limits as numbers.
[[nodiscard]] std::vector<ZoneSpan> SpansOf(const clsHX7Zone& table);

// The sheet on which the strip is drawn.
inline constexpr double kStripWidth = 600, kStripHeight = 92;
// `limits`: the software limits of the axis; `selected`: the zone that is set off, -1: none.
[[nodiscard]] std::vector<DrawingShape> ZoneStrip(const std::vector<ZoneSpan>& zones,
                                                  const std::optional<Travel>& limits,
                                                  const std::optional<Travel>& programme,
                                                  int selected, int resolution);
// One line a remark: a lower limit above the upper, zones that overlap; empty: none.
[[nodiscard]] std::string ZoneRemarks(const std::vector<ZoneSpan>& zones);

}  // namespace velmoor
