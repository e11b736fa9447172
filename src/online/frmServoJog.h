// The test run's window: energises the motor and turns it for as long as a button is held.
//
// A safety shape: nothing moves while the servo is off, motion ends with the button's release,
// however that comes about, and every way out of the window turns the servo off.
#pragma once

#include <cstdint>
#include <string>

#include "online/OnlineWindow.h"

namespace velmoor {

class frmServoJog final : public OnlineWindow {
 public:
  frmServoJog() : OnlineWindow("frmServoJog") {}
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
  void TurnServo(bool on);
  void ShowServo(bool on);
  void EnableJogButtons(bool bState);
  void cmdJog_MouseDown(int Index);
  void StartMotion(int Index);
  void cmdJog_MouseUp();
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
  bool mayBeOn_ = false;  // the amplifier was told to switch on, and not yet to switch off
  std::int16_t iCWIndex_ = 0;
  std::int32_t lngRefUnitSpeed_ = 0;  // 1000 reference units a minute
  std::int32_t lngSpeed_ = 10;        // rpm, as typed
};

}  // namespace velmoor
