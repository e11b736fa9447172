// The simulated axis: jog, limits, alarms, zero point return, and the loops behind all of it.
#include "simulator/axis/SimulatedAxis.h"

#include <gtest/gtest.h>

#include <cmath>

#include "simulator/AxisBench.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

// ---- the commanded motion

TEST(MotionProfile, KeepsItsLimitsAndEndsExactlyAtItsTarget) {
  struct Case {
    double from, to, speed;
    ProfileRates rates;
    double seconds;  // by the trapezoid's formula
  };
  const Case cases[] = {{0, 1000, 1000, {10000, 10000}, 1.1},
                        {0, -1000, 1000, {10000, 10000}, 1.1},
                        {0, 100, 1e6, {10000, 10000}, 0.2},
                        {500, 500.25, 1000, {10000, 10000}, 0.01},
                        {0, 1000, 1000, {5000, 20000}, 1.125}};
  constexpr double kStep = 250e-6;
  for (const Case& row : cases) {
    SCOPED_TRACE(&row - cases);
    MotionProfile profile;
    profile.PlaceAt(row.from);
    profile.MoveTo(row.to, row.speed);
    double seconds = 0;
    double fastest = 0, steepest = 0;
    while (!profile.IsDone() && seconds < 10) {
      const double before = profile.Speed();
      profile.Step(kStep, row.rates);
      seconds += kStep;
      fastest = std::max(fastest, std::abs(profile.Speed()));
      steepest = std::max(steepest, std::abs(profile.Speed() - before) / kStep);
    }
    EXPECT_EQ(profile.Position(), row.to);
    EXPECT_NEAR(seconds, row.seconds, row.seconds * 0.02 + 0.003) << row.to;
    EXPECT_LE(fastest, row.speed * 1.000001);
    // The last step, which ends the motion, may be up to twice as steep.
    EXPECT_LE(steepest, 2.000001 * std::max(row.rates.acceleration, row.rates.deceleration));
  }
}

// ---- jog

TEST_F(AxisTest, JogsAtItsSpeedAndStandsAfterTheStop) {
  Ask("SVON");
  ASSERT_EQ(Ask("JOGP2000"), "0OK");  // 2000000 counts a minute
  Pass(1s);
  // 32768 counts a turn with the factory's gear.
  EXPECT_NEAR(Value("NREF"), 61, 1);
  EXPECT_NEAR(Value("NFB"), 61, 2);
  EXPECT_NEAR(Value("PUN"), 2e6 / 60, 2e6 / 60 * 0.05);
  // A position loop without feed-forward lags behind by speed over gain.
  EXPECT_NEAR(Value("PER"), 2e6 / 60 / 40, 60);
  EXPECT_EQ(Ask("ALM"), "0ALM RUN");
  EXPECT_EQ(Ask("SKIP"), "0OK");
  Pass(500ms);
  const int stands = Value("PUN");
  EXPECT_EQ(Value("NFB"), 0);
  EXPECT_EQ(Ask("ALM"), "0ALM INPOS");
  Pass(1min);
  EXPECT_EQ(Value("PUN"), stands);
  ASSERT_EQ(Ask("JOGN2000"), "0OK");
  Pass(1s);
  EXPECT_NEAR(Value("NFB"), -61, 2);
}

TEST_F(AxisTest, ComesToRestWithoutPower) {
  Ask("SVON");
  Ask("JOGP60000");
  Pass(1s);
  ASSERT_GT(Value("NFB"), 1500);
  Ask("SVOFF");
  EXPECT_EQ(Ask("ALM"), "0ALM BB");
  Pass(2s);
  EXPECT_EQ(Value("NFB"), 0);
  EXPECT_EQ(Value("PER"), 0);
}

TEST_F(AxisTest, SettlesAtEveryRigidityAndFollowsCloserTheStifferItIs) {
  int lag = INT32_MAX;
  for (int level = 1; level <= 10; ++level) {
    ASSERT_EQ(Ask("TUNESTORE"), "0OK");
    ASSERT_EQ(Ask("STIFF" + std::to_string(level)), "0OK");
    Ask("SVON");
    Ask("JOGP20000");
    Pass(500ms);
    const int shorter = Value("PER");
    EXPECT_LT(shorter, lag) << level;
    lag = shorter;
    Ask("SKIP");
    Pass(2s);
    EXPECT_EQ(Value("NFB"), 0) << level;
    EXPECT_LE(std::abs(Value("PER")), 1) << level;
  }
}

