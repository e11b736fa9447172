// Values of an axis over time, as they were read: each sample has the time when its answer came,
// and nothing lies between two of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Chart.h"

namespace velmoor {

struct RecordedItem {
  std::string name;  // "Motor Speed"
  std::string unit;  // "rpm"; empty: bits, or a state of 0 and 1
  int decimals = 0;  // which tell any two values apart
  bool operator==(const RecordedItem&) const = default;
};

// What stands at the head of a recording. Texts are of one line each.
struct RecordingHeading {
  std::string begun;                 // "2026-03-01 14:05:09": the moment of time 0
  std::string project;               // "line1.spj"
  std::string axis;                  // "0"
  std::string cause;                 // "by hand", "Motor Speed above 100 rpm"
  std::string gains;                 // "Pn100=40 Pn101=2000"
  std::string window;                // of the in-position output, in the unit of the position
  std::string rate;                  // empty where it was not ended in order
  std::string note;                  // the user's
  std::vector<std::string> remarks;  // of an alarm: what it was, the lines, the log
  std::vector<RecordedItem> items;
};

struct RecordedSample {
  double time = 0;  // s; below 0 in front of the trigger
  int item = 0;     // its place in the heading
  double value = 0;
};

struct Recording {
  RecordingHeading heading;
  std::vector<std::vector<ChartPoint>> curves;  // one for each item; x in seconds, ascending

  // The place of the item, -1: it has none.
  [[nodiscard]] int Find(const std::string& name) const;
  // Of that item; empty where there is none.
  [[nodiscard]] const std::vector<ChartPoint>& CurveOf(const std::string& name) const;
  // s, from the first sample to the last.
  [[nodiscard]] double Length() const;
  [[nodiscard]] double Begin() const;  // s, of the first sample of all
  [[nodiscard]] double End() const;
};

// "Motor Speed 139.2, Torque 27.4": samples a second, by their times. Empty without samples.
[[nodiscard]] std::string RateText(const Recording& recording);

// The names of what is recorded, by which a reader finds its curve.
namespace recorded {
inline constexpr const char* kPosition = "Current Position";
inline constexpr const char* kFollowingError = "Following Error";
inline constexpr const char* kTarget = "Target Position";
inline constexpr const char* kSpeed = "Motor Speed";
inline constexpr const char* kTorque = "Torque";
inline constexpr const char* kStatus = "Status Flags";
inline constexpr const char* kAlarm = "Alarm";  // 1: the panel shows one
}  // namespace recorded

}  // namespace velmoor
