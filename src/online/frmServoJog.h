// The test run's window: energises the motor and turns it for as long as a button is held.
//
// A safety shape: nothing moves while the servo is off, motion ends with the button's release,
// however that comes about, and every way out of the window turns the servo off. What ends motion
// is repeated until it is acknowledged, before any box; what could not be confirmed is told, shown
// as a servo that may be on, and tried again by every way out, to the end of the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "layouts/frmServoJog.h"
#include "link/LinkFailure.h"
#include "online/MotorWatch.h"
#include "online/StripChart.h"
#include "windows/Window.h"

namespace velmoor {

class frmServoJog final : public WindowOf<layouts::frmServoJog> {
 public:
  // Turns the servo off where the window is still open.
  ~frmServoJog() override;

  // The speed with which the window opens, and that it had when it closed: rpm.
  [[nodiscard]] std::int32_t Speed() const { return lngSpeed_; }
  void SetSpeed(std::int32_t speed) { lngSpeed_ = speed; }
  // The speed differs from the opening one.
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  // Stops and switches off, without a word: the program ends.
  void MakeSafe();

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  void CheckHardwareServoForwardSetting();
  void cmdServo_Click();
  // Asks, and switches on after a Yes; the failure of that.
  std::optional<LinkFailure> AskAndEnable();
  // Servo off, shown as it came out; the failure is the link's latest.
  ResultCode SwitchOff();
  // As it is known: on, off, or that it may be on.
  void ShowServo();
  // Tells a failure, and that the motor may be energised where that is so.
  void Tell(const LinkFailure& failure, const char* words);
  void EnableJogButtons(bool bState);
  void cmdJog_MouseDown(int Index);
  void StartMotion(int Index);
  // The typed speed can be sent; told otherwise.
  bool TakeSpeed();
  void cmdJog_MouseUp();
  // Ends the motion; the servo is off where that was not acknowledged.
  void StopMotion(const char* words);
  void tmrWatch_Timer();
  void ShowMotion();
  void ShowChart();
  void cmdResetAlarm_Click();
  void txtSpeed_Change();
  void txtSpeed_Validate(bool& Cancel);
  void RestoreSpeed(const char* words);
  void ShowSpeed();
  void updServo_UpClick();
  void updServo_DownClick();

  std::string strBeforeEdit_, strStartValue_;
  bool blnNeedsSaving_ = false;
  bool blnServo_ = false;  // the user's last request
  bool blnCWForward_ = false;
  bool blnMouseUp_ = true;
  bool stopping_ = false;  // a button that is let go meanwhile needs no stop of its own
  MotorWatch watch_;
  StripChart chart_;
  double opened_ = 0;  // s of the monotonic clock
  std::int16_t iCWIndex_ = 0;
  std::int32_t lngRefUnitSpeed_ = 0;  // 1000 reference units a minute
  std::int32_t lngSpeed_ = 10;        // rpm, as typed
  std::unique_ptr<Timer> timer_;      // while the window is open
};

}  // namespace velmoor
