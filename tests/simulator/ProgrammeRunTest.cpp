// The motion programme on the simulated axis.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "simulator/AxisBench.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

// Position, speed, registration distance and speed, outputs, event, loop, next.
using Row = std::array<const char*, 8>;

class ProgrammeTest : public AxisTest {
 protected:
  void Load(const std::vector<Row>& rows) {
    static constexpr const char* kWords[] = {"POST",  "SPDT",   "RDSTT", "RSPDT",
                                             "POUTT", "EVENTT", "LOOPT", "NEXTT"};
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t i = 0; i < std::size(kWords); ++i) {
        const std::string command = kWords[i] + std::to_string(row) + "=" + rows[row][i];
        ASSERT_EQ(Ask(command), "0OK") << command;
      }
    }
    ASSERT_EQ(Ask("TUNESTORE"), "0OK");
    ASSERT_EQ(Ask("SVON"), "0OK");
    Pass(10ms);
  }
  [[nodiscard]] bool Runs() { return axis().IsProgrammeRunning(); }
};

TEST_F(ProgrammeTest, GoesThroughItsStepsWithTheirRepetitionsOutputsAndTimes) {
  Load({{"A+10000", "6000", "-", "1", "ANNNN", "IT0", "1", "1"},
        {"I+1000", "6000", "-", "1", ":A:::", "IT100", "3", "2"},
        {"-", "1", "-", "1", "N::::", "T500", "1", "END"}});
  ASSERT_EQ(Ask("START"), "0OK");
  Pass(80ms);
  EXPECT_EQ(Value("OUT2"), 0b0000010);
  Pass(400ms);  // 100000 counts a second: 0.16 s of way, and the settling
  EXPECT_EQ(axis().Programme().Row(), 1U);
  for (int i = 0; i < 2000 && axis().Programme().Row() == 1; ++i) Pass(1ms);
  EXPECT_EQ(axis().Programme().Row(), 2U);
  Pass(1ms);
  EXPECT_EQ(Value("OUT2"), 0b0000101);
  EXPECT_EQ(Value("STS") & 0b0010000, 0b0010000);
  Pass(1s);
  EXPECT_FALSE(Runs());
  EXPECT_NEAR(Value("PUN"), 13000, 1);
  EXPECT_EQ(Value("STS"), 0b1000111);
}

TEST_F(ProgrammeTest, WaitsForItsEvents) {
  struct Case {
    const char* event;
    int milliseconds;  // until the next step has begun, for 10000 counts at 100000 a second
    int slack;
  };
  // The profile takes 160 ms; the axis itself needs longer, and the amplifier signals "near"
  // before.
  const Case cases[] = {{"T0", 0, 3}, {"T250", 250, 3}, {"DT0", 160, 8}, {"DT100", 260, 8}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.event);
    Load({{"I+10000", "6000", "-", "1", ":::::", row.event, "1", "1"},
          {"-", "1", "-", "1", ":::::", "SEL3T0", "1", "END"}});
    ASSERT_EQ(Ask("PGMRES"), "0OK");
    ASSERT_EQ(Ask("START"), "0OK");
    int milliseconds = 0;
    for (; milliseconds < 3000 && axis().Programme().Row() == 0; ++milliseconds) Pass(1ms);
    EXPECT_NEAR(milliseconds, row.milliseconds, row.slack) << row.event;
    Pass(2s);
    EXPECT_TRUE(Runs());
    Input("IN2", 6, true);  // SEL3
    Pass(5ms);
    EXPECT_FALSE(Runs());
    Input("IN2", 6, false);
  }
}

TEST_F(ProgrammeTest, NearComesBeforeInPosition) {
  const auto duration = [this](const char* event) {
    Load({{"I+10000", "6000", "-", "1", ":::::", event, "1", "END"}});
    Ask("START");
    int milliseconds = 0;
    for (; milliseconds < 3000 && Runs(); ++milliseconds) Pass(1ms);
    Pass(1s);
    return milliseconds;
  };
  EXPECT_LT(duration("NT0"), duration("IT0"));
}

TEST_F(ProgrammeTest, RunsWithoutEndUntilAnInputLetsItStop) {
  Load({{"-INFINITE", "3000", "-", "1", ":::::", "SEL0T0", "1", "1"},
        {"STOP", "1", "-", "1", ":::::", "IT0", "1", "END"}});
  Ask("START");
  Pass(2s);
  EXPECT_LT(Value("NFB"), -80);
  Input("IN2", 3, true);
  Pass(1s);
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Value("NFB"), 0);
}

