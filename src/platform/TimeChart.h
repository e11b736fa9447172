// Port: values over time, one lane for each below the other, over one time axis.
#pragma once

#include <string>
#include <vector>

#include "platform/Chart.h"

namespace velmoor {

enum class LaneShape {
  curve,   // a line over a scale, with head and values
  states,  // low where a point has the value 0, high where it has another, until the next point
  bars     // stretches with a word in each
};

struct TimeBar {
  double from = 0, to = 0;  // s
  std::string text;
  bool operator==(const TimeBar&) const = default;
};

// A curve that is laid over the first one of its lane.
struct TimeCurve {
  std::string name;                // "before"
  std::vector<ChartPoint> points;  // x in seconds, ascending
};

// Curves share the height that the others leave, which are as high as a line of text.
struct TimeLane {
  std::string name;                // "Motor Speed"
  std::string unit = {};           // may be empty; of curves
  int decimals = 0;                // of the values that are told; of curves
  std::vector<ChartPoint> points;  // x in seconds, ascending; none of bars
  LaneShape shape = LaneShape::curve;
  std::vector<TimeBar> bars = {};  // ascending
  // Of curves: laid over the first one, on the same scale, each in a colour of its own.
  std::vector<TimeCurve> others = {};
  std::string firstName = {};  // of the first one, where there are others
};

struct TimeChartData {
  std::vector<TimeLane> lanes;
  double from = 0, to = 1;            // s: the stretch that is shown
  std::vector<ChartMark> marks = {};  // across all lanes, ascending
  // The stretch that is set off, in s; equal: none.
  double shadeFrom = 0, shadeTo = 0;
};

class TimeChart : public Control {
 public:
  // Without lanes only `emptyText` is drawn. The user sees the values under the pointer.
  virtual void Show(const TimeChartData& data, const std::string& emptyText) = 0;
  // What is drawn, as a PNG file's bytes. Throws std::runtime_error.
  [[nodiscard]] virtual std::string Picture() const = 0;
  // The stretch that fits on the screen, one point for each of these: more would not be seen.
  [[nodiscard]] virtual int WidthInPoints() const = 0;

  // The user asks for another stretch.
  Event<double, double> Zoom;  // s under the pointer, factor for the length: below 1 is closer
  Event<double> Pan;           // s towards later times
  Event<double> Point;         // a click, at s
};

}  // namespace velmoor
