// What is told of a motion by its curves: pure functions, whose times are in seconds and whose
// values are in the unit of the curve.
//
// Where a curve passes a level between two samples, its moment is taken from the straight line
// between them; all other figures are those of samples. So no time is known better than the samples
// lie apart.
#pragma once

#include <optional>
#include <vector>

#include "recordings/Recording.h"

namespace velmoor {

using Curve = std::vector<ChartPoint>;

// From the first sample of a motion to the last one before the next motion begins.
struct MotionStretch {
  double from = 0;    // the motion begins: the last sample at which it stood
  double stands = 0;  // it stands again; the end of the curve where it never does
  double to = 0;
};
// By a curve of speed. It moves above one fiftieth of its greatest magnitude.
[[nodiscard]] std::vector<MotionStretch> Motions(const Curve& speed);
// The same by a curve of position, for which no speed was recorded.
[[nodiscard]] std::vector<MotionStretch> MotionsOfPosition(const Curve& position);

// The samples from one time to another.
[[nodiscard]] Curve Between(const Curve& curve, double from, double to);

// From 10 % to 90 % of the way between the first value and the last. Nothing where these are equal.
[[nodiscard]] std::optional<double> RiseTime(const Curve& curve);
// How far it goes beyond its last value, seen from its first; 0: it does not.
[[nodiscard]] std::optional<double> Overshoot(const Curve& curve);
// From the first sample to the one from which on it stays within `window` of its last value.
[[nodiscard]] std::optional<double> SettlingTime(const Curve& curve, double window);
// Of the magnitudes. The mean is over time, each value holding until halfway to its neighbours.
[[nodiscard]] std::optional<double> LargestMagnitude(const Curve& curve);
[[nodiscard]] std::optional<double> MeanMagnitude(const Curve& curve);
// From the first motion to the next that begins within `window` of the same position.
[[nodiscard]] std::optional<double> CycleTime(const Curve& position,
                                              const std::vector<MotionStretch>& motions,
                                              double window);

}  // namespace velmoor
