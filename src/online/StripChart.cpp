#include "online/StripChart.h"

#include <algorithm>

#include "platform/Csv.h"
#include "platform/Numbers.h"
#include "platform/Thinned.h"

namespace velmoor {

// ---- one item

void ItemSamples::Add(double time, std::int32_t raw) {
  samples_.push_back({time, raw});
  if (samples_.size() > kMostSamples) samples_.pop_front();
}

std::vector<ItemSamples::Sample> ItemSamples::Between(double from, double to, int most) const {
  const auto isBefore = [](const Sample& sample, double time) { return sample.time < time; };
  auto first = std::lower_bound(samples_.begin(), samples_.end(), from, isBefore);
  auto last = std::lower_bound(first, samples_.end(), to, isBefore);
  if (first != samples_.begin()) --first;
  if (last != samples_.end()) ++last;
  return Thinned(first, last, most, [](const Sample& sample) { return sample.raw; });
}

// ---- all of them

void StripChart::Add(int item, double time, std::int32_t raw) {
  items_.at(static_cast<std::size_t>(item)).Add(time, raw);
  latest_ = std::max(latest_, time);
  if (!paused_) end_ = latest_;
}

void StripChart::Clear() {
  for (ItemSamples& recording : items_) recording.Clear();
  latest_ = end_ = 0;
}

bool StripChart::IsEmpty() const {
  return std::ranges::all_of(items_, [](const ItemSamples& one) { return one.Samples().empty(); });
}

void StripChart::Zoom(double time, double factor) {
  const double before = length_;
  length_ = std::clamp(length_ * factor, kShortest, kLongest);
  // The time under the pointer stays where it is.
  if (paused_) end_ = time + (end_ - time) * length_ / before;
}

void StripChart::Pan(double seconds) {
  if (!paused_) end_ = latest_;
  paused_ = true;
  end_ = std::clamp(end_ + seconds, 0.0, latest_ + length_ / 2);
}

TimeChartData StripChart::Visible(const MonitoredUnits& units, int widthInPoints) const {
  TimeChartData data;
  data.to = std::max(End(), length_);
  data.from = data.to - length_;
  for (int item = 0; item < kMonitoredValues; ++item) {
    const std::vector<ItemSamples::Sample> samples =
        Of(item).Between(data.from, data.to, widthInPoints);
    if (Of(item).Samples().empty()) continue;
    const MonitoredItem& info = MonitoredItems()[static_cast<std::size_t>(item)];
    TimeLane lane{.name = NameOf(info),
                  .unit = units.UnitOf(info.kind),
                  .decimals = units.Decimals(info.kind),
                  .points = {}};
    lane.points.reserve(samples.size());
    for (const ItemSamples::Sample& sample : samples) {
      lane.points.push_back({sample.time, units.Convert(sample.raw, info.kind)});
    }
    data.lanes.push_back(std::move(lane));
  }
  return data;
}

std::string StripChart::Csv(const MonitoredUnits& units) const {
  std::string text = CsvLine({"time", "item", "raw", "value", "unit"});
  for (int item = 0; item < kMonitoredValues; ++item) {
    const MonitoredItem& info = MonitoredItems()[static_cast<std::size_t>(item)];
    for (const ItemSamples::Sample& sample : Of(item).Samples()) {
      text += CsvLine({FixedText(sample.time, 3), std::string(WordOf(info.command)),
                       NumberText(sample.raw), units.Text(sample.raw, info.kind),
                       units.UnitOf(info.kind)});
    }
  }
  return text;
}

}  // namespace velmoor
