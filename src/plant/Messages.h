// What is told of a line and its axes: topics and texts. docs/guide/plant.md lists them, and they
// stay: readers outside depend on each name.
//
//   velmoor/line1/watch         whether the watch runs ("on", "ended", "gone")
//   velmoor/line1/line          whether the line is watched, and what was dropped
//   velmoor/line1/0/state       of axis 0; so are the next three
//   velmoor/line1/0/alarm
//   velmoor/line1/0/values
//   velmoor/line1/0/recording
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plant/AxisState.h"
#include "plant/Journal.h"

namespace velmoor {

// "2026-03-01T14:05:09.250Z", of the wall clock.
[[nodiscard]] std::string UtcNow();

// A name as one level of a topic: "/", "+", "#" and what is no printable character of ASCII become
// "_"; an empty one "_".
[[nodiscard]] std::string TopicLevel(std::string_view name);

// The name of an item as a field: "current_position".
[[nodiscard]] std::string FieldOf(int item);

// What the line as a whole is told of.
struct LineReport {
  std::string state;   // "watched", "lent" or "no port"
  std::string reason;  // of the others, in words
  std::uint64_t droppedChanges = 0;
  std::uint64_t droppedValues = 0;
};

class Messages {
 public:
  // `prefix` may have several levels; `line` is the line file's name without its ending.
  Messages(const std::string& prefix, const std::string& line);

  [[nodiscard]] const std::string& Line() const { return line_; }

  // ---- of the watch, without a number
  [[nodiscard]] Publication Watch(const std::string& state) const;

  // ---- numbered by `sequence`; the key tells what a change is
  [[nodiscard]] Told OfLine(const LineReport& report, std::uint64_t sequence) const;
  [[nodiscard]] Told State(const AxisState& axis, std::uint64_t sequence) const;
  // The alarm that is there, or that there is none.
  [[nodiscard]] Told Alarm(const AxisState& axis, std::uint64_t sequence) const;
  [[nodiscard]] Told Values(const AxisState& axis, const std::vector<int>& items,
                            std::uint64_t sequence) const;
  [[nodiscard]] Told Recording(const AxisState& axis, const std::string& name, std::size_t bytes,
                               std::uint64_t sequence) const;

 private:
  [[nodiscard]] std::string Topic(const std::string& axis, const char* kind) const;

  std::string line_, root_;
};

// What a message of the key tells changes by: compared before a number is spent.
[[nodiscard]] std::string StateKey(const AxisState& axis);
[[nodiscard]] std::string AlarmKey(const AxisState& axis);
[[nodiscard]] std::string LineKey(const LineReport& report);

}  // namespace velmoor