TEST_F(AxisTest, ALoopThatKnowsItsLoadOvershootsLess) {
  const auto overshoot = [this] {
    Ask("SVON");
    Ask("JOGP20000");
    Pass(500ms);
    Ask("SKIP");
    int most = 0;
    for (int i = 0; i < 1000; ++i) {
      Pass(1ms);
      most = std::max(most, -Value("PER"));
    }
    return most;
  };
  const int untuned = overshoot();
  Ask("TUNESTORE");
  EXPECT_LT(overshoot(), untuned / 2);
}

// ---- limits

TEST_F(AxisTest, StopsAtItsEndSwitchesAsTheParameterSays) {
  struct Case {
    const char* stop;  // Pn819
    bool servoStaysOn;
    int mostOverrun;  // counts behind the switch
  };
  const Case cases[] = {{"0", true, 45000}, {"1", true, 12000}, {"2", false, 45000}};
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string("Pn819=") + row.stop);
    ASSERT_EQ(Ask(std::string("PRM819=") + row.stop), "0OK");
    Ask("RES");
    Pass(1s);
    axis().SetSwitches(
        {.forwardEnd = axis().MotorTurns() + 5, .reverseEnd = axis().MotorTurns() - 5});
    Ask("SVON");
    const int start = Value("PUN");
    Ask("JOGP20000");
    Pass(3s);
    EXPECT_EQ(Ask("ALM"), "0ALM P-OT") << row.stop;
    EXPECT_EQ(Ask("ERR"), "0ERR E100");
    EXPECT_EQ(Value("NFB"), 0);
    EXPECT_EQ(axis().IsServoOn(), row.servoStaysOn);
    const int way = Value("PUN") - start;
    EXPECT_GE(way, 5 * 32768);
    EXPECT_LE(way, 5 * 32768 + row.mostOverrun) << row.stop;
  }
  // Away from the switch it may go.
  Ask("PRM819=0");
  Ask("SVON");
  const int before = Value("PUN");
  Ask("JOGP20000");
  Pass(1s);
  EXPECT_NEAR(Value("PUN"), before, 100);
  Ask("JOGN5000");
  Pass(1s);
  EXPECT_LT(Value("PUN"), before - 50000);
}

TEST_F(AxisTest, StopsAtTheLimitsOfItsPosition) {
  Ask("PRM81B=100000");
  Ask("PRM81C=-50000");
  Ask("SVON");
  Ask("JOGP20000");
  Pass(3s);
  EXPECT_NEAR(Value("PUN"), 100000, 50);
  EXPECT_EQ(Ask("ERR"), "0ERR E102");
  Ask("JOGN20000");
  Pass(3s);
  EXPECT_NEAR(Value("PUN"), -50000, 50);
  EXPECT_EQ(Ask("ERR"), "0ERR E103");
}

// ---- alarms

TEST_F(AxisTest, TripsOnItsFaultsAndKeepsThemInTheHistory) {
  struct Case {
    const char* alarm;
    std::vector<const char*> before;
    double load;
    const char* motion;
  };
  const Case cases[] = {{"A.50", {"PRM402=1"}, 0, "JOGP20000"},
                        {"A.43", {}, 2.9, "JOGP1000"},
                        {"A.44", {}, 1.3, "SKIP"},
                        {"A.80", {}, 0, "JOGP1000"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.alarm);
    for (const char* const command : row.before) ASSERT_EQ(Ask(command), "0OK");
    ASSERT_EQ(Ask("SVON"), "0OK") << row.alarm;
    if (row.load != 0) axis().SetLoad({.loadTorque = row.load});
    ASSERT_EQ(Ask(row.motion), "0OK");
    if (row.alarm == std::string("A.80")) {
      axis().SetSwitches({.forwardEnd = -1e6, .reverseEnd = 1e6});
    }
    Pass(60s);
    EXPECT_EQ(Ask("ALM"), std::string("0ALM ") + row.alarm);
    EXPECT_EQ(Ask("ALM0"), std::string("0ALM0=") + row.alarm);
    EXPECT_FALSE(axis().IsServoOn());
    EXPECT_EQ(Ask("SVON"), "0E216 ERR");
    axis().SetLoad({});
    axis().SetSwitches({});
    Ask("PRM402=300");
    Ask("ARES");
    Ask("RES");
    Pass(1s);
  }
  EXPECT_EQ(Ask("ALM3"), "0ALM3=A.50");
}

TEST_F(AxisTest, WarnsBeforeItTrips) {
  Ask("PRM20B=10");
  Ask("SVON");
  Ask("JOGP80000");
  Pass(1s);
  EXPECT_EQ(Ask("ALM"), "0ALM A.90");
  EXPECT_TRUE(axis().IsServoOn());
  EXPECT_EQ(Value("OUT1") & 0b10, 0b10);
  Ask("SKIP");
  Pass(1s);
  EXPECT_EQ(Ask("ALM"), "0ALM INPOS");
}

