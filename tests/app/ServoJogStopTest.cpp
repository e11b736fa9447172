// The test run: that every way of letting go stops the motor, on every line.

#include <algorithm>

#include "ServoJogFixture.h"
#include "platform/Events.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

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

}  // namespace
}  // namespace velmoor
