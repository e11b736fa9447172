// The test run: what moves the motor, and what its window tells.

#include <algorithm>

#include "ServoJogFixture.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

TEST_F(ServoJog, AsksBeforeItEnablesAndJogsOnlyWhileHeld) {
  TestRun([this](headless::HeadlessForm& form) {
    EXPECT_FALSE(form.button("cmdJog_0").Enabled());
    data.boxes.Expect(kCaution, BoxAnswer::no);
    form.Press("cmdServo");
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
    EXPECT_FALSE(Axis().IsServoOn());
    // A No switches off what somebody else has switched on.
    ASSERT_TRUE(Axis().SwitchServo(true));
    data.boxes.Expect(kCaution, BoxAnswer::no);
    form.Press("cmdServo");
    EXPECT_FALSE(Axis().IsServoOn());
    Enable(form);
    EXPECT_EQ(form.button("cmdServo").Caption(), "Disable &Servo");
    EXPECT_EQ(form.lamp("pcbServo").LampTone(), Tone::good);
    form.Type("txtSpeed", "100");
    form.Hold("cmdJog_0");
    // 100 rpm of 2048 counts a turn; the rotation setting 0 swaps the buttons.
    EXPECT_EQ(Sent(), (Texts{"PRM202", "PRM203", "PGTYPE", "JOGN205"}));
    port.Advance(1s);
    Amplifier().AdvanceTo(port.Now());
    EXPECT_NEAR(*Axis().Value("NFB"), -100, 2);
    form.LetGo("cmdJog_0");
    EXPECT_EQ(Sent().back(), "SKIP");
    ExpectStandsStill();
    EXPECT_TRUE(Axis().IsServoOn());
    form.Press("cmdServo");
    EXPECT_FALSE(Axis().IsServoOn());
    EXPECT_FALSE(form.button("cmdJog_0").Enabled());
  });
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(ServoJog, TheRotationSettingChoosesTheDirectionOfEachButton) {
  struct Case {
    const char* setting;
    int button;
    const char* word;
  };
  const Case cases[] = {
      {"0", 0, "JOGN20"}, {"0", 1, "JOGP20"}, {"1", 0, "JOGP20"}, {"1", 1, "JOGN20"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.setting) + ", button " + NumberText(row.button));
    ASSERT_TRUE(Amplifier().State().memory.parameters.Write(0, row.setting));
    TestRun([&](headless::HeadlessForm& form) {
      Enable(form);
      const std::string button = "cmdJog_" + NumberText(row.button);
      form.Hold(button);
      EXPECT_EQ(Sent().back(), row.word);
      form.LetGo(button);
    });
  }
}

TEST_F(ServoJog, APressTakesNoSpeedThatIsNotPositive) {
  const std::string words =
      "Speed must be a positive integer value!  Previous value will be restored.";
  TestRun([&](headless::HeadlessForm& form) {
    Enable(form);
    for (const char* const typed : {"0", "-50"}) {
      form.Type("txtSpeed", typed);
      form.Hold("cmdJog_0");
      EXPECT_TRUE(std::ranges::none_of(Sent(), [](const std::string& sent) {
        return sent.starts_with("JOG");
      })) << typed;
      EXPECT_EQ(Boxes(), Texts{words}) << typed;
      EXPECT_EQ(form.textBox("txtSpeed").Text(), "10") << typed;
      form.LetGo("cmdJog_0");
    }
    form.Hold("cmdJog_0");
    EXPECT_EQ(Sent().back(), "JOGN20");
    form.LetGo("cmdJog_0");
  });
}

// ---- what the motor does

