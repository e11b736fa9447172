// Trying gains on a simulated axis: what moves, what is recorded, what is sent and taken back.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "ServoJogFixture.h"
#include "online/TestMove.h"
#include "platform/Numbers.h"
#include "recordings/RecordingFolder.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

TEST(TestMoveOrder, GoesThereRestsAndComesBack) {
  using Wish = TestMove::Wish;
  TestMove move;
  EXPECT_EQ(move.Next(0, 0), Wish::nothing);
  move.Begin({.distance = 1000, .seconds = 0, .rest = 0.5}, 200, 10);
  const struct {
    double now;
    std::int32_t position;
    Wish wish;
  } steps[] = {
      {10, 200, Wish::forward},    {10.1, 700, Wish::nothing},  {10.2, 1200, Wish::stop},
      {10.6, 1230, Wish::nothing}, {10.8, 1230, Wish::reverse}, {11, 300, Wish::nothing},
      {11.1, 199, Wish::stop},     {11.5, 190, Wish::nothing},  {11.7, 190, Wish::end},
      {12, 190, Wish::nothing},
  };
  for (const auto& step : steps)
    EXPECT_EQ(move.Next(step.position, step.now), step.wish) << step.now;
  // By time, and back for as long.
  move.Begin({.distance = {}, .seconds = 2, .rest = 0}, 0, 0);
  EXPECT_EQ(move.Next(0, 0), Wish::forward);
  EXPECT_EQ(move.Next(900, 1.9), Wish::nothing);
  EXPECT_EQ(move.Next(1000, 2.1), Wish::stop);
  EXPECT_EQ(move.Next(1000, 2.2), Wish::reverse);
  EXPECT_EQ(move.Next(100, 4.2), Wish::nothing);
  EXPECT_EQ(move.Next(0, 4.4), Wish::stop);
  // An axis that never gets there is not driven for ever.
  move.Begin({.distance = 1000, .seconds = 0, .rest = 0}, 0, 0);
  EXPECT_EQ(move.Next(0, 0), Wish::forward);
  EXPECT_EQ(move.Next(10, TestMove::kLongest + 0.1), Wish::stop);
  move.End();
  EXPECT_FALSE(move.IsUnderWay());
}

class TryIt : public ServoJog {
 protected:
  // Opens the windows of the gains and of the trials, acts in the latter and closes both.
  void Try(const User& user) {
    data.forms.OnShow("frmTryIt", [this, user](headless::HeadlessForm& form) {
      Pass(0.5);
      user(form);
      if (data.forms.IsOpen("frmTryIt")) form.Press("cmdExit");
    });
    data.forms.OnShow("frmTuning", [](headless::HeadlessForm& form) {
      form.Press("cmdTry");
      form.Press("cmdCancel");
    });
    Main().Choose("mnuToolsTuning");
  }
  // Time of the program and of the axis.
  void Pass(double seconds) {
    for (double passed = 0; passed < seconds; passed += 0.01) {
      port.Advance(10ms);
      data.events.Yield();
    }
  }
  void Move(headless::HeadlessForm& form, double seconds) {
    form.Hold("cmdMove");
    Pass(seconds);
    if (data.forms.IsOpen("frmTryIt")) form.LetGo("cmdMove");
  }
  RecordingFolder Folder() { return RecordingFolder(path); }
  static std::string Cell(headless::HeadlessForm& form, const char* grid, int row, int column) {
    return form.grid(grid).Source()->Text(row, column);
  }
  std::string InAmplifier(int parameter) {
    return Amplifier()
        .Execute("PRM" + HexText(static_cast<std::uint32_t>(parameter)), port.Now())
        .text;
  }
  // Reference units.
  double Position() {
    const std::string answer = Amplifier().Execute("PUN", port.Now()).text;
    return ParseFloat(answer.substr(answer.find('=') + 1)).value();
  }
  int Commands(const std::string& word) { return Amplifier().Asked(word); }
};

