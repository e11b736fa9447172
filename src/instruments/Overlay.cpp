#include "instruments/Overlay.h"

#include <algorithm>
#include <cmath>

#include "online/MonitoredItems.h"
#include "platform/Numbers.h"
#include "platform/Thinned.h"

namespace velmoor {
namespace {

std::string Text(const RecordingFigure& figure, const std::optional<double>& value) {
  return value ? FixedText(*value, figure.decimals) : "-";
}

// What is shown of a curve, moved to the right.
std::vector<ChartPoint> Seen(const std::vector<ChartPoint>& curve, double shift,
                             const ShownStretch& stretch, int width) {
  auto first = std::ranges::lower_bound(curve, stretch.From() - shift, {}, &ChartPoint::x);
  auto last = std::ranges::upper_bound(curve, stretch.To() - shift, {}, &ChartPoint::x);
  if (first != curve.begin()) --first;
  if (last != curve.end()) ++last;
  auto seen = Thinned(first, last, width, [](const ChartPoint& point) { return point.y; });
  for (ChartPoint& point : seen) point.x += shift;
  return seen;
}

// Where a bit of the word changes.
std::vector<ChartPoint> BitOf(const std::vector<ChartPoint>& words, std::size_t bit) {
  std::vector<ChartPoint> points;
  for (const ChartPoint& point : words) {
    const double state = ((static_cast<std::uint32_t>(point.y) >> bit) & 1U) != 0 ? 1 : 0;
    if (points.empty() || points.back().y != state) points.push_back({point.x, state});
  }
  return points;
}

// A lane for each bit that changes, or is on.
void AddStates(std::vector<TimeLane>& lanes, const std::string& name,
               const std::vector<ChartPoint>& words) {
  constexpr std::size_t kBits = 8;
  for (std::size_t bit = 0; bit < kBits; ++bit) {
    std::vector<ChartPoint> points = BitOf(words, bit);
    const bool idle = points.empty() || (points.size() == 1 && points.front().y == 0);
    if (idle) continue;
    const std::string label = name == recorded::kStatus && bit < StatusFlags().size()
                                  ? std::string(StatusFlags()[bit])
                              : name == recorded::kAlarm ? name
                                                         : name + " " + NumberText(bit);
    lanes.push_back({.name = label, .points = std::move(points), .shape = LaneShape::states});
  }
}

}  // namespace

void Overlay::Take(std::vector<Shown> shown, Alignment alignment) {
  shown_ = std::move(shown);
  for (Shown& each : shown_) {
    each.figures = FiguresOf(each.recording);
    each.motion = BeginOfMotion(each.recording);
  }
  Align(alignment);
}

void Overlay::Align(Alignment alignment) {
  alignment_ = alignment;
  for (Shown& each : shown_) each.shift = 0;
  cursors_.clear();
  ShowAll();
}

void Overlay::Shift(std::size_t which, double part) {
  const double from = stretch_.From();
  const double to = stretch_.To();
  shown_.at(which).shift += part * (to - from);
  ShowAll();
  stretch_.Zoom(from, (to - from) / (stretch_.To() - stretch_.From()));
  stretch_.MoveTo(from, to);
}

double Overlay::ShiftOf(const Shown& shown) const {
  return shown.shift - (alignment_ == Alignment::motion ? shown.motion.value_or(0) : 0);
}

void Overlay::ShowAll() {
  double begin = 0;
  double end = 0;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const double first = shown_[i].recording.Begin() + ShiftOf(shown_[i]);
    const double last = shown_[i].recording.End() + ShiftOf(shown_[i]);
    begin = i == 0 ? first : std::min(begin, first);
    end = i == 0 ? last : std::max(end, last);
  }
  stretch_.SetWhole(begin, end);
}

void Overlay::PointAt(double time) {
  if (cursors_.size() == 2) cursors_.clear();
  cursors_.push_back(time);
}

std::string Overlay::CursorWords() const {
  if (cursors_.empty()) return {};
  std::string text = "A " + FixedText(cursors_[0], 3) + " s";
  if (cursors_.size() == 2) {
    text += ", B " + FixedText(cursors_[1], 3) +
            " s: " + FixedText(std::abs(cursors_[1] - cursors_[0]), 3) + " s apart";
  }
  return text;
}

TimeChartData Overlay::Visible(int widthInPoints) const {
  TimeChartData data{.lanes = {}, .from = stretch_.From(), .to = stretch_.To()};
  std::vector<TimeLane> states;
  for (const Shown& shown : shown_) {
    const double shift = ShiftOf(shown);
    for (std::size_t i = 0; i < shown.recording.curves.size(); ++i) {
      const RecordedItem& item = shown.recording.heading.items[i];
      auto points = Seen(shown.recording.curves[i], shift, stretch_, widthInPoints);
      if (item.unit.empty()) {
        if (shown_.size() == 1) AddStates(states, item.name, points);
        continue;
      }
      const auto lane = std::ranges::find_if(data.lanes, [&item](const TimeLane& each) {
        return each.name == item.name && each.unit == item.unit;
      });
      if (lane != data.lanes.end()) {
        lane->others.push_back({shown.name, std::move(points)});
        continue;
      }
      data.lanes.push_back({.name = item.name,
                            .unit = item.unit,
                            .decimals = item.decimals,
                            .points = std::move(points),
                            .firstName = shown.name});
    }
  }
  for (TimeLane& lane : states) data.lanes.push_back(std::move(lane));
  for (std::size_t i = 0; i < cursors_.size(); ++i) {
    data.marks.push_back({cursors_[i], i == 0 ? "A" : "B"});
  }
  std::ranges::sort(data.marks, {}, &ChartMark::x);
  return data;
}

std::vector<std::vector<std::string>> Overlay::FigureTable() const {
  std::vector<std::vector<std::string>> rows{{"Figure"}};
  for (const Shown& shown : shown_) rows.front().push_back(shown.name);
  const bool differs = shown_.size() == 2;
  if (differs) rows.front().emplace_back("Difference");
  if (shown_.empty()) return rows;
  for (std::size_t i = 0; i < shown_.front().figures.size(); ++i) {
    // The unit of the first that has the figure.
    const RecordingFigure* known = &shown_.front().figures[i];
    for (const Shown& shown : shown_) {
      if (!known->value) known = &shown.figures[i];
    }
    std::vector<std::string> row{known->name +
                                 (known->unit.empty() ? "" : " (" + known->unit + ")")};
    for (const Shown& shown : shown_) {
      const RecordingFigure& figure = shown.figures[i];
      // Another unit is told beside the number.
      const bool same = !figure.value || figure.unit == known->unit;
      row.push_back(Text(figure, figure.value) + (same ? "" : " " + figure.unit));
    }
    if (differs) {
      const RecordingFigure& first = shown_[0].figures[i];
      const RecordingFigure& second = shown_[1].figures[i];
      const bool both = first.value && second.value && first.unit == second.unit;
      row.push_back(both ? (*second.value >= *first.value ? "+" : "") +
                               FixedText(*second.value - *first.value, first.decimals)
                         : "-");
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace velmoor
