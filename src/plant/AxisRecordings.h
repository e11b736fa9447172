// The minute before each alarm of the watched axes, kept as recordings in a folder, within a bound.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "plant/AxisState.h"
#include "recordings/BlackBox.h"

namespace velmoor {

class AxisRecordings {
 public:
  // `folder` is that of the recordings, `like` a file whose permissions they have at most, `line`
  // the name that stands in their headings. `items` are those that are read beside the display.
  AxisRecordings(const std::string& folder, const std::string& like, std::string line,
                 std::vector<int> items, std::size_t axes, std::size_t mostBytes);

  void TakeValue(std::size_t axis, int item, std::int32_t raw);
  // The display of an axis: true where an alarm has taken the servo off just now. One that was
  // there when the axis was first seen is of another time.
  [[nodiscard]] bool TakeDisplay(std::size_t axis, const AxisState& state);
  // The axis was silent, or nobody looked: what comes next is no change.
  void Forget(std::size_t axis);

  struct Kept {
    std::string name;
    std::size_t bytes = 0;
  };
  // Makes a recording of the minute before now. Throws FileError.
  [[nodiscard]] Kept Keep(std::size_t axis, const AxisState& state,
                          const std::vector<std::string>& remarks);

 private:
  void KeepBound() const;

  RecordingFolder folder_;
  std::string line_;
  std::vector<int> items_;
  std::size_t mostBytes_;
  std::vector<BlackBox> boxes_;
  std::vector<std::optional<bool>> inAlarm_;
};

}  // namespace velmoor
