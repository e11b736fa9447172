// The test run on a simulated axis, and a user in its window.
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "AppSession.h"

namespace velmoor {

inline constexpr const char* kCaution =
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
      // What the window watches comes at any time, and so does what is kept of an alarm.
      static const std::set<std::string> kReads{
          "NFB",    "PUN",    "ALM",    "STS",    "IN1",    "IN2",    "OUT1",
          "OUT2",   "PRM100", "PRM101", "PRM102", "PRM103", "PRM107", "PRM108",
          "PRM109", "PRM10A", "PRM110", "PRM401", "PRM408", "PRM409", "PRM821"};
      if (!kReads.contains(command)) sent.push_back(command);
    }
    return sent;
  }
  SimulatedAxis& Axis() { return Amplifier().State().axis; }
  void ExpectStandsStill() {
    port.Advance(std::chrono::seconds(2));
    Amplifier().AdvanceTo(port.Now());
    EXPECT_FALSE(Axis().IsMoving());
  }
};

}  // namespace velmoor
