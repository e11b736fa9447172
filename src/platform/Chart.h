// Port: a chart of one line over a horizontal axis, with its scales and units.
#pragma once

#include <string>
#include <vector>

#include "platform/Controls.h"

namespace velmoor {

struct ChartPoint {
  double x = 0;
  double y = 0;
  bool operator==(const ChartPoint&) const = default;
};

// A vertical line with a word at its head.
struct ChartMark {
  double x = 0;
  std::string text;
  bool operator==(const ChartMark&) const = default;
};

struct ChartData {
  std::string xTitle;  // "Time (s)"
  std::string yTitle;
  std::vector<ChartPoint> line;  // ascending in x
  std::vector<ChartMark> marks;
  // The stretch of x that is set off; equal: none.
  double shadeFrom = 0;
  double shadeTo = 0;
};

class Chart : public Control {
 public:
  // Draws `data` with scales that hold all of its line; without points only `emptyText`.
  virtual void Show(const ChartData& data, const std::string& emptyText) = 0;
};

}  // namespace velmoor
