// Figures of curves whose figures are known by formula.

#include "recordings/Figures.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>

#include "recordings/RecordingFigures.h"

namespace velmoor {
namespace {

using testing::DoubleNear;
using testing::Optional;

Curve Sampled(double from, double to, double step, const std::function<double(double)>& value) {
  Curve curve;
  const int count = static_cast<int>(std::lround((to - from) / step));
  for (int i = 0; i <= count; ++i) {
    const double time = from + i * step;
    curve.push_back({time, value(time)});
  }
  return curve;
}

// The step answer of a second-order system of 10 rad/s, from 0 to 1; `damping` below 1.
Curve StepAnswer(double damping, double step = 0.001) {
  constexpr double kOmega = 10;
  const double damped = kOmega * std::sqrt(1 - damping * damping);
  return Sampled(0, 6, step, [=](double t) {
    return 1 - std::exp(-damping * kOmega * t) *
                   (std::cos(damped * t) +
                    damping / std::sqrt(1 - damping * damping) * std::sin(damped * t));
  });
}

TEST(Figures, OvershootIsThatOfTheDamping) {
  for (const double damping : {0.2, 0.4, 0.6}) {
    const double expected = std::exp(-M_PI * damping / std::sqrt(1 - damping * damping));
    EXPECT_THAT(Overshoot(StepAnswer(damping)), Optional(DoubleNear(expected, 1e-3))) << damping;
  }
  const Curve straight{{0, 0}, {1, 1}};
  EXPECT_THAT(Overshoot(straight), Optional(0.0));
  EXPECT_EQ(Overshoot({{0, 1}, {1, 1}}), std::nullopt);
}

TEST(Figures, OvershootAndRiseAreTheSameDownwards) {
  Curve down = StepAnswer(0.3);
  for (ChartPoint& point : down) point.y = 5 - 2 * point.y;
  EXPECT_THAT(Overshoot(down), Optional(DoubleNear(2 * *Overshoot(StepAnswer(0.3)), 1e-6)));
  EXPECT_THAT(RiseTime(down), Optional(DoubleNear(*RiseTime(StepAnswer(0.3)), 1e-6)));
}

TEST(Figures, RiseTimeOfAFirstOrderIsLn9TimeConstants) {
  constexpr double kTau = 0.05;
  const auto value = [](double t) { return 1 - std::exp(-t / kTau); };
  const double expected = kTau * std::log(9.0);
  EXPECT_THAT(RiseTime(Sampled(0, 2, 0.0005, value)), Optional(DoubleNear(expected, 1e-4)));
  // Also by samples that lie as far apart as those of five items.
  EXPECT_THAT(RiseTime(Sampled(0, 2, 0.037, value)), Optional(DoubleNear(expected, 0.02)));
  // A ramp of one second.
  EXPECT_THAT(RiseTime({{0, 0}, {1, 100}}), Optional(DoubleNear(0.8, 1e-12)));
  EXPECT_EQ(RiseTime({{0, 3}}), std::nullopt);
}

TEST(Figures, SettlingTimeIsToTheFirstSampleThatStaysInside) {
  constexpr double kTau = 0.1;
  const Curve curve = Sampled(0, 3, 0.001, [](double t) { return 10 - 10 * std::exp(-t / kTau); });
  // 10 * exp(-t/tau) = 0.5
  EXPECT_THAT(SettlingTime(curve, 0.5), Optional(DoubleNear(kTau * std::log(20.0), 0.002)));
  EXPECT_THAT(SettlingTime({{2, 1}, {3, 1}}, 0.1), Optional(0.0));
  // Inside, out again, and in for good.
  EXPECT_THAT(SettlingTime({{0, 0}, {1, 1}, {2, 3}, {3, 1}, {4, 1}}, 0.5), Optional(3.0));
}

TEST(Figures, MeanIsOverTimeAndNotOverSamples) {
  // |sin| over whole periods: 2/pi; its greatest is 1.
  const Curve sine = Sampled(0, 2, 0.001, [](double t) { return std::sin(2 * M_PI * t); });
  EXPECT_THAT(MeanMagnitude(sine), Optional(DoubleNear(2 / M_PI, 1e-4)));
  EXPECT_THAT(LargestMagnitude(sine), Optional(DoubleNear(1, 1e-6)));
  // Many samples of a short peak count no more than their time.
  Curve uneven{{0, 1}};
  for (int i = 0; i <= 100; ++i) uneven.push_back({1 + i * 0.001, 1});
  uneven.push_back({2, 1});
  EXPECT_THAT(MeanMagnitude(uneven), Optional(DoubleNear(1, 1e-12)));
  EXPECT_EQ(MeanMagnitude({}), std::nullopt);
  EXPECT_EQ(LargestMagnitude({}), std::nullopt);
}

// A trapezoid of speed from `begin`: 0.1 s up to `top`, 0.3 s so, 0.1 s down.
double Trapezoid(double time, double begin, double top) {
  const double t = time - begin;
  if (t <= 0 || t >= 0.5) return 0;
  return top * std::min({t / 0.1, 1.0, (0.5 - t) / 0.1});
}

TEST(Figures, MotionsAreWhatLiesBetweenStandstills) {
  const Curve speed = Sampled(
      0, 3, 0.01, [](double t) { return Trapezoid(t, 0.5, 1000) + Trapezoid(t, 1.5, -1000); });
  const auto motions = Motions(speed);
  ASSERT_EQ(motions.size(), 2U);
  EXPECT_NEAR(motions[0].from, 0.5, 0.011);
  EXPECT_NEAR(motions[0].stands, 1.0, 0.011);
  EXPECT_NEAR(motions[0].to, 1.5, 0.011);
  EXPECT_NEAR(motions[1].from, 1.5, 0.011);
  EXPECT_NEAR(motions[1].to, 3.0, 1e-9);
  EXPECT_TRUE(Motions({{0, 0}, {1, 0}}).empty());
  // By the position alone.
  const auto byPosition = MotionsOfPosition(
      Sampled(0, 2, 0.01, [](double t) { return std::clamp(t - 0.5, 0.0, 1.0) * 40; }));
  ASSERT_EQ(byPosition.size(), 1U);
  EXPECT_NEAR(byPosition[0].from, 0.5, 0.011);
  EXPECT_NEAR(byPosition[0].stands, 1.5, 0.021);
}

// There and back, twice: a cycle of 2 s.
TEST(Figures, ARecordingTellsTheFiguresOfItsFirstMotionAndItsCycle) {
  Recording recording;
  recording.heading.window = "0.05";
  recording.heading.items = {{recorded::kSpeed, "rpm", 0},
                             {recorded::kPosition, "mm", 3},
                             {recorded::kTorque, "% of rated torque", 0}};
  Curve speed, position, torque;
  double place = 0;
  for (int i = 0; i <= 4000; ++i) {
    const double t = i * 0.001;
    double now = 0;
    for (int cycle = 0; cycle < 2; ++cycle) {
      now += Trapezoid(t, 0.2 + 2 * cycle, 100) + Trapezoid(t, 1.2 + 2 * cycle, -100);
    }
    place += now * 0.001;
    speed.push_back({t, now});
    position.push_back({t, place});
    torque.push_back({t, now == 0 ? 0.0 : 50.0});
  }
  recording.curves = {speed, position, torque};
  const auto figures = FiguresOf(recording);
  const auto value = [&figures](const std::string& name) {
    const auto found = std::ranges::find(figures, name, &RecordingFigure::name);
    return found->value;
  };
  EXPECT_THAT(BeginOfMotion(recording), Optional(DoubleNear(0.2, 0.004)));
  EXPECT_THAT(value("Cycle time"), Optional(DoubleNear(2, 0.004)));
  EXPECT_THAT(value("In motion"), Optional(DoubleNear(0.5, 0.006)));
  EXPECT_THAT(value("Overshoot"), Optional(DoubleNear(0, 0.01)));
  // 10 % and 90 % of a way of 40 lie in the part of constant speed, but for its ends: 0.32 s.
  EXPECT_THAT(value("Rise time, 10 to 90 %"), Optional(DoubleNear(0.321, 0.005)));
  EXPECT_THAT(value("Peak torque"), Optional(50.0));
  EXPECT_THAT(value("Mean torque"), Optional(DoubleNear(25, 0.1)));
  EXPECT_EQ(value("Largest following error"), std::nullopt);
}

}  // namespace
}  // namespace velmoor
