// The test run's window: energises the motor and turns it for as long as a button is held.
//
// ServoRun keeps it safe.
#pragma once

#include <cstdint>
#include <string>

#include "layouts/frmServoJog.h"
#include "online/MotorWatch.h"
#include "online/RecordButton.h"
#include "online/ServoRun.h"
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
  void MakeSafe() { run_.MakeSafe(); }

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  void CheckHardwareServoForwardSetting();
  // As it is known: on, off, or that it may be on.
  void ShowServo();
  void EnableJogButtons(bool bState);
  void cmdJog_MouseDown(int Index);
  // The typed speed can be sent; told otherwise.
  bool TakeSpeed();
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
  bool blnCWForward_ = false;
  ServoRun run_{[this] {
    if (IsOpen()) ShowServo();
  }};
  MotorWatch watch_;
  StripChart chart_;
  RecordButton record_;
  double opened_ = 0;             // s of the monotonic clock
  std::int32_t lngSpeed_ = 10;    // rpm, as typed
  std::unique_ptr<Timer> timer_;  // while the window is open
};

}  // namespace velmoor
