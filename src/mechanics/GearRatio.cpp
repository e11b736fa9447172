#include "mechanics/GearRatio.h"

#include <cmath>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

constexpr std::int16_t kMostResolution = 22;
constexpr double kMostTerm = 65535;
constexpr float kHighRatio = 100.0F;
constexpr float kLowRatio = 0.01F;
constexpr const char* kBadResolution = "Invalid resolution value.";
constexpr const char* kSmallA = "A is less than 1.  A must be within the range from 1 to 65535.";
constexpr const char* kSmallB = "B is less than 1.  B must be within the range from 1 to 65535.";

struct Terms {
  double a = 0, b = 0;
};

// A is rounded to as many decimals as the resolution has, on purpose: it need not be whole yet.
Terms GearTerms(const Machine& machine) {
  const double a =
      PowerOfTen(machine.resolution) * FeedConstantOf(machine) * static_cast<double>(machine.n1);
  Terms terms;
  terms.a = std::isfinite(a) ? RoundToPlaces(a, machine.resolution) : 0;
  terms.b = 4.0 * machine.encoderCount * machine.n2;  // 4: quadrature of the encoder pulses
  return terms;
}

bool IsResolutionInRange(std::int16_t resolution) {
  return resolution >= 0 && resolution <= kMostResolution;
}

// One digit more of resolution makes the ratio ten times smaller. The ratio stays a 32-bit float at
// every step of a walk.
struct Walk {
  float ratio;
  std::int16_t resolution;

  void DigitMore() {
    ratio = static_cast<float>(static_cast<double>(ratio) / 10);
    ++resolution;
  }
  void DigitLess() {
    ratio = static_cast<float>(static_cast<double>(ratio) * 10);
    --resolution;
  }
  std::int16_t HighestAboveLowRatio() {
    while (ratio > kLowRatio) DigitMore();
    return static_cast<std::int16_t>(resolution - 1);
  }
  // Stops one digit short of a ratio that reaches exactly 100: the walk ends at 100 and steps back.
  std::int16_t LowestBelowHighRatio() {
    while (ratio < kHighRatio) DigitLess();
    return static_cast<std::int16_t>(resolution + 1);
  }
};

bool CanWalk(float ratio) {
  return std::isfinite(ratio) && ratio > 0;
}

bool FinishRange(std::int16_t& low, std::int16_t high) {
  if (low < 0) low = 0;
  return high >= 0;
}

// Half to even without a call into the mathematics library; for values below 2^51.
double FastRoundHalfEven(double value) {
  constexpr double kShift = 6755399441055744.0;  // 1.5 * 2^52
  return (value + kShift) - kShift;
}

}  // namespace

double FeedConstantOf(const Machine& machine) {
  return static_cast<double>(machine.length) * MultiplierFactor(machine.system);
}

bool IsGearRatioValid(const Machine& machine, GearRatio& ratio, std::string& strError) {
  const auto refuse = [&strError](std::string words) {
    strError = std::move(words);
    return false;
  };
  if (!IsResolutionInRange(machine.resolution)) return refuse(kBadResolution);
  Terms terms = GearTerms(machine);
  if (!(terms.a >= 1)) return refuse(kSmallA);
  if (!(terms.b >= 1)) return refuse(kSmallB);
  const double quotient = terms.b / terms.a;
  if (!(0.01 <= quotient && quotient <= 100)) {
    std::int16_t low = 0, high = 0;
    (void)GetAllowableResolutionRange(static_cast<float>(quotient), machine.resolution, low, high);
    return refuse(
        "Selected resolution is out of range for described system.\r"
        "Resolution for described system must be within the range from " +
        NumberText(low) + " to " + NumberText(high) + ".");
  }
  // A pair that already fits stays as it is, even with a common divisor.
  if (terms.a > kMostTerm || terms.b > kMostTerm || !IsWholeNumberText(NumberText(terms.a))) {
    if (!ReduceGearRatio(terms.a, terms.b)) return refuse("A and B could not be reduced.");
  }
  const GearRatio found{ToInt32(terms.a), ToInt32(terms.b)};
  // A term that rounds to 0 is none: no result outside 1 to 65535 is ever called valid.
  if (found.b < 1) return refuse("A and B could not be reduced.");
  ratio = found;
  strError.clear();
  return true;
}

bool ReduceGearRatio(double& a, double& b) {
  const double target = b / a;
  if (!std::isfinite(target)) return false;
  double leastError = 99999999999999.0;
  double bestA = 1;
  for (int term = 1; term <= static_cast<int>(kMostTerm); ++term) {
    const double i = term;
    const double product = i * target;
    if (product > kMostTerm + 1) break;  // every later B is larger still
    const double candidate = FastRoundHalfEven(product);
    const double error = std::fabs(candidate / i - target);
    if (error < leastError && candidate <= kMostTerm) {
      leastError = error;
      bestA = i;
    }
  }
  const double bestB = RoundHalfEven(target * bestA);
  if (bestB > kMostTerm) return false;
  a = bestA;
  b = bestB;
  return true;
}

bool GetAllowableResolutionRange(float ratio, std::int16_t resolution, std::int16_t& low,
                                 std::int16_t& high) {
  if (!CanWalk(ratio)) return false;
  Walk walk{ratio, resolution};
  if (ratio > kHighRatio) {
    while (walk.ratio > kHighRatio) walk.DigitMore();
    low = walk.resolution;
    high = walk.HighestAboveLowRatio();
    return FinishRange(low, high);
  }
  if (ratio < kLowRatio) {
    while (walk.ratio < kLowRatio) walk.DigitLess();
    high = walk.resolution;
    low = walk.LowestBelowHighRatio();
    return FinishRange(low, high);
  }
  return false;
}

bool GetResolutionRange(const Machine& machine, std::int16_t& low, std::int16_t& high,
                        std::string& strError) {
  if (!IsResolutionInRange(machine.resolution)) {
    strError = kBadResolution;
    return false;
  }
  const Terms terms = GearTerms(machine);
  const auto ratio = static_cast<float>(terms.b / terms.a);
  if (!(terms.a > 0) || !CanWalk(ratio)) {
    strError = terms.b > 0 ? kSmallA : kSmallB;
    return false;
  }
  strError.clear();
  if (ratio > kHighRatio || ratio < kLowRatio) {
    return GetAllowableResolutionRange(ratio, machine.resolution, low, high);
  }
  high = Walk{ratio, machine.resolution}.HighestAboveLowRatio();
  low = Walk{ratio, machine.resolution}.LowestBelowHighRatio();
  return FinishRange(low, high);
}

}  // namespace velmoor
