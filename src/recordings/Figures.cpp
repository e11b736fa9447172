#include "recordings/Figures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmoor {
namespace {

constexpr double kMoving = 0.02;  // of the greatest magnitude

// When it first passes `level` on the way from its first value; nothing: never.
std::optional<double> Passes(const Curve& curve, double level) {
  const bool upwards = level > curve.front().y;
  for (std::size_t i = 1; i < curve.size(); ++i) {
    const ChartPoint& before = curve[i - 1];
    const ChartPoint& after = curve[i];
    if (upwards ? after.y < level : after.y > level) continue;
    return before.x + (level - before.y) / (after.y - before.y) * (after.x - before.x);
  }
  return std::nullopt;
}

// The samples of it at which `isMoving` in motions.
template <typename IsMoving>
std::vector<MotionStretch> Stretches(const Curve& curve, IsMoving isMoving) {
  std::vector<MotionStretch> motions;
  bool moving = false;
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const bool now = isMoving(i);
    if (now && !moving) {
      const double begin = curve[i > 0 ? i - 1 : 0].x;
      if (!motions.empty()) motions.back().to = begin;
      motions.push_back({begin, curve.back().x, curve.back().x});
    }
    if (!now && moving) motions.back().stands = curve[i].x;
    moving = now;
  }
  return motions;
}

// The value that holds at `time`.
std::optional<double> ValueAt(const Curve& curve, double time) {
  const auto after = std::ranges::upper_bound(curve, time, {}, &ChartPoint::x);
  if (after == curve.begin()) return std::nullopt;
  return std::prev(after)->y;
}

}  // namespace

std::vector<MotionStretch> Motions(const Curve& speed) {
  const double least = LargestMagnitude(speed).value_or(0) * kMoving;
  return Stretches(speed, [&](std::size_t i) { return std::abs(speed[i].y) > least; });
}

std::vector<MotionStretch> MotionsOfPosition(const Curve& position) {
  Curve steps;
  for (std::size_t i = 0; i < position.size(); ++i) {
    const double time = i > 0 ? position[i].x - position[i - 1].x : 0;
    steps.push_back({position[i].x, time > 0 ? (position[i].y - position[i - 1].y) / time : 0});
  }
  return Motions(steps);
}

Curve Between(const Curve& curve, double from, double to) {
  const auto first = std::ranges::lower_bound(curve, from, {}, &ChartPoint::x);
  const auto last = std::ranges::upper_bound(curve, to, {}, &ChartPoint::x);
  return first < last ? Curve(first, last) : Curve();
}

std::optional<double> RiseTime(const Curve& curve) {
  if (curve.size() < 2 || curve.front().y == curve.back().y) return std::nullopt;
  const double way = curve.back().y - curve.front().y;
  const auto begin = Passes(curve, curve.front().y + 0.1 * way);
  const auto end = Passes(curve, curve.front().y + 0.9 * way);
  if (!begin || !end) return std::nullopt;
  return *end - *begin;
}

std::optional<double> Overshoot(const Curve& curve) {
  if (curve.size() < 2 || curve.front().y == curve.back().y) return std::nullopt;
  const auto [lowest, highest] = std::ranges::minmax(curve, {}, &ChartPoint::y);
  const double last = curve.back().y;
  return last > curve.front().y ? highest.y - last : last - lowest.y;
}

std::optional<double> SettlingTime(const Curve& curve, double window) {
  if (curve.empty()) return std::nullopt;
  const double last = curve.back().y;
  const auto outside = std::find_if(curve.rbegin(), curve.rend(), [&](const ChartPoint& point) {
    return std::abs(point.y - last) > window;
  });
  // The last sample of all is within.
  return outside == curve.rend() ? 0 : std::prev(outside)->x - curve.front().x;
}

std::optional<double> LargestMagnitude(const Curve& curve) {
  std::optional<double> largest;
  for (const ChartPoint& point : curve) {
    largest = std::max(largest.value_or(0), std::abs(point.y));
  }
  return largest;
}

std::optional<double> MeanMagnitude(const Curve& curve) {
  if (curve.empty()) return std::nullopt;
  const double length = curve.back().x - curve.front().x;
  if (length <= 0) return std::abs(curve.front().y);
  double area = 0;
  for (std::size_t i = 1; i < curve.size(); ++i) {
    area += (std::abs(curve[i - 1].y) + std::abs(curve[i].y)) / 2 * (curve[i].x - curve[i - 1].x);
  }
  return area / length;
}

std::optional<double> CycleTime(const Curve& position, const std::vector<MotionStretch>& motions,
                                double window) {
  if (motions.empty()) return std::nullopt;
  const auto first = ValueAt(position, motions.front().from);
  if (!first) return std::nullopt;
  for (std::size_t i = 1; i < motions.size(); ++i) {
    const auto begin = ValueAt(position, motions[i].from);
    if (begin && std::abs(*begin - *first) <= window) return motions[i].from - motions[0].from;
  }
  return std::nullopt;
}

}  // namespace velmoor
