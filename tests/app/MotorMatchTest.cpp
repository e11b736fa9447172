// The motor that is connected against the one that the project describes.

#include <algorithm>

#include "AppSession.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

constexpr const char* kSixteenTimes =
    "Encoder: every move would be 16 times too short: the project says 2048 lines, the motor has "
    "32768.";
const std::string kTold =
    std::string("The connected motor is not what project line1 describes!\r\r") + kSixteenTimes +
    "\r\rDo you wish to take the motor's encoder into the project?";
const std::string kToldBefore = kTold + "\rNo goes on with the project as it is.";
constexpr const char* kJogQuestion =
    "Jog Table of the project will be downloaded to the controller.\rDo you wish to proceed?";
constexpr const char* kFine = "00000011";  // 32768 lines

class Motor : public AppSession {
 protected:
  void SetUp() override {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
  }
  // As `expected` is asked, or without a question.
  void GoOnline(const std::string& expected = {}, BoxAnswer answer = BoxAnswer::no) {
    if (!expected.empty()) data.boxes.Expect(expected, answer);
    Main().Choose("mnuToolsOnline");
    ASSERT_EQ(Form().IsOnline(), true);
  }
  void SetEncoder(const char* code) { Amplifier().State().settings.encoder = code; }
  std::string Value(const char* strPn) { return Project().Parameters().Get(strPn).controller; }
  std::int32_t Lines() { return Project().MechanicalSystem().Description().machine.encoderCount; }
  // Going online makes the amplifier acknowledge, which is no part of the project.
  bool SentTheProject() {
    return std::ranges::any_of(Amplifier().Journal(), [](const JournalEntry& entry) {
      return entry.line.find('=') != std::string::npos && !entry.line.starts_with("0PRM802");
    });
  }
  void PutStep(const std::string& event) {
    clsHX7Position& table = Project().Position();
    ASSERT_TRUE(ImportCsv(Project(), table,
                          "label,position,speed,rdst,rspd,pout,event,loop,next\n"
                          "a,I+1.000,1.000,-,1.000,NNNNN," +
                              event + ",1,END\n")
                    .empty());
    ASSERT_TRUE(table.ChangeAccepted());
  }
};

TEST_F(Motor, ANewProjectAndTheSimulatedMotorAgree) {
  GoOnline();
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(Motor, YesTakesItsEncoderWithTheGearRatioToTheFileAndToTheAmplifier) {
  SetEncoder(kFine);
  GoOnline(kTold, BoxAnswer::yes);
  EXPECT_EQ(Lines(), 32768);
  EXPECT_EQ(Value("Pn202") + "/" + Value("Pn203"), "16384/625");
  EXPECT_EQ(Main().Panel(StatusPanel::pending), "To download: Mechanical System, All parameters");
  EXPECT_TRUE(Project().NeedsSaving());
  data.boxes.Expect("The following items have been modified:", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(LastHead(), "Download New complete!");
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x202), 16384);
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x203), 625);
  EXPECT_EQ(Amplifier().State().memory.parameters.Read(0x82E), "00002001");
  Main().Choose("mnuFileSave");
  // Nothing more to tell of, here or in the next session.
  Main().Choose("mnuToolsOffline");
  data.boxes.shown.clear();
  GoOnline();
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(Motor, IsToldOnceForAConnection) {
  SetEncoder(kFine);
  GoOnline(kTold);
  EXPECT_FALSE(Project().NeedsSaving());
  data.boxes.Expect(kJogQuestion, BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadTableJog");
  data.forms.OnShow("frmServoJog", [](headless::HeadlessForm& form) { form.Press("cmdExit"); });
  Main().Choose("mnuToolsServoJog");
  Main().Choose("mnuToolsOffline");
  GoOnline(kTold);
  // The same project says something else by now.
  data.boxes.shown.clear();
  MachineEdit edit = Project().MechanicalSystem().Edit();
  (void)edit.SetEncoder(1);
  ASSERT_TRUE(Project().MechanicalSystem().Accept(edit));
  data.boxes.Expect("every move would be 2 times too short: the project says 16384 lines",
                    BoxAnswer::no);
  data.boxes.Expect(kJogQuestion, BoxAnswer::cancel);
  Main().Choose("mnuToolsDownloadTableJog");
}

TEST_F(Motor, ADownloadAsksAndCancelSendsNothing) {
  GoOnline();
  SetEncoder(kFine);  // another motor was put on
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect(kToldBefore, BoxAnswer::cancel);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_FALSE(SentTheProject());
  EXPECT_FALSE(Project().NeedsSaving());
  data.boxes.Expect(kToldBefore, BoxAnswer::yes);
  data.boxes.Expect("All parameter and table data will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x202), 16384);
}

TEST_F(Motor, ATestRunAsksBeforeItsWindowOpens) {
  GoOnline();
  SetEncoder(kFine);
  data.boxes.Expect(kToldBefore, BoxAnswer::cancel);
  Main().Choose("mnuToolsServoJog");
  data.boxes.Expect(kToldBefore, BoxAnswer::no);
  bool opened = false;
  data.forms.OnShow("frmServoJog", [&opened](headless::HeadlessForm& form) {
    opened = true;
    form.Press("cmdExit");
  });
  Main().Choose("mnuToolsServoJog");
  EXPECT_TRUE(opened);
}

TEST_F(Motor, AProjectThatIsOpenedOnlineIsCompared) {
  GoOnline();
  data.dialogs.answers.emplace_back(data.MakeProject("line2.spj"));
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Boxes(), Texts{});
  SetEncoder("0000000F");  // 8192 lines, which the list does not hold
  data.dialogs.answers.emplace_back(path);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Boxes(),
            Texts{"The connected motor is not what project line1 describes!\r\rEncoder: every "
                  "move would be 4 times too short: the project says 2048 lines, the motor has "
                  "8192.  The machine's list of encoders does not hold it."});
}

