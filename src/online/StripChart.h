// The recorded values of the watched items over time, bounded in memory, and the stretch of them
// that the user looks at.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>

#include "online/MonitoredItems.h"
#include "platform/TimeChart.h"

namespace velmoor {

// Readings of one item, the oldest dropped beyond a fixed number.
class ItemSamples {
 public:
  static constexpr std::size_t kMostSamples = 50000;

  struct Sample {
    double time;  // s
    std::int32_t raw;
  };
  void Add(double time, std::int32_t raw);
  void Clear() { samples_.clear(); }
  [[nodiscard]] const std::deque<Sample>& Samples() const { return samples_; }
  // The samples of a stretch and one on either side. Where there are more than `most`, of each
  // group the least and the greatest, so that no peak is lost.
  [[nodiscard]] std::vector<Sample> Between(double from, double to, int most) const;

 private:
  std::deque<Sample> samples_;
};

class StripChart {
 public:
  static constexpr double kShortest = 0.05;  // s, of the stretch that is shown
  static constexpr double kLongest = 24 * 3600.0;

  void Add(int item, double time, std::int32_t raw);
  void Clear();
  // A paused chart stands still while the recording goes on.
  void Pause(bool paused) { paused_ = paused; }
  [[nodiscard]] bool IsPaused() const { return paused_; }
  // Looks closer or farther around `time`. What follows the present goes on following it.
  void Zoom(double time, double factor);
  // To earlier or later times; pauses.
  void Pan(double seconds);

  // A lane for each item of which there are samples, in their order.
  [[nodiscard]] TimeChartData Visible(const MonitoredUnits& units, int widthInPoints) const;
  // All samples: a line for each, with its time in seconds, the item's word, the raw number, the
  // number in the chosen units and its unit.
  [[nodiscard]] std::string Csv(const MonitoredUnits& units) const;
  [[nodiscard]] bool IsEmpty() const;
  [[nodiscard]] const ItemSamples& Of(int item) const {
    return items_.at(static_cast<std::size_t>(item));
  }

 private:
  [[nodiscard]] double End() const { return paused_ ? end_ : latest_; }

  std::array<ItemSamples, kMonitoredValues> items_;
  double latest_ = 0;
  double end_ = 0;  // of the shown stretch of a paused chart
  double length_ = 10;
  bool paused_ = false;
};

}  // namespace velmoor
