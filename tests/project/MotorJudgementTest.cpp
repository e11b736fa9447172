// What the connected motor is, judged against the project, in words.
#include "operations/MotorJudgement.h"

#include "support/ProjectWorld.h"

namespace velmoor {
namespace {

class Judgement : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }
  std::string Words(const MotorFacts& facts) {
    std::string all;
    for (const std::string& difference : Judge(project(), facts).differences) all += difference;
    return all;
  }
  void Set(const char* strPn, const char* controller) {
    ParameterChanges changes;
    changes[strPn] = {controller, {}, MarkChange::set};
    const_cast<ParameterStore&>(project().Parameters()).Commit(changes);
  }
};

// The machine has 5 mm a turn in thousandths, so 2048 lines make B/A = 8192/5000.
TEST_F(Judgement, TellsTheEncoderByWhatTheGearRatioWouldDo) {
  const std::pair<std::int32_t, std::string> cases[] = {
      {0, ""},  // not known
      {2048, ""},
      {16384,
       "Encoder: every move would be 8 times too short: the project says 2048 lines, the motor has "
       "16384."},
      {1024,
       "Encoder: every move would be 2 times too long: the project says 2048 lines, the motor has "
       "1024.  The machine's list of encoders does not hold it."}};
  for (const auto& [lines, words] : cases) EXPECT_EQ(Words({.encoderLines = lines}), words);
  EXPECT_EQ(Judge(project(), {.encoderLines = 16384}).encoderIndex, 1);
  EXPECT_EQ(Judge(project(), {.encoderLines = 1024}).encoderIndex, -1);
}

TEST_F(Judgement, CountsTheRatioThatIsThereAndNotTheOneThatWasDescribed) {
  Set("Pn202", "16384");
  Set("Pn203", "625");
  EXPECT_EQ(Words({.encoderLines = 32768}),
            "Encoder: the project says 2048 lines, the motor has 32768.  The gear ratio, B/A = "
            "16384/625, fits the motor all the same.");
  Set("Pn203", "500");
  EXPECT_EQ(Words({.encoderLines = 32768}),
            "Encoder: every move would be 1.25 times too long: the project says 2048 lines, the "
            "motor has 32768.");
}

TEST_F(Judgement, TellsTheRatedPowerByTheValuesOutside) {
  EXPECT_EQ(Words({.watts = "400"}), "") << "a project of no size is for any motor";
  EXPECT_EQ(Words({.watts = "no number"}), "");
  project().SetMotorSize("400");
  EXPECT_EQ(Words({.watts = "400"}), "");
  EXPECT_EQ(Words({.watts = "200"}),
            "Rated power: the project is for a motor of 400 W, this one has 200 W.  All values lie "
            "within its limits, but gains and torques were chosen for another one.");
  EXPECT_EQ(Judge(project(), {.watts = "200"}).watts, "200");
  EXPECT_FALSE(Judge(project(), {.watts = "200"}).outside);
  EXPECT_TRUE(Judge(project(), {.watts = "3000"}).outside);
}

TEST_F(Judgement, TellsOldFirmwareOnlyWhereTheProjectNeedsMore) {
  EXPECT_EQ(Words({.firmware = "0002"}), "");
  Set("Pn833", "5");
  EXPECT_EQ(Words({.firmware = "0002"}),
            "Option card: its firmware is 2, and the project needs 3.  It does not have Pn833, "
            "which stays on offer.");
  EXPECT_EQ(Words({.firmware = "0003"}), "");
}

}  // namespace
}  // namespace velmoor