TEST_F(ProgrammeTest, EndsItsMoveBehindTheRegistrationSignal) {
  Load({{"I+200000", "3000", "5000", "1200", ":::::", "IT0", "1", "END"}});
  Ask("START");
  Pass(1s);
  Input("IN1", 6, true);
  Pass(1ms);
  const int signal = Value("RPOS");
  EXPECT_NEAR(signal, 50000, 5000);
  EXPECT_GT(Value("RDST"), 4000);
  Pass(2s);
  EXPECT_NEAR(Value("PUN"), signal + 5000, 1);
  EXPECT_EQ(Ask("ERR"), "0ERR 0000");
  // Without a signal it goes all the way.
  Input("IN1", 6, false);
  const int before = Value("PUN");
  Ask("START");
  Pass(6s);
  EXPECT_NEAR(Value("PUN"), before + 200000, 1);
}

TEST_F(ProgrammeTest, HaltsAndGoesOnAndBeginsAnew) {
  Load({{"A+100000", "3000", "-", "1", "ANNNN", "IT0", "1", "1"},
        {"A+0", "3000", "-", "1", ":::::", "IT0", "1", "0"}});
  Ask("PRM832=1");
  Ask("START");
  Pass(1s);
  ASSERT_EQ(Ask("STOP"), "0OK");
  Pass(500ms);
  const int halted = Value("PUN");
  EXPECT_EQ(Value("NFB"), 0);
  EXPECT_EQ(Value("STS") & 0b0011000, 0b0001000);
  Pass(1s);
  EXPECT_EQ(Value("PUN"), halted);
  Ask("START");
  Pass(1s);
  EXPECT_NEAR(Value("PUN"), 100000, 2000);
  Ask("PGMRES");
  Pass(500ms);
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Value("OUT2") & 0b10, 0);
  Ask("START1");
  Pass(1ms);
  EXPECT_EQ(axis().Programme().Row(), 1U);
  Ask("SVOFF");
  EXPECT_FALSE(Runs());
}

TEST_F(ProgrammeTest, StartsByItsLinesAtTheSelectedStep) {
  Load({{"A+1000", "3000", "-", "1", ":::::", "IT0", "1", "END"},
        {"A+2000", "3000", "-", "1", ":::::", "IT0", "1", "END"},
        {"A+3000", "3000", "-", "1", ":::::", "IT0", "1", "END"}});
  Ask("PRM831=1");
  Input("IN2", 4, true);  // SEL1: row 2
  Input("IN2", 1, true);
  Pass(1s);
  EXPECT_NEAR(Value("PUN"), 3000, 1);
  Input("IN2", 1, false);
  Ask("PRM831=0");
  Pass(1ms);
  Input("IN2", 1, true);
  Pass(1s);
  EXPECT_NEAR(Value("PUN"), 1000, 1);
}

TEST_F(ProgrammeTest, EndsAtWhatItCannotExecute) {
  struct Case {
    Row row;
    const char* error;
  };
  const Case cases[] = {{{"", "", "", "", "", "", "", ""}, "E300"},
                        {{"I+1", "100", "-", "1", ":::::", "IT0", "", "END"}, "E301"},
                        {{"I+1", "0", "-", "1", ":::::", "IT0", "1", "END"}, "E305"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.error);
    for (const char* const word : {"POST0=", "LOOPT0="}) Ask(word);
    Load({row.row});
    Ask("START");
    Pass(1s);
    EXPECT_FALSE(Runs());
    EXPECT_EQ(Ask("ERR"), std::string("0ERR ") + row.error);
    Ask("ARES");
  }
}

TEST_F(ProgrammeTest, ARotaryAxisTakesThePathOfItsKind) {
  struct Case {
    const char* kind;  // Pn81A
    const char* target;
    int way;  // counts from 1000, of a turn of 36000
  };
  const Case cases[] = {{"1", "A+35000", -2000}, {"1", "A+10000", 9000}, {"2", "A+500", 35500},
                        {"3", "A+2000", -35000}, {"4", "A+2000", 1000},  {"4", "A-2000", -35000}};
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string("Pn81A=") + row.kind + " to " + row.target);
    Ask("PRM81B=35999");
    ASSERT_EQ(Ask(std::string("PRM81A=") + row.kind), "0OK");
    Ask("RES");
    Pass(1s);
    Load({{"I+1000", "6000", "-", "1", ":::::", "IT0", "1", "1"},
          {row.target, "6000", "-", "1", ":::::", "IT0", "1", "END"}});
    Ask("START");
    Pass(5s);
    EXPECT_NEAR(Value("PFB"), 1000 + row.way, 2) << row.kind << row.target;
    EXPECT_EQ(Value("PUN"), (1000 + row.way + 36000) % 36000);
  }
}

}  // namespace
}  // namespace velmoor
