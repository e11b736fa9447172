// The test run: what moves the motor, and that every way of letting go stops it.

#include <algorithm>

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

constexpr const char* kCaution =
    "Use extreme caution!\r"
    "The enable operation will energize the motor and may cause motion \r"
    "of the motor shaft and any mechanism connected to the motor shaft.\r\r"
    "Are you sure you want to enable the servo system?\r"
    "Click Yes to enable the servo.  Click No to cancel.";

class ServoJog : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  using User = std::function<void(headless::HeadlessForm&)>;
  // Opens the window, acts in it and closes it.
  void TestRun(const User& user) {
    data.forms.OnShow("frmServoJog", [this, user](headless::HeadlessForm& form) {
      Amplifier().ForgetWhatWasAsked();
      user(form);
      if (data.forms.IsOpen("frmServoJog")) form.Press("cmdExit");
    });
    Main().Choose("mnuToolsServoJog");
    EXPECT_FALSE(Form().ToolOpened(ToolWindow::servoJog));
  }
  void Enable(headless::HeadlessForm& form) {
    data.boxes.Expect(kCaution, BoxAnswer::yes);
    form.Press("cmdServo");
    data.boxes.shown.clear();
    Amplifier().ForgetWhatWasAsked();
  }
  Texts Sent() {
    Texts sent;
    for (const JournalEntry& entry : Amplifier().Journal()) {
      const std::string command = entry.line.substr(1);
      // What the window watches comes at any time.
      if (command != "NFB" && command != "PUN" && command != "ALM") sent.push_back(command);
    }
    return sent;
  }
  SimulatedAxis& Axis() { return Amplifier().State().axis; }
  void ExpectStandsStill() {
    port.Advance(2s);
    Amplifier().AdvanceTo(port.Now());
    EXPECT_FALSE(Axis().IsMoving());
  }
};