// ---- zero point return

TEST_F(AxisTest, FindsItsZeroPointByEachMethod) {
  struct Case {
    const char* method;     // Pn823
    const char* direction;  // Pn824
    double turns;           // where the signal is, of the motor
    double slack;
  };
  // The cam lies between two and three turns, either side of the beginning.
  const Case cases[] = {{"0", "0", 0, 0.01}, {"1", "0", 4, 0.2},  {"2", "0", 3, 0.2},
                        {"3", "0", 1, 0.2},  {"1", "1", -4, 0.2}, {"3", "1", 0, 0.2}};
  Ask("PRM81D=500");
  Ask("PRM828=2000");
  for (const Case& row : cases) {
    Ask(std::string("PRM823=") + row.method);
    Ask(std::string("PRM824=") + row.direction);
    AxisBench fresh;
    for (const char* const pn : {"81D", "828", "823", "824"}) {
      fresh.Ask(std::string("PRM") + pn + "=" + NumberOf(Ask(std::string("PRM") + pn)));
    }
    // With one signal alone nothing is approached.
    if (row.method == std::string("2") || row.method == std::string("3")) fresh.Ask("PRM825=1");
    fresh.Ask("SVON");
    fresh.Pass(10ms);
    // Off the pulse that the beginning itself is.
    const bool searches = row.method != std::string("0");
    if (searches) {
      fresh.Ask("JOGP1000");
      fresh.Pass(500ms);
      fresh.Ask("SKIP");
      fresh.Pass(500ms);
    }
    ASSERT_EQ(fresh.Ask("ZRN"), "0OK");
    fresh.Pass(60s);
    EXPECT_EQ(fresh.Ask("ERR"), "0ERR 0000") << row.method << row.direction;
    EXPECT_NEAR(fresh.Value("PUN"), 500, 2) << row.method << row.direction;
    const double distance = searches ? 2000.0 / 32768 : 0;
    EXPECT_NEAR(fresh.axis().MotorTurns(), row.turns + distance, row.slack)
        << row.method << row.direction;
  }
}

TEST_F(AxisTest, TellsAZeroPointThatIsNotThere) {
  MachineSwitches switches;
  switches.homeBegin = switches.homeEnd = 1e9;
  axis().SetSwitches(switches);
  Ask("PRM823=2");
  Ask("PRM826=60000");
  Ask("SVON");
  Ask("ZRN");
  Pass(10s);
  EXPECT_EQ(Ask("ALM"), "0ALM RUN");
  Pass(60s);
  EXPECT_EQ(Ask("ERR"), "0ERR E311");
  EXPECT_EQ(Ask("ALM"), "0ALM INPOS");
}

TEST_F(AxisTest, AHomeOffsetRenumbersThePositionsAtOnce) {
  Ask("SVON");
  Pass(10ms);
  EXPECT_EQ(Ask("ZSET-1200"), "0OK");
  EXPECT_EQ(Value("PUN"), -1200);
  EXPECT_EQ(Ask("PRM81D"), "0Pn81D=-00001200");
  Pass(1s);
  EXPECT_EQ(Value("NFB"), 0);
}

// ---- lines

TEST_F(AxisTest, FollowsItsLinesUnderTheirParameters) {
  Ask("JSPDT5=3000");
  Input("IN1", 0, true);  // /S-ON
  EXPECT_TRUE(axis().IsServoOn());
  Input("IN2", 0, true);  // jog mode
  Input("IN2", 4, true);  // row 5
  Input("IN2", 6, true);
  Input("IN2", 3, true);  // reverse
  Pass(1s);
  EXPECT_NEAR(Value("NREF"), -92, 1);
  Input("IN2", 2, true);  // both stand still
  Pass(1s);
  EXPECT_EQ(Value("NFB"), 0);
  Input("IN1", 0, false);
  EXPECT_FALSE(axis().IsServoOn());
  // Normally closed, the line that is off switches on.
  Ask("PRM80B=1");
  Pass(1ms);
  EXPECT_TRUE(axis().IsServoOn());
  EXPECT_EQ(Value("IN2"), 0b1011101);
}

TEST_F(AxisTest, ShowsItsZoneAsABinaryNumber) {
  Ask("ZONENT5=-1000");
  Ask("ZONEPT5=1000");
  Ask("PRM811=2");  // output 0 follows the zones, output 2 too but inverted
  Ask("PRM813=3");
  Pass(1ms);
  EXPECT_EQ(Value("OUT2"), 0b0000010);
  Ask("SVON");
  Ask("JOGP2000");
  Pass(1s);
  EXPECT_EQ(Value("OUT2"), 0b0001000);
}

}  // namespace
}  // namespace velmoor
