// What was read of the axis in the last minute, held in memory until an alarm makes a recording of
// it.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "recordings/RecordingFolder.h"

namespace velmoor {

class BlackBox {
 public:
  static constexpr double kSeconds = 60;
  static constexpr std::size_t kMostSamples = 20000;  // about twice what a line of 38400 brings

  // `now` in s of a clock that never goes back; `raw` as the amplifier told it.
  void Take(int item, double now, double raw);
  // Another project or amplifier.
  void Clear() { samples_.clear(); }
  [[nodiscard]] bool IsEmpty() const { return samples_.empty(); }
  // The latest value of an item; nothing where it was not read.
  [[nodiscard]] std::optional<double> Latest(int item) const;
  // Makes a recording whose time 0 is `now`, of the values that `convert` makes of the raw ones.
  // Gives its name, which has `word` behind its moment. Throws FileError.
  using Convert = std::function<double(int item, double raw)>;
  [[nodiscard]] std::string Keep(const RecordingFolder& folder, RecordingHeading heading,
                                 const std::string& word, double now, const Convert& convert) const;

 private:
  std::deque<RecordedSample> samples_;
};

}  // namespace velmoor
