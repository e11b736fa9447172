// The axis' position over time as the programme commands it: trapezoids of speed from distance,
// speed and the default acceleration. A picture for the user, not a promise: what waits for an
// input is drawn with a short wait, registration is left out.
#pragma once

#include <string>
#include <vector>

#include "tables/ProgrammePath.h"

namespace velmoor {

// In units of distance and seconds; an acceleration of 0 changes the speed at once.
struct MotionParameters {
  double acceleration = 0;
  double deceleration = 0;
  double secondsForTimeUnit = 1;  // of the speed cells
};

struct PlotPoint {
  double time = 0;  // s
  double position = 0;
};

struct PlotStep {
  int step = 0;
  double from = 0;  // s
  double to = 0;
};

struct MotionPlot {
  std::vector<PlotPoint> points;
  std::vector<PlotStep> steps;  // in the order of execution, once for all repetitions of a step
  bool shortened = false;       // repetitions or time beyond what is drawn
};

// How long the picture shows a wait whose end is not known, and an endless move.
inline constexpr double kDrawnWait = 0.5;  // s
inline constexpr int kDrawnRepetitions = 10;

// Starts at position 0. A path that repeats is drawn once.
[[nodiscard]] MotionPlot PlotMotion(const clsHX7Position& table, const ProgrammePath& path,
                                    const MotionParameters& parameters);

}  // namespace velmoor