TEST_F(TryIt, MovesThereAndBackAndRecordsIt) {
  Try([this](headless::HeadlessForm& form) {
    EXPECT_FALSE(form.button("cmdMove").Enabled()) << "the servo is off";
    Enable(form);
    form.Type("txtSpeed", "120");
    form.Type("txtAmount", "20000");
    EXPECT_EQ(form.label("lblAmountUnit").Text(), "reference units");
    const double from = Position();
    Move(form, 12);
    EXPECT_EQ(Commands("JOGP"), 1);
    EXPECT_EQ(Commands("JOGN"), 1);
    EXPECT_GE(Commands("SKIP"), 2);
    EXPECT_LT(std::abs(Position() - from), 3000) << "back where it was, within 3 mm";
    ASSERT_EQ(Folder().Names().size(), 1U);
    const Recording trial = ReadRecording(Folder().PathOf(Folder().Names().front()));
    EXPECT_EQ(trial.heading.cause, "test move");
    const auto& position = trial.CurveOf("Current Position");
    const auto highest = std::ranges::max(position, {}, &ChartPoint::y).y;
    EXPECT_GE(highest - position.front().y, 20000);
    EXPECT_LT(highest - position.front().y, 25000);
    EXPECT_GT(trial.CurveOf("Following Error").size(), 20U);
    EXPECT_GT(trial.CurveOf("Torque").size(), 20U);
    EXPECT_EQ(form.timeChart("chtTimes").shown.lanes.size(), 4U);
    EXPECT_EQ(Cell(form, "vsFigures", 0, 1), "now");
    EXPECT_NE(Cell(form, "vsFigures", 4, 1), "-") << "in motion";
  });
  EXPECT_FALSE(Amplifier().State().axis.IsMoving());
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(TryIt, SendsGainsComparesTrialsAndTakesThemBack) {
  const std::string before = InAmplifier(0x100);
  const std::string inProject = Project().Editor().GetParameterValue("Pn100");
  Try([&](headless::HeadlessForm& form) {
    Enable(form);
    form.Type("txtAmount", "5000");
    Move(form, 6);
    EXPECT_FALSE(form.button("cmdSend").Enabled());
    // Refused as typing is, and nothing is sent.
    EXPECT_TRUE(form.EditCell("vsGains", 1, 3, "99999"));
    form.Press("cmdSend");
    EXPECT_THAT(Boxes().at(0), StartsWith("The gains cannot be taken!\rPn100"));
    EXPECT_EQ(InAmplifier(0x100), before);
    EXPECT_TRUE(form.EditCell("vsGains", 1, 3, "55"));
    Amplifier().ForgetWhatWasAsked();
    form.Press("cmdSend");
    EXPECT_EQ(Commands("PUN") + Commands("NFB") + Commands("PER"), 0) << "it reads meanwhile";
    EXPECT_THAT(Boxes().at(0), StartsWith("Download Tuning Parameters complete!"));
    EXPECT_THAT(InAmplifier(0x100), HasSubstr("00000055"));
    EXPECT_EQ(Cell(form, "vsGains", 1, 2), "55");
    EXPECT_EQ(Project().Editor().GetParameterValue("Pn100"), "55");
    Move(form, 6);
    EXPECT_EQ(form.timeChart("chtTimes").shown.lanes.at(0).others.size(), 1U);
    EXPECT_EQ(Cell(form, "vsFigures", 0, 1) + Cell(form, "vsFigures", 0, 2) +
                  Cell(form, "vsFigures", 0, 3),
              "beforenowDifference");
    EXPECT_THAT(ReadRecordingHeading(Folder().PathOf(Folder().Names().front())).gains,
                StartsWith("Pn100=55"));
    Boxes();
    form.Press("cmdBack");
    EXPECT_EQ(InAmplifier(0x100), before);
    EXPECT_EQ(Cell(form, "vsGains", 1, 2), inProject);
    EXPECT_FALSE(form.button("cmdBack").Enabled());
  });
  EXPECT_EQ(Project().Editor().GetParameterValue("Pn100"), inProject);
  const TransferHistory history(path);
  EXPECT_EQ(
      std::ranges::count(history.Entries(), "Download Tuning Parameters", &HistoryEntry::name), 2);
}

TEST_F(TryIt, AFailedSendLeavesTheProjectAsItWas) {
  const std::string inProject = Project().Editor().GetParameterValue("Pn100");
  Try([&](headless::HeadlessForm& form) {
    line.faults.Add({.kind = FaultKind::notGood, .match = "PRM100="});
    EXPECT_TRUE(form.EditCell("vsGains", 1, 3, "55"));
    form.Press("cmdSend");
    EXPECT_EQ(Cell(form, "vsGains", 1, 2), inProject);
    EXPECT_EQ(Cell(form, "vsGains", 1, 3), "55") << "to be sent again";
    EXPECT_FALSE(form.button("cmdBack").Enabled());
  });
  EXPECT_EQ(Project().Editor().GetParameterValue("Pn100"), inProject);
}

// Whatever ends a trial, the motor stands and the servo is off behind it.
TEST_F(TryIt, TheMotorStopsWhicheverWayATrialEnds) {
  const struct {
    const char* what;
    std::function<void(headless::HeadlessForm&)> end;
  } cases[] = {
      {"let go", [](headless::HeadlessForm& form) { form.LetGo("cmdMove"); }},
      {"window closed", [](headless::HeadlessForm& form) { (void)form.Unload(); }},
      {"alarm", [this](headless::HeadlessForm&) { Amplifier().RaiseAlarm("A.50"); }},
      {"program ends", [this](headless::HeadlessForm&) { Form().MakeSafe(); }},
  };
  for (const auto& each : cases) {
    Try([&](headless::HeadlessForm& form) {
      Enable(form);
      form.Type("txtAmount", "1000000");
      form.Hold("cmdMove");
      Pass(1);
      EXPECT_TRUE(Axis().IsMoving()) << each.what;
      each.end(form);
      if (data.forms.IsOpen("frmTryIt")) Pass(2);
      ExpectStandsStill();
      if (data.forms.IsOpen("frmTryIt") && form.button("cmdMove").Enabled()) {
        form.LetGo("cmdMove");
      }
    });
    EXPECT_FALSE(Amplifier().State().axis.IsMoving()) << each.what;
    EXPECT_FALSE(gMainForm->Helix7()->MotorMayBeOn()) << each.what;
    (void)Amplifier().Execute("ARES", port.Now());
    Boxes();
  }
}

// Nobody knows how far it goes then.
TEST_F(TryIt, AnAxisWhosePositionIsNotToldStops) {
  Try([this](headless::HeadlessForm& form) {
    Enable(form);
    form.Type("txtAmount", "1000000");
    form.Hold("cmdMove");
    Pass(1);
    EXPECT_TRUE(Axis().IsMoving());
    line.faults.Add({.kind = FaultKind::notGood, .match = "PUN", .count = 0});
    Pass(1);
    ExpectStandsStill();
    EXPECT_EQ(Boxes(), Texts{"The position could not be read: the motion was ended."});
    form.LetGo("cmdMove");
    form.Hold("cmdMove");
    Pass(1);
    ExpectStandsStill();
    EXPECT_EQ(Boxes(), Texts{"The position of the axis is not known, so it does not move."});
    form.LetGo("cmdMove");
  });
}

TEST_F(TryIt, ASilentLineEndsTheMotionAndSaysSo) {
  Try([this](headless::HeadlessForm& form) {
    Enable(form);
    form.Type("txtAmount", "1000000");
    form.Hold("cmdMove");
    Pass(1);
    line.faults.Add({.kind = FaultKind::silence, .match = "", .count = 0});
    Pass(4);
    EXPECT_THAT(form.label("lblServo").Text(), HasSubstr("may be on"));
    EXPECT_THAT(Boxes(), Contains(StartsWith("The amplifier does not answer: the motion was")));
    line.faults.Clear();
  });
  ExpectStandsStill();
}

TEST_F(TryIt, APassOfTheProgrammeIsRecordedFromItsBeginningToItsEnd) {
  Try([this](headless::HeadlessForm& form) {
    form.Press("cmdPass");
    EXPECT_EQ(form.label("lblState").Text(),
              "Start the programme at the machine: one pass is recorded.");
    Pass(1);
    Amplifier().SetValue("STS", 1 << 4);
    Pass(1);
    EXPECT_THAT(form.label("lblState").Text(), StartsWith("Recording: "));
    Amplifier().SetValue("STS", 0);
    Pass(2);
    EXPECT_EQ(form.label("lblState").Text(), "");
    ASSERT_EQ(Folder().Names().size(), 1U);
    const Recording pass = ReadRecording(Folder().PathOf(Folder().Names().front()));
    EXPECT_EQ(pass.heading.cause, "the programme begins");
    EXPECT_LT(pass.Begin(), 0);
    EXPECT_NEAR(pass.End(), 1.5, 0.3);
    // Given up before it began, it leaves nothing.
    form.Press("cmdPass");
    form.Press("cmdPass");
    EXPECT_EQ(Folder().Names().size(), 1U);
  });
}

}  // namespace
}  // namespace velmoor