TEST_F(ServoJog, AsksBeforeItEnablesAndJogsOnlyWhileHeld) {
  TestRun([this](headless::HeadlessForm& form) {
    EXPECT_FALSE(form.button("cmdJog_0").Enabled());
    data.boxes.Expect(kCaution, BoxAnswer::no);
    form.Press("cmdServo");
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
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

// At each yield of a press: between the three questions nothing has begun yet; behind the start
// the stop follows at once.
TEST_F(ServoJog, AReleaseAtAnyMomentOfThePressLeavesTheMotorStanding) {
  for (int yields = 0; yields < 4; ++yields) {
    TestRun([&](headless::HeadlessForm& form) {
      Enable(form);
      data.events.AtYield(yields, [&form] { form.LetGo("cmdJog_0"); });
      form.Hold("cmdJog_0");
      const Texts sent = Sent();
      const bool started =
          std::ranges::any_of(sent, [](const std::string& w) { return w.starts_with("JOG"); });
      EXPECT_EQ(started, yields == 3);
      EXPECT_EQ(std::ranges::count(sent, "SKIP"), 1);
      EXPECT_TRUE(!started || sent.back() == "SKIP");
      ExpectStandsStill();
    });
  }
}

TEST_F(ServoJog, EveryWayOutStopsAndSwitchesOff) {
  const std::pair<const char*, User> ways[] = {
      {"exit", [](headless::HeadlessForm& form) { form.Press("cmdExit"); }},
      {"frame", [](headless::HeadlessForm& form) { form.Unload(); }},
      {"tool", [this](headless::HeadlessForm&) { Project().ServoJog().Unload_ServoJog(); }},
      {"end", [this](headless::HeadlessForm&) { Project().ServoJog().MakeSafe(); }},
      {"disabled", [](headless::HeadlessForm& form) { form.button("cmdJog_1").SetEnabled(false); }},
      {"hidden", [](headless::HeadlessForm& form) { form.button("cmdJog_1").SetVisible(false); }}};
  for (const auto& [name, leave] : ways) {
    TestRun([&, leave = leave, name = name](headless::HeadlessForm& form) {
      Enable(form);
      form.Hold("cmdJog_1");
      Amplifier().AdvanceTo(port.Now() + 100ms);
      ASSERT_TRUE(Axis().IsMoving());
      Amplifier().ForgetWhatWasAsked();
      leave(form);
      ASSERT_FALSE(Sent().empty()) << name;
      EXPECT_EQ(Sent().front(), "SKIP") << name;
    });
    ExpectStandsStill();
    EXPECT_FALSE(Axis().IsServoOn()) << name;
  }
}

// One way to lose what stops the motor: which line meets what, and how often; 0 is every time.
struct Loss {
  const char* name;
  std::vector<Fault> faults;
};

// A line that is lost, refused or answered by noise once is sent again before anything else.
TEST_F(ServoJog, WhatStopsTheMotorIsRepeatedUntilItIsAcknowledged) {
  using enum FaultKind;
  const Loss losses[] = {
      {"stop lost once", {{.kind = silence, .match = "SKIP"}}},
      {"stop lost twice", {{.kind = silence, .match = "SKIP", .count = 2}}},
      {"stop not taken", {{.kind = notGood, .match = "SKIP"}}},
      {"stop lost for good", {{.kind = silence, .match = "SKIP", .count = 0}}},
      {"both lost once", {{.kind = silence, .match = "SKIP"}, {.kind = silence, .match = "SVOFF"}}},
      {"servo off not taken", {{.kind = notGood, .match = "SVOFF", .count = 2}}},
      {"answered by a value",
       {{.kind = wrongAnswer, .match = "SVOFF", .count = 2, .text = "0PUN=00000012"}}}};
  for (const Loss& loss : losses) {
    TestRun([&](headless::HeadlessForm& form) {
      Enable(form);
      form.Hold("cmdJog_1");
      Amplifier().AdvanceTo(port.Now() + 100ms);
      ASSERT_TRUE(Axis().IsMoving()) << loss.name;
      for (const Fault& fault : loss.faults) line.faults.Add(fault);
      form.Press("cmdExit");
    });
    line.faults.Clear();
    ExpectStandsStill();
    EXPECT_FALSE(Axis().IsServoOn()) << loss.name;
    data.boxes.TakeTexts();
  }
}

TEST_F(ServoJog, AReleaseWhoseStopIsLostStopsBeforeAnyBox) {
  TestRun([this](headless::HeadlessForm& form) {
    Enable(form);
    form.Hold("cmdJog_1");
    line.faults.Add({.kind = FaultKind::silence, .match = "SKIP"});
    form.LetGo("cmdJog_1");
    ExpectStandsStill();
    EXPECT_TRUE(Axis().IsServoOn());
    EXPECT_EQ(Boxes(), Texts{});
    // For good: the servo goes off instead, and then it is told.
    form.Hold("cmdJog_1");
    line.faults.Add({.kind = FaultKind::silence, .match = "SKIP", .count = 0});
    bool wasOff = false;
    data.boxes.Expect("Error terminating servo jog!", BoxAnswer::ok,
                      [&] { wasOff = !Axis().IsServoOn(); });
    form.LetGo("cmdJog_1");
    EXPECT_TRUE(wasOff);
    ASSERT_EQ(data.boxes.shown.size(), 1u);
    EXPECT_TRUE(data.boxes.shown[0].text.starts_with("Error terminating servo jog!\r"));
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
    EXPECT_FALSE(form.button("cmdJog_1").Enabled());
    data.boxes.TakeTexts();
  });
}

TEST_F(ServoJog, AnEnableWithoutAnswerIsFollowedByServoOff) {
  TestRun([this](headless::HeadlessForm& form) {
    line.faults.Add({.kind = FaultKind::noAnswer, .match = "SVON"});
    data.boxes.Expect(kCaution, BoxAnswer::yes);
    form.Press("cmdServo");
    EXPECT_FALSE(Axis().IsServoOn());
    EXPECT_EQ(Sent(), (Texts{"SVON", "SVOFF"}));
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
    EXPECT_TRUE(data.boxes.shown.back().text.starts_with("Error setting servo on!\r"));
    data.boxes.TakeTexts();
  });
}

TEST_F(ServoJog, NoSwitchesOff) {
  TestRun([this](headless::HeadlessForm& form) {
    ASSERT_TRUE(Axis().SwitchServo(true));  // by somebody else
    data.boxes.Expect(kCaution, BoxAnswer::no);
    form.Press("cmdServo");
    EXPECT_FALSE(Axis().IsServoOn());
    data.boxes.TakeTexts();
  });
}

// What is not known to be off is not offered to be switched on.
TEST_F(ServoJog, AServoThatMayBeOnIsSwitchedOffByTheNextPress) {
  TestRun([this](headless::HeadlessForm& form) {
    Enable(form);
    line.faults.Add({.kind = FaultKind::silence, .match = "SVOFF", .count = 3});
    form.Press("cmdServo");
    ASSERT_EQ(data.boxes.shown.size(), 1u);
    EXPECT_TRUE(data.boxes.shown[0].text.starts_with("Error setting servo off!\r"));
    EXPECT_NE(data.boxes.shown[0].text.find("emergency stop"), std::string::npos);
    EXPECT_EQ(form.button("cmdServo").Caption(), "Disable &Servo");
    EXPECT_NE(form.lamp("pcbServo").LampTone(), Tone::normal);
    data.boxes.TakeTexts();
    form.Press("cmdServo");
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_FALSE(Axis().IsServoOn());
    EXPECT_EQ(form.button("cmdServo").Caption(), "Enable &Servo");
    EXPECT_EQ(form.lamp("pcbServo").LampTone(), Tone::normal);
  });
}

TEST_F(ServoJog, AnUnconfirmedEndNamesTheEmergencyStopAndIsTriedAgainAtTheEnd) {
  TestRun([this](headless::HeadlessForm& form) {
    Enable(form);
    form.Hold("cmdJog_1");
    line.faults.Add({.kind = FaultKind::silence, .count = 0});
    form.Press("cmdExit");
  });
  ASSERT_EQ(data.boxes.shown.size(), 1u);
  EXPECT_NE(data.boxes.shown[0].text.find("emergency stop"), std::string::npos);
  data.boxes.TakeTexts();
  EXPECT_TRUE(Axis().IsServoOn());
  line.faults.Clear();
  Form().MakeSafe();
  ExpectStandsStill();
  EXPECT_FALSE(Axis().IsServoOn());
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

TEST_F(ServoJog, FailuresAreToldOnceTheMotorIsStopped) {
  TestRun([this](headless::HeadlessForm& form) {
    const auto refusal = [](const char* words, const char* asked) {
      return std::string(words) + "\rDevice is busy\r\r" + asked +
             ": refused with E5A1 \"Device is busy\".";
    };
    line.faults.Add({.kind = FaultKind::deviceError, .match = "SVON", .text = "E5A1"});
    data.boxes.Expect(kCaution, BoxAnswer::yes);
    form.Press("cmdServo");
    EXPECT_EQ(Boxes().back(), refusal("Error setting servo on!", "Servo on (0SVON)"));
    EXPECT_FALSE(form.button("cmdJog_0").Enabled());
    Enable(form);
    line.faults.Add({.kind = FaultKind::notGood, .match = "PRM203"});
    form.Hold("cmdJog_0");
    EXPECT_EQ(Boxes(), Texts{"Error communicating with hardware!\rCheck connections then retry!\r\r"
                             "Reading Pn203 (0PRM203): no usable value in the answer \"0NG\"."});
    form.LetGo("cmdJog_0");
    Amplifier().ForgetWhatWasAsked();
    // The command came through, its answer did not.
    line.faults.Add({.kind = FaultKind::deviceError, .match = "JOGN", .text = "E5A1"});
    form.Hold("cmdJog_0");
    EXPECT_EQ(Sent().back(), "SKIP");
    EXPECT_EQ(Boxes(),
              Texts{refusal("Error initiating servo jog!", "Jogging in reverse (0JOGN20)")});
    ExpectStandsStill();
    form.LetGo("cmdJog_0");
    line.faults.Add({.kind = FaultKind::deviceError, .match = "SVOFF", .count = 3, .text = "E5A1"});
    form.Press("cmdServo");
    EXPECT_EQ(Boxes(), Texts{refusal("Error setting servo off!", "Servo off (0SVOFF)") +
                             "\r\rThe motor may still be energised and moving: servo off was not "
                             "confirmed.\rUse the emergency stop, then check the line."});
    EXPECT_EQ(form.button("cmdServo").Caption(), "Disable &Servo");
    EXPECT_FALSE(form.button("cmdJog_0").Enabled());
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

TEST_F(ServoJog, AMotionOnALineThatFallsSilentIsEndedAndTold) {
  TestRun([this](headless::HeadlessForm& form) {
    Enable(form);
    form.Hold("cmdJog_1");
    line.faults.Add({.kind = FaultKind::silence, .count = 0});
    PauseInSec(0.3F);
    ASSERT_EQ(data.boxes.shown.size(), 1u);
    EXPECT_TRUE(data.boxes.shown[0].text.starts_with(
        "The amplifier does not answer: the motion was ended.\r"));
    EXPECT_NE(data.boxes.shown[0].text.find("emergency stop"), std::string::npos);
    EXPECT_EQ(form.label("lblMotion").Text(), "not known");
    data.boxes.TakeTexts();
    line.faults.Clear();
    form.Press("cmdServo");
    EXPECT_FALSE(Axis().IsServoOn());
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

// ---- the small tools

class SmallTools : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  using User = std::function<void(headless::HeadlessForm&)>;
  void With(const char* command, const char* form, const User& user) {
    data.forms.OnShow(form, user);
    Main().Choose(command);
  }
};

TEST_F(SmallTools, TheInertiaRatioIsReadEveryTwoSecondsAndStored) {
  With("mnuToolsInertiaRatio", "frmInertiaRatio", [this](headless::HeadlessForm& form) {
    EXPECT_EQ(form.label("lblIdentified").Text(), "");
    PauseInSec(2.1F);
    EXPECT_EQ(form.label("lblIdentified").Text() + " " + form.label("lblActual").Text(), "300 0");
    form.Press("cmdSet");
    PauseInSec(2.1F);
    EXPECT_EQ(form.label("lblActual").Text(), "300");
    line.faults.Add({.kind = FaultKind::deviceError, .match = "TUNESTORE", .text = "E5A1"});
    form.Press("cmdSet");
    EXPECT_EQ(Boxes(),
              (Texts{"Inertia Ratio was set successfully!",
                     "Inertia Ratio failed to set!\rDevice is busy\r\rStoring the inertia ratio "
                     "(0TUNESTORE): refused with E5A1 \"Device is busy\"."}));
    line.faults.Add({.kind = FaultKind::notGood, .match = "PRM103"});
    PauseInSec(2.1F);
    EXPECT_FALSE(data.forms.IsOpen("frmInertiaRatio"));
  });
  EXPECT_EQ(Boxes(),
            Texts{"Cannot identify or read inertia ratio!\rCheck communications and retry!\r\r"
                  "Reading Pn103 (0PRM103): no usable value in the answer \"0NG\"."});
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::inertiaRatio));
}

TEST_F(SmallTools, TheHomeOffsetGoesToHardwareAndProject) {
  const char* const kAsk =
      "Caution!  This action will set the home offset position!\rDo you wish to proceed?";
  With("mnuToolsHomePosition", "frmHomePosition", [&](headless::HeadlessForm& form) {
    EXPECT_EQ(form.textBox("txtOffset").Text(), "0.000");
    EXPECT_EQ(form.label("lblUnits").Text(), "mm");
    EXPECT_FALSE(form.button("cmdAbsReset").Enabled());
    const std::pair<const char*, std::string> refused[] = {
        {"x", "Value must be numeric!\rOffset value must be numeric!"},
        {"100000",
         "Offset value out of range!\rValue must be in the range from -99999.999 and "
         "99999.999!"}};
    for (const auto& [text, words] : refused) {
      form.Type("txtOffset", text);
      EXPECT_FALSE(form.Leave("txtOffset"));
      EXPECT_EQ(Boxes(), Texts{words});
      EXPECT_EQ(form.textBox("txtOffset").Text(), "0.000");
    }
    form.Type("txtOffset", "99999.999");
    EXPECT_TRUE(form.Leave("txtOffset"));
    form.Type("txtOffset", "-1.2345");
    EXPECT_TRUE(form.Leave("txtOffset"));
    data.boxes.Expect(kAsk, BoxAnswer::no);
    form.Press("cmdUpdate");
    EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x81D), 0);
    line.faults.Add({.kind = FaultKind::deviceError, .match = "ZSET", .text = "E5A1"});
    data.boxes.Expect(kAsk, BoxAnswer::yes);
    form.Press("cmdUpdate");
    EXPECT_EQ(data.boxes.shown.back().text,
              "Error setting home offset position!\rDevice is busy\r\rSetting the home offset "
              "(0ZSET-1235): refused with E5A1 \"Device is busy\".");
    data.boxes.Expect(kAsk, BoxAnswer::yes);
    form.Press("cmdUpdate");
    EXPECT_FALSE(data.forms.IsOpen("frmHomePosition"));
  });
  EXPECT_EQ(Amplifier().State().memory.parameters.Value(0x81D), -1235);
  EXPECT_EQ(Project().Homing().GetHomingOffset(), "-1.235");
  EXPECT_EQ(Status(), "System Status: Home Offset Position Update Complete");
  EXPECT_TRUE(Project().NeedsSaving());
}

TEST_F(SmallTools, OnlyAnAbsoluteEncoderThatIsUsedAsOneCanBeReset) {
  struct Case {
    const char* encoder;
    const char* pn002;
    bool enabled;
  };
  const Case cases[] = {
      {"00000011", "0000", false}, {"00000111", "0100", false}, {"00000111", "0000", true}};
  for (const Case& row : cases) {
    Amplifier().State().settings.encoder = row.encoder;
    ASSERT_TRUE(Amplifier().State().memory.parameters.Write(2, row.pn002));
    With("mnuToolsHomePosition", "frmHomePosition", [&](headless::HeadlessForm& form) {
      EXPECT_EQ(form.button("cmdAbsReset").Enabled(), row.enabled) << row.encoder << row.pn002;
      if (row.enabled) {
        data.boxes.Expect(
            "Caution!  This action will clear the absolute encoder position!\r"
            "Do you wish to proceed?",
            BoxAnswer::yes);
        form.Press("cmdAbsReset");
        EXPECT_EQ(data.boxes.shown.back().text, "Successful encoder reset!");
        EXPECT_EQ(Amplifier().Asked("ABSPGRES"), 1);
      }
      form.Press("cmdCancel");
    });
  }
}

TEST_F(SmallTools, TheProductInformationIsWhatTheHardwareSays) {
  With("mnuToolsProductInformation", "frmProductInfo", [](headless::HeadlessForm& form) {
    Texts shown;
    for (int i = 0; i < 9; ++i) shown.push_back(form.label("lblValues_" + NumberText(i)).Text());
    EXPECT_EQ(shown, (Texts{"0003", "Standard", "VKLM-04AE", "0012", "Standard", "VMMAH-04AA",
                            "Incremental", "13-Bit", "0001"}));
    form.Press("cmdExit");
  });
  line.faults.Add({.kind = FaultKind::notGood, .match = "VER"});
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PGVER", .text = "E5A1"});
  With("mnuToolsProductInformation", "frmProductInfo",
       [](headless::HeadlessForm& form) { form.Press("cmdExit"); });
  EXPECT_EQ(Boxes(), Texts{"Option Information Error: Read value not found error.\r"
                           "Asking VER (0VER): no usable value in the answer \"0NG\".\r\r"
                           "Encoder Information Error: Device is busy\r"
                           "Asking PGVER (0PGVER): refused with E5A1 \"Device is busy\"."});
  Main().Choose("mnuToolsMonitoring");
  Main().Choose("mnuToolsProductInformation");
  EXPECT_EQ(Boxes(), Texts{"Product Information can only be viewed when\r"
                           "Monitoring and Terminal Emulator are closed."});
}

}  // namespace
}  // namespace velmoor
