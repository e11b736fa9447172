// What a rehearsal did, over time: the curves of the axis, and as a timing diagram the steps, the
// outputs and the zones; and the stretch of it that the user looks at.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/TimeChart.h"
#include "rehearsal/Rehearsal.h"
#include "windows/ShownStretch.h"

namespace velmoor {

class RehearsalChart {
 public:
  // Shows the whole.
  void Take(std::vector<RehearsalSample> samples, const RehearsalResult& result,
            const RehearsedProgramme& programme);
  void Clear();
  [[nodiscard]] const std::vector<RehearsalSample>& Samples() const { return samples_; }

  // Looks closer or farther around `time`, and never beyond the whole.
  void Zoom(double time, double factor) { stretch_.Zoom(time, factor); }
  void Pan(double seconds) { stretch_.Pan(seconds); }
  void ShowWhole() { stretch_.ShowWhole(); }
  // Sets a stretch off, and moves to it where it is out of sight.
  void PointAt(double from, double to);
  [[nodiscard]] TimeChartData Visible(int widthInPoints) const;

 private:
  // A count divided by `factor` is a number in the lane's unit.
  void AddCurve(TimeChartData& data, int width, TimeLane lane, double factor,
                std::int32_t RehearsalSample::*value) const;

  std::vector<RehearsalSample> samples_;
  Units units_;
  std::vector<TimeBar> steps_, zones_;
  std::vector<std::vector<ChartPoint>> outputs_;  // where each changes
  std::vector<ChartMark> marks_;
  ShownStretch stretch_;
  double shadeFrom_ = 0, shadeTo_ = 0;
};

}  // namespace velmoor
