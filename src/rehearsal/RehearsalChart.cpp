#include "rehearsal/RehearsalChart.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"
#include "platform/Thinned.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

// The stretches in which `wordOf` a sample stays one and the same; empty words are none.
template <typename WordOf>
std::vector<TimeBar> Stretches(const std::vector<RehearsalSample>& samples, WordOf wordOf) {
  std::vector<TimeBar> bars;
  std::uint32_t held = 0;
  for (const RehearsalSample& sample : samples) {
    const std::uint32_t word = wordOf(sample);
    if (word == held && word != 0) bars.back().to = sample.seconds;
    if (word != held && word != 0) {
      bars.push_back({sample.seconds, sample.seconds, NumberText(word)});
    }
    held = word;
  }
  return bars;
}

std::vector<ChartPoint> Changes(const std::vector<RehearsalSample>& samples, unsigned output) {
  std::vector<ChartPoint> points;
  for (const RehearsalSample& sample : samples) {
    const double state = ((sample.outputs >> output) & 1U) != 0 ? 1 : 0;
    if (points.empty() || points.back().y != state) points.push_back({sample.seconds, state});
  }
  return points;
}

std::vector<TimeBar> Steps(const RehearsalResult& result, const RehearsedProgramme& programme) {
  std::vector<TimeBar> bars;
  for (const RehearsedStep& step : result.steps) {
    const std::string& label = programme.Text(step.step, clsHX7Position::label);
    bars.push_back({step.begin, step.end,
                    NumberText(step.step) + (label.empty() ? std::string() : " " + label)});
  }
  return bars;
}

}  // namespace

void RehearsalChart::Take(std::vector<RehearsalSample> samples, const RehearsalResult& result,
                          const RehearsedProgramme& programme) {
  samples_ = std::move(samples);
  units_ = programme.InUnits();
  steps_ = Steps(result, programme);
  zones_ = Stretches(samples_, [](const RehearsalSample& sample) { return sample.zone; });
  outputs_.clear();
  for (unsigned i = 0; i < kRehearsedOutputs; ++i) outputs_.push_back(Changes(samples_, i));
  marks_.clear();
  for (std::size_t i = 0; i < result.findings.size(); ++i) {
    const RehearsalFinding& finding = result.findings[i];
    if (finding.step > 0) marks_.push_back({finding.seconds, NumberText(i + 1)});
  }
  std::ranges::stable_sort(marks_, {}, &ChartMark::x);
  // What ended it may lie between the last sample and the next.
  double length = samples_.empty() ? 0 : std::max(samples_.back().seconds, result.seconds);
  for (const ChartMark& mark : marks_) length = std::max(length, mark.x);
  shadeFrom_ = shadeTo_ = 0;
  stretch_.SetWhole(0, length);
}

void RehearsalChart::Clear() {
  *this = {};
}

void RehearsalChart::PointAt(double from, double to) {
  shadeFrom_ = from;
  shadeTo_ = to;
  stretch_.MoveTo(from, to);
}

// ---- the lanes

void RehearsalChart::AddCurve(TimeChartData& data, int width, TimeLane lane, double factor,
                              std::int32_t RehearsalSample::*value) const {
  auto first = std::ranges::lower_bound(samples_, stretch_.From(), {}, &RehearsalSample::seconds);
  auto last = std::ranges::upper_bound(samples_, stretch_.To(), {}, &RehearsalSample::seconds);
  if (first != samples_.begin()) --first;
  if (last != samples_.end()) ++last;
  const auto seen =
      Thinned(first, last, width, [value](const RehearsalSample& sample) { return sample.*value; });
  for (const RehearsalSample& sample : seen) {
    lane.points.push_back({sample.seconds, static_cast<double>(sample.*value) / factor});
  }
  data.lanes.push_back(std::move(lane));
}

TimeChartData RehearsalChart::Visible(int widthInPoints) const {
  TimeChartData data{.lanes = {},
                     .from = stretch_.From(),
                     .to = stretch_.To(),
                     .marks = marks_,
                     .shadeFrom = shadeFrom_,
                     .shadeTo = shadeTo_};
  if (samples_.empty()) return data;
  data.lanes.push_back({.name = "Step", .points = {}, .shape = LaneShape::bars, .bars = steps_});
  const auto length = [this](const char* name) {
    return TimeLane{.name = name,
                    .unit = units_.Word(UnitKind::distance),
                    .decimals = units_.resolution,
                    .points = {}};
  };
  const double factor = units_.Factor(UnitKind::distance);
  using Sample = RehearsalSample;
  AddCurve(data, widthInPoints, length("Position"), factor, &Sample::position);
  AddCurve(data, widthInPoints, {.name = "Motor Speed", .unit = "1/min", .points = {}}, 1,
           &Sample::speed);
  AddCurve(data, widthInPoints, length("Following Error"), factor, &Sample::error);
  AddCurve(data, widthInPoints, {.name = "Torque", .unit = "% of rated", .points = {}}, 1,
           &Sample::torque);
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    data.lanes.push_back(
        {.name = "POUT" + NumberText(i), .points = outputs_[i], .shape = LaneShape::states});
  }
  data.lanes.push_back({.name = "Zone", .points = {}, .shape = LaneShape::bars, .bars = zones_});
  return data;
}

}  // namespace velmoor