TEST_F(Motor, WhatBecomesOfValuesIsShownBefore) {
  MachineEdit edit = Project().MechanicalSystem().Edit();
  (void)edit.SetEncoder(2);
  (void)edit.SetValue("Pn82D", "6");
  ASSERT_TRUE(Project().MechanicalSystem().Accept(edit));
  data.boxes.shown.clear();
  for (const bool goesOn : {false, true}) {
    data.forms.OnShow("frmRescalePreview", [goesOn](headless::HeadlessForm& form) {
      form.Press(goesOn ? "cmdOK" : "cmdCancel");
    });
    GoOnline(
        "every move would be 16 times too long: the project says 32768 lines, the motor has "
        "2048.",
        BoxAnswer::yes);
    EXPECT_EQ(Lines(), goesOn ? 2048 : 32768);
    EXPECT_EQ(Value("Pn82D"), goesOn ? "5" : "6");
    Main().Choose("mnuToolsOffline");
  }
}

TEST_F(Motor, OldFirmwareIsToldWithTheStepsThatWaitForIt) {
  Amplifier().State().settings.firmware = 2;
  GoOnline();
  EXPECT_EQ(Boxes(), Texts{}) << "nothing of the project needs more";
  Main().Choose("mnuToolsOffline");
  PutStep("SEL5T10");
  GoOnline();
  EXPECT_EQ(Boxes(),
            Texts{"The connected motor is not what project line1 describes!\r\rOption card: its "
                  "firmware is 2, and the project needs 3.  1 step waits for SEL5 or SEL6, which "
                  "it does not know: the index table will not be downloaded."});
}

TEST_F(Motor, ADownloadNotesTheSizeOfTheMotorInTheFileAndAnotherIsTold) {
  GoOnline();
  data.boxes.Expect(kJogQuestion, BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadTableJog");
  EXPECT_FALSE(Project().NeedsSaving());
  Main().Choose("mnuToolsOffline");
  data.boxes.Expect("Reopening active project", BoxAnswer::ok);
  data.dialogs.answers.emplace_back(path);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Project().MotorSize(), "400");
  EXPECT_EQ(Project().Parameters().Get("Pn100").definition.Max, "2000");

  Amplifier().State().settings.watts = 3000;
  GoOnline(
      "Rated power: the project is for a motor of 400 W, this one has 3000 W.  4 values lie "
      "outside of its limits: Pn402 = 300 (0 to 250), Pn403 = 300 (0 to 250), Pn406 = 300 (0 "
      "to 250), Pn407 = 10000 (0 to 5000).\r\rDo you wish to take the motor's rated power "
      "into the project?",
      BoxAnswer::yes);
  EXPECT_EQ(Project().MotorSize(), "3000");
  EXPECT_TRUE(Project().NeedsSaving());
  EXPECT_EQ(Project().Parameters().Get("Pn100").definition.Max, "1000");
}

TEST_F(Motor, ADifferenceThatTheLineHasMadeIsNone) {
  line.faults.Add({.kind = FaultKind::wrongAnswer, .match = "PGTYPE", .text = "0PGTYPE=00000011"});
  GoOnline();
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(Motor, AMotorThatCannotBeReadIsNotJudged) {
  SetEncoder(kFine);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PGTYPE", .count = 0});
  GoOnline();
  EXPECT_EQ(Boxes(), Texts{});
}

}  // namespace
}  // namespace velmoor
