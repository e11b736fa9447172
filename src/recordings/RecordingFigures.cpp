#include "recordings/RecordingFigures.h"

#include "platform/Numbers.h"
#include "recordings/Figures.h"

namespace velmoor {
namespace {

std::vector<MotionStretch> MotionsOf(const Recording& recording) {
  const Curve& speed = recording.CurveOf(recorded::kSpeed);
  return speed.empty() ? MotionsOfPosition(recording.CurveOf(recorded::kPosition)) : Motions(speed);
}

RecordedItem ItemOf(const Recording& recording, const char* name) {
  const int place = recording.Find(name);
  return place < 0 ? RecordedItem{} : recording.heading.items.at(static_cast<std::size_t>(place));
}

}  // namespace

std::optional<double> BeginOfMotion(const Recording& recording) {
  const auto motions = MotionsOf(recording);
  if (motions.empty()) return std::nullopt;
  return motions.front().from;
}

std::vector<RecordingFigure> FiguresOf(const Recording& recording) {
  const Curve& position = recording.CurveOf(recorded::kPosition);
  const Curve& error = recording.CurveOf(recorded::kFollowingError);
  const Curve& torque = recording.CurveOf(recorded::kTorque);
  const auto motions = MotionsOf(recording);
  const double window = ParseFloat(recording.heading.window).value_or(0);
  const bool moves = !motions.empty();
  const Curve move = moves ? Between(position, motions.front().from, motions.front().to) : Curve();
  const RecordedItem place = ItemOf(recording, recorded::kPosition);
  const RecordedItem lag = ItemOf(recording, recorded::kFollowingError);
  const RecordedItem force = ItemOf(recording, recorded::kTorque);
  std::optional<double> length;
  if (moves) length = motions.front().stands - motions.front().from;
  constexpr int kTimes = 3;
  return {
      {"Rise time, 10 to 90 %", "s", kTimes, RiseTime(move)},
      {"Overshoot", place.unit, place.decimals, Overshoot(move)},
      {"Settling time", "s", kTimes, SettlingTime(move, window)},
      {"In motion", "s", kTimes, length},
      {"Largest following error", lag.unit, lag.decimals, LargestMagnitude(error)},
      {"Mean following error", lag.unit, lag.decimals + 1, MeanMagnitude(error)},
      {"Peak torque", force.unit, force.decimals, LargestMagnitude(torque)},
      {"Mean torque", force.unit, force.decimals + 1, MeanMagnitude(torque)},
      {"Cycle time", "s", kTimes, CycleTime(position, motions, window)},
  };
}

}  // namespace velmoor