TEST_F(ServoJog, TheWindowTellsWhatTheMotorDoes) {
  TestRun([this](headless::HeadlessForm& form) {
    const auto shown = [&] {
      PauseInSec(0.6F);
      return Texts{form.label("lblMotion").Text(), form.label("lblActualSpeed").Text(),
                   form.label("lblAlarm").Text()};
    };
    EXPECT_EQ(shown(), (Texts{"Standing", "0 rpm  (0.000 mm/seconds)", "none, servo off"}));
    Enable(form);
    form.Type("txtSpeed", "100");
    form.Hold("cmdJog_1");
    port.Advance(1s);
    Amplifier().AdvanceTo(port.Now());
    const Texts moving = shown();
    EXPECT_EQ(moving[0], "Moving forward, counterclockwise");
    EXPECT_TRUE(moving[1].starts_with("100 rpm  (")) << moving[1];
    EXPECT_EQ(moving[2], "none, servo on");
    const auto position =
        ParseFloat(form.label("lblActualPosition")
                       .Text()
                       .substr(0, form.label("lblActualPosition").Text().find(' ')));
    EXPECT_GT(position.value_or(0), 1000);
    const auto& lanes = form.timeChart("chtMotion").shown.lanes;
    ASSERT_EQ(lanes.size(), 2U);
    EXPECT_EQ(lanes[0].name + ", " + lanes[1].name, "Current Position, Motor Speed");
    EXPECT_EQ(lanes[1].points.front().y, 0) << "before it moved";
    EXPECT_GT(lanes[1].points.back().y, 0);
    form.LetGo("cmdJog_1");
    ExpectStandsStill();
    EXPECT_EQ(shown()[0], "Standing");
    form.Hold("cmdJog_0");
    port.Advance(1s);
    EXPECT_EQ(shown()[0], "Moving in reverse, clockwise");
    form.LetGo("cmdJog_0");
  });
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(ServoJog, AnAlarmIsNamedSwitchesOffAndCanBeReset) {
  TestRun([this](headless::HeadlessForm& form) {
    Enable(form);
    EXPECT_FALSE(form.button("cmdResetAlarm").Enabled());
    form.Hold("cmdJog_1");
    Amplifier().RaiseAlarm("A.40");
    PauseInSec(0.6F);
    EXPECT_EQ(form.label("lblAlarm").Text(), "A.40: Overspeed");
    EXPECT_EQ(form.label("lblAlarm").TextTone(), Tone::alarm);
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
    EXPECT_FALSE(form.button("cmdJog_1").Enabled());
    EXPECT_EQ(Sent().back(), "SVOFF");
    form.Press("cmdResetAlarm");
    PauseInSec(0.6F);
    EXPECT_EQ(form.label("lblAlarm").Text(), "none, servo off");
    EXPECT_FALSE(form.button("cmdResetAlarm").Enabled());
    EXPECT_FALSE(Axis().IsServoOn());
    // A warning leaves the servo as it is.
    Enable(form);
    Amplifier().State().alarm.warning = "A.91";
    PauseInSec(0.6F);
    EXPECT_EQ(form.button("cmdServo").Caption(), "Disable &Servo");
    EXPECT_TRUE(form.button("cmdResetAlarm").Enabled());
  });
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(ServoJog, DoesNotOpenWhileTheServoIsAlwaysOnOrUnknown) {
  ASSERT_TRUE(Amplifier().State().memory.parameters.Write(0x80B, "2"));
  Main().Choose("mnuToolsServoJog");
  EXPECT_EQ(Boxes(), Texts{"Cannot perform Test Run while servo is set to 'Always Servo On' at "
                           "Pn80B!"});
  Main().Choose("mnuToolsOffline");
  Main().Choose("mnuToolsServoJog");
  EXPECT_EQ(Boxes(),
            Texts{"Cannot determine if servo is 'Always On'!  Cannot perform Test Run!\r"
                  "Communications port not opened.\r\rReading Pn80B (0PRM80B): the port is "
                  "not open."});
}

TEST_F(ServoJog, TakesPositiveWholeSpeedsAndKeepsThemInTheProject) {
  const std::string notNumeric = "Non-numeric value entered!  Previous value will be restored.";
  const std::string notPositive =
      "Speed must be a positive integer value!  Previous value will be restored.";
  TestRun([&](headless::HeadlessForm& form) {
    EXPECT_EQ(form.textBox("txtSpeed").Text(), "10");
    form.Press("updServo_Up");
    EXPECT_EQ(form.textBox("txtSpeed").Text(), "11");
    struct Case {
      const char* typed;
      std::string words;
      const char* shown;
    };
    const Case cases[] = {{"250", "", "250"},
                          {"12.5", "", "12"},
                          {"0", notPositive, "12"},
                          {"-5", notPositive, "12"},
                          {"", notNumeric, "12"},
                          {"ten", notNumeric, "12"},
                          {"9999999999", notNumeric, "12"},
                          {"1e2", "", "100"}};
    for (const Case& row : cases) {
      form.Type("txtSpeed", row.typed);
      form.Leave("txtSpeed");
      EXPECT_EQ(Boxes(), row.words.empty() ? Texts{} : Texts{row.words}) << row.typed;
      EXPECT_EQ(form.textBox("txtSpeed").Text(), row.shown) << row.typed;
    }
    form.Type("txtSpeed", "1");
    form.Leave("txtSpeed");
    form.Press("updServo_Down");
    EXPECT_EQ(form.textBox("txtSpeed").Text(), "1");
  });
  EXPECT_EQ(Project().ServoJog().Speed(), 1);
  EXPECT_TRUE(Project().NeedsSaving());
  clsHX7ServoJog again;
  again.SetDatabasePath(Project().ProjectDatabasePath());
  ASSERT_TRUE(again.ReadFromDB());
  EXPECT_EQ(again.Speed(), 1);
}

}  // namespace
}  // namespace velmoor
