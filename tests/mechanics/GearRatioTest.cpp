#include "mechanics/GearRatio.h"

#include "project/data/Units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "platform/Numbers.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

Machine MakeMachine(std::int32_t system, float length, std::int16_t resolution,
                    std::int32_t encoder = 2048, std::int16_t n1 = 1, std::int16_t n2 = 1) {
  return {system, length, n1, n2, resolution, encoder};
}

TEST(GearRatio, KnownMachines) {
  struct Case {
    const char* what;
    Machine machine;
    std::int32_t a, b;
  };
  const Case cases[] = {
      {"a pair that fits is not reduced", MakeMachine(0, 5, 3), 5000, 8192},
      {"even with a common divisor", MakeMachine(0, 8, 3), 8000, 8192},
      {"an exact ratio in lowest terms", MakeMachine(0, 100, 3), 3125, 256},
      {"reduction gear", MakeMachine(0, 10, 3, 2048, 1, 5), 10000, 40960},
      {"ratio exactly 100", MakeMachine(0, 0.8192F, 2), 1, 100},
      {"rotary table, B above the limit", MakeMachine(3, 360, 2, 16384), 1125, 2048},
  };
  for (const Case& c : cases) {
    GearRatio ratio;
    std::string error;
    EXPECT_TRUE(IsGearRatioValid(c.machine, ratio, error)) << c.what << ": " << error;
    EXPECT_EQ(ratio.a, c.a) << c.what;
    EXPECT_EQ(ratio.b, c.b) << c.what;
  }
}

TEST(GearRatio, DiametersGoThroughPi) {
  GearRatio ratio;
  std::string error;
  ASSERT_TRUE(IsGearRatioValid(MakeMachine(1, 50, 3), ratio, error)) << error;
  EXPECT_NEAR(static_cast<double>(ratio.b) / ratio.a, 8192 / 157079.633, 1e-9);
  EXPECT_LE(ratio.a, 65535);
}

