#include "tables/MotionPlot.h"

#include <algorithm>
#include <cmath>

#include "platform/Numbers.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;
constexpr int kCurvePoints = 8;  // of one change of speed

// The axis under way: where it is, how fast, and what it drew.
class Axis {
 public:
  Axis(const MotionParameters& parameters, MotionPlot& plot)
      : parameters_(parameters), plot_(plot) {
    Draw();
  }

  [[nodiscard]] double Time() const { return time_; }

  // A move to a position that ends at rest.
  void MoveTo(double target, double speed) {
    Stop();
    const double distance = std::abs(target - position_);
    const double direction = target < position_ ? -1 : 1;
    if (distance <= 0 || speed <= 0) return;
    // A short move turns round before it has reached the speed.
    const double perSpeed =
        InverseOf(parameters_.acceleration) + InverseOf(parameters_.deceleration);
    const double top = perSpeed > 0 ? std::min(speed, std::sqrt(2 * distance / perSpeed)) : speed;
    const double steady = distance - top * top * perSpeed / 2;
    ChangeSpeed(direction * top);
    Run(std::max(0.0, steady) / top);
    ChangeSpeed(0);
    position_ = target;  // no remainder of the sums
    plot_.points.back().position = target;
  }
  void MoveBy(double distance, double speed) {
    Stop();
    MoveTo(position_ + distance, speed);
  }
  // Positive or negative; the axis goes on at that speed.
  void ChangeSpeed(double speed) {
    const bool faster = std::abs(speed) > std::abs(velocity_);
    const double rate = faster ? parameters_.acceleration : parameters_.deceleration;
    const double duration = std::abs(speed - velocity_) * InverseOf(rate);
    const double start = velocity_;
    const double begin = time_, place = position_;
    for (int i = 1; i <= kCurvePoints && duration > 0; ++i) {
      const double t = duration * i / kCurvePoints;
      time_ = begin + t;
      position_ = place + start * t + (speed - start) / duration * t * t / 2;
      Draw();
    }
    velocity_ = speed;
  }
  void Stop() { ChangeSpeed(0); }
  // Goes on as it is.
  void Run(double seconds) {
    if (seconds <= 0) return;
    time_ += seconds;
    position_ += velocity_ * seconds;
    Draw();
  }

 private:
  [[nodiscard]] static double InverseOf(double rate) { return rate > 0 ? 1 / rate : 0; }
  void Draw() { plot_.points.push_back({time_, position_}); }

  const MotionParameters& parameters_;
  MotionPlot& plot_;
  double time_ = 0;
  double position_ = 0;
  double velocity_ = 0;
};

double NumberIn(const std::string& text) {
  return ParseFloat(text).value_or(0);
}

void Move(Axis& axis, const std::string& position, double speed) {
  if (position == "STOP") return axis.Stop();
  if (IsEndlessMove(position)) return axis.ChangeSpeed(position[0] == '-' ? -speed : speed);
  if (position.size() < 2) return;  // no move
  const double distance = NumberIn(position.substr(1));
  if (position[0] == 'A') return axis.MoveTo(distance, speed);
  axis.MoveBy(distance, speed);
}

void Execute(Axis& axis, const Position& table, int step, double secondsForTimeUnit) {
  const double speed = NumberIn(table.Text(step, Position::speed)) / secondsForTimeUnit;
  const std::string& position = table.Text(step, Position::position);
  const std::string& event = table.Text(step, Position::event);
  Move(axis, position, speed);
  const bool unknown = WaitsForInput(event) || (IsEndlessMove(position) && EventTime(event) == 0);
  if (unknown) axis.Run(kDrawnWait);
  axis.Run(EventTime(event) / 1000.0);
}

}  // namespace

MotionPlot PlotMotion(const Position& table, const ProgrammePath& path,
                      const MotionParameters& parameters) {
  MotionPlot plot;
  if (path.steps.empty()) return plot;
  Axis axis(parameters, plot);
  for (const int step : path.steps) {
    const double from = axis.Time();
    const double loops = NumberIn(table.Text(step, Position::loop));
    const int drawn = static_cast<int>(std::clamp(loops, 1.0, double{kDrawnRepetitions}));
    plot.shortened = plot.shortened || loops > drawn;
    for (int i = 0; i < drawn; ++i) {
      Execute(axis, table, step, parameters.secondsForTimeUnit);
    }
    plot.steps.push_back({step, from, axis.Time()});
  }
  return plot;
}

}  // namespace velmoor