TEST(GearRatio, RefusalsNameTheReason) {
  struct Case {
    Machine machine;
    const char* words;
  };
  const Case cases[] = {
      {MakeMachine(0, 5, 23), "Invalid resolution value."},
      {MakeMachine(0, 5, -1), "Invalid resolution value."},
      {MakeMachine(0, 0, 3), "A is less than 1.  A must be within the range from 1 to 65535."},
      {MakeMachine(9, 5, 3), "A is less than 1.  A must be within the range from 1 to 65535."},
      {MakeMachine(0, std::nanf(""), 3),
       "A is less than 1.  A must be within the range from 1 to 65535."},
      {MakeMachine(0, INFINITY, 3),
       "A is less than 1.  A must be within the range from 1 to 65535."},
      {MakeMachine(0, 5, 3, 2048, 1, 0),
       "B is less than 1.  B must be within the range from 1 to 65535."},
      {MakeMachine(0, 5, 6),
       "Selected resolution is out of range for described system.\r"
       "Resolution for described system must be within the range from 2 to 5."},
      {MakeMachine(0, 5, 0),
       "Selected resolution is out of range for described system.\r"
       "Resolution for described system must be within the range from 2 to 5."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    GearRatio ratio{7, 9};
    std::string error;
    EXPECT_FALSE(IsGearRatioValid(c.machine, ratio, error));
    EXPECT_EQ(error, c.words);
    EXPECT_EQ(ratio.a, 7) << "a refusal leaves the old ratio";
  }
}

TEST(GearRatio, RangeStopsOneDigitShortOfExactlyAHundred) {
  std::int16_t low = 0, high = 0;
  ASSERT_TRUE(GetAllowableResolutionRange(1000.0F, 0, low, high));
  EXPECT_EQ(low, 1);  // 1000 at 0 digits is 100 at one
  std::string error;
  // Ratio 0.1 at 3 digits is exactly 100 at none: the walk back stops at 1.
  ASSERT_TRUE(GetResolutionRange(MakeMachine(0, 81.92F, 3), low, high, error));
  EXPECT_EQ(low, 1);
}

// ---- against an independent oracle that follows the rules word by word

struct Oracle {
  std::int32_t a = 0, b = 0;
  std::string error;
  bool valid = false;

  static double Pow10(int n) {
    double r = 1;
    for (int i = 0; i < n; ++i) r *= 10;
    return r;
  }
  static double RoundTo(double x, int places) {
    const double s = Pow10(places);
    return std::fabs(x) * s < 9007199254740992.0 ? std::nearbyint(x * s) / s : x;
  }
  static double TermA(const Machine& m) {
    const double multiplier[] = {1, 3.14159265358979323846, 3.14159265358979323846, 1, 1};
    const double feed = static_cast<double>(m.length) * multiplier[m.system];
    return RoundTo(Pow10(m.resolution) * feed * m.n1, m.resolution);
  }
  static double TermB(const Machine& m) { return 4.0 * m.encoderCount * m.n2; }

  static bool Reduce(double& a, double& b) {
    const double target = b / a;
    double least = 99999999999999.0;
    int best = 1;
    for (int i = 1; i <= 65535; ++i) {
      const double candidate = std::nearbyint(i * target);
      const double error = std::fabs(candidate / i - target);
      if (error < least && candidate <= 65535) {
        least = error;
        best = i;
      }
    }
    const double found = std::nearbyint(target * best);
    if (found > 65535) return false;
    a = best;
    b = found;
    return true;
  }

  static bool Allowable(float r, int k, int& low, int& high) {
    const float start = r;
    if (start > 100.0F) {
      for (; r > 100.0F; ++k) r = r / 10;
      low = k;
      for (; r > 0.01F; ++k) r = r / 10;
      high = k - 1;
    } else if (start < 0.01F) {
      for (; !(r >= 0.01F); --k) r = r * 10;
      high = k;
      for (; !(r >= 100.0F); --k) r = r * 10;
      low = k + 1;
    } else {
      return false;
    }
    if (low < 0) low = 0;
    return high >= 0;
  }

  explicit Oracle(const Machine& m) { Derive(m); }

  void Derive(const Machine& m) {
    double da = TermA(m), db = TermB(m);
    if (da < 1) return Fail("A is less than 1.  A must be within the range from 1 to 65535.");
    if (db < 1) return Fail("B is less than 1.  B must be within the range from 1 to 65535.");
    const double ratio = db / da;
    if (ratio < 0.01 || ratio > 100) {
      int low = 0, high = 0;
      Allowable(static_cast<float>(ratio), m.resolution, low, high);
      return Fail(
          "Selected resolution is out of range for described system.\rResolution for described "
          "system must be within the range from " +
          std::to_string(low) + " to " + std::to_string(high) + ".");
    }
    const bool whole = NumberText(da).find('.') == std::string::npos;
    if ((da > 65535 || db > 65535 || !whole) && !Reduce(da, db)) {
      return Fail("A and B could not be reduced.");
    }
    a = static_cast<std::int32_t>(std::nearbyint(da));
    b = static_cast<std::int32_t>(std::nearbyint(db));
    valid = true;
  }
  void Fail(const std::string& words) { error = words; }
};

#if defined(__SANITIZE_ADDRESS__)
constexpr int kMachines = 1000;  // unoptimised and instrumented, each reduction takes long
#else
constexpr int kMachines = 20000;
#endif

class RandomMachines {
 public:
  Machine Next() {
    Machine machine;
    machine.system = Pick(0, 4);
    const double exponent = std::uniform_real_distribution<>(-6, 6)(engine_);
    machine.length = static_cast<float>(std::pow(10.0, exponent));
    machine.n1 = Term();
    machine.n2 = Term();
    machine.resolution = static_cast<std::int16_t>(Pick(0, 5) > 0 ? Pick(0, 6) : Pick(0, 22));
    machine.encoderCount = EncoderCountFromIndex(Pick(0, 2));
    return machine;
  }

 private:
  int Pick(int low, int high) { return std::uniform_int_distribution<>(low, high)(engine_); }
  std::int16_t Term() {
    return static_cast<std::int16_t>(Pick(0, 3) > 0 ? Pick(1, 50) : Pick(0, 32767));
  }
  std::mt19937 engine_{20261124};
};

TEST(GearRatio, AgreesWithTheOracleOnRandomMachines) {
  RandomMachines machines;
  int valid = 0;
  for (int i = 0; i < kMachines; ++i) {
    const Machine machine = machines.Next();
    const Oracle oracle(machine);
    GearRatio ratio;
    std::string error;
    const bool result = IsGearRatioValid(machine, ratio, error);
    ASSERT_EQ(result, oracle.valid) << "machine " << i << ": " << error << " / " << oracle.error;
    ASSERT_EQ(error, oracle.error) << "machine " << i;
    if (!result) continue;
    ++valid;
    ASSERT_EQ(ratio.a, oracle.a) << "machine " << i;
    ASSERT_EQ(ratio.b, oracle.b) << "machine " << i;
    ASSERT_TRUE(ratio.a >= 1 && ratio.a <= 65535 && ratio.b >= 1 && ratio.b <= 65535);
  }
  EXPECT_GT(valid, kMachines / 20) << "the machines must not all be refused";
}

TEST(GearRatio, RangesAgreeWithTheOracleOnRandomMachines) {
  RandomMachines machines;
  for (int i = 0; i < kMachines; ++i) {
    const Machine machine = machines.Next();
    const double a = Oracle::TermA(machine);
    const double b = Oracle::TermB(machine);
    std::int16_t low = 0, high = 0;
    std::string error;
    const bool result = GetResolutionRange(machine, low, high, error);
    if (!(a > 0) || !(b > 0)) {
      ASSERT_FALSE(result) << "machine " << i;
      continue;
    }
    const auto ratio = static_cast<float>(b / a);
    int expectedLow = 0, expectedHigh = 0;
    bool expected = Oracle::Allowable(ratio, machine.resolution, expectedLow, expectedHigh);
    if (ratio >= 0.01F && ratio <= 100.0F) {
      float r = ratio;
      int k = machine.resolution;
      for (; r > 0.01F; ++k) r = r / 10;
      expectedHigh = k - 1;
      r = ratio;
      k = machine.resolution;
      for (; !(r >= 100.0F); --k) r = r * 10;
      expectedLow = k + 1 < 0 ? 0 : k + 1;
      expected = expectedHigh >= 0;
    }
    ASSERT_EQ(result, expected) << "machine " << i;
    ASSERT_EQ(low, expectedLow) << "machine " << i;
    ASSERT_EQ(high, expectedHigh) << "machine " << i;
  }
}

TEST(GearRatio, WildNumbersNeitherHangNorPassAsValid) {
  for (const float length : {0.0F, -5.0F, 1e-45F, 3.4e38F, INFINITY, -INFINITY, std::nanf("")}) {
    for (const std::int16_t term : {std::int16_t{-32768}, std::int16_t{0}, std::int16_t{32767}}) {
      for (std::int16_t resolution = 0; resolution <= 23; ++resolution) {
        for (const std::int32_t encoder : {0, -1, 2048, 2147483647}) {
          const Machine machine{4, length, term, term, resolution, encoder};
          GearRatio ratio;
          std::string error;
          std::int16_t low = 0, high = 0;
          if (IsGearRatioValid(machine, ratio, error)) {
            EXPECT_TRUE(ratio.a >= 1 && ratio.a <= 65535 && ratio.b >= 1 && ratio.b <= 65535);
          }
          (void)GetResolutionRange(machine, low, high, error);
        }
      }
    }
  }
}

// ---- factors and words

TEST(ConversionFactors, FollowTimeBaseAndResolution) {
  ConversionFactors factors{1, 1, 1, 60};
  UpdateConversionFactors(factors, "seconds", 3);
  EXPECT_DOUBLE_EQ(factors[0], 1000);
  EXPECT_DOUBLE_EQ(factors[1], 60);
  EXPECT_DOUBLE_EQ(factors[2], 0.06);
  EXPECT_DOUBLE_EQ(factors[3], 60);
  UpdateConversionFactors(factors, "minutes", 2);
  EXPECT_DOUBLE_EQ(factors[1], 0.1);
  EXPECT_DOUBLE_EQ(factors[2], 0.1 / 60000);
  UpdateConversionFactors(factors, "hours", 0);  // an unknown word keeps the time entry
  EXPECT_DOUBLE_EQ(factors[3], 1);
  EXPECT_DOUBLE_EQ(factors[0], 1);
}

TEST(MachineUnits, WordsAndIndexes) {
  EXPECT_EQ(SpeedUnitsOf("mm", "seconds"), "mm/sec");
  EXPECT_EQ(SpeedUnitsOf("inch", "minutes"), "in/min");
  EXPECT_EQ(SpeedUnitsOf("furlong", "seconds"), "sec");
  EXPECT_EQ(AccelerationUnitsOf("rad", "seconds"), "rad/sec^2");
  EXPECT_EQ(DistanceUnitsFromIndex(5), "rad");
  EXPECT_EQ(DistanceUnitsFromIndex(6), "");
  EXPECT_EQ(DistanceUnitsIndex("deg"), "4");
  EXPECT_EQ(DistanceUnitsIndex("furlong"), "0");
  EXPECT_EQ(TimeUnitsIndex("minutes"), "1");
  EXPECT_EQ(EncoderCountFromIndex(2), 32768);
  EXPECT_EQ(EncoderCountFromIndex(7), 2048);
  EXPECT_EQ(MechanicalSystemFromIndex(-1), "");
  EXPECT_DOUBLE_EQ(MultiplierFactor(5), 0);
}

}  // namespace
}  // namespace velmoor
