#include "online/frmServoJog.h"

#include <exception>
#include <optional>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kCannotStart = "Error initiating servo jog!";
constexpr const char* kCannotStop = "Error terminating servo jog!";
constexpr const char* kHint =
    "\r\rHold jog button down for a few seconds before releasing to stop, if jog is still running.";
constexpr const char* kNotNumeric = "Non-numeric value entered!  Previous value will be restored.";

clsHX7Helix7& Hardware() {
  return *gMainForm->Helix7();
}

// A number is rounded to a whole one; one that 32 bits cannot hold counts as none.
std::optional<std::int32_t> SpeedIn(const std::string& text) {
  const auto number = ParseFloat(Trim(text));
  if (!number) return std::nullopt;
  try {
    return ToInt32(RoundHalfEven(*number));
  } catch (const NumberError&) {
    return std::nullopt;
  }
}

}  // namespace

frmServoJog::~frmServoJog() {
  MakeSafe();
}

void frmServoJog::MakeSafe() {
  if (!mayBeOn_ || gMainForm == nullptr || gMainForm->Helix7() == nullptr) return;
  mayBeOn_ = false;
  blnMouseUp_ = true;
  if (!gMainForm->Comm().IsOpen()) return;
  try {
    (void)Hardware().StopJog();
    (void)Hardware().DisableServo();
  } catch (const std::exception&) {
    // The line is gone, and with it all that could be done.
  }
}

void frmServoJog::FormLoad() {
  blnServo_ = false;
  blnNeedsSaving_ = false;
  blnMouseUp_ = true;
  form().textBox("txtSpeed").SetText(NumberText(lngSpeed_));
  strStartValue_ = strBeforeEdit_ = form().textBox("txtSpeed").Text();
  for (int index = 0; index < 2; ++index) {
    Button& jog = form().button(Numbered("cmdJog_", index));
    connections_ += jog.Down.Connect([this, index] { cmdJog_MouseDown(index); });
    connections_ += jog.Up.Connect([this] { cmdJog_MouseUp(); });
  }
  connections_ += form().button("cmdServo").Click.Connect([this] { cmdServo_Click(); });
  connections_ += form().button("cmdExit").Click.Connect([this] { Unload(); });
  connections_ += form().button("updServo_Up").Click.Connect([this] { updServo_UpClick(); });
  connections_ += form().button("updServo_Down").Click.Connect([this] { updServo_DownClick(); });
  TextBox& speed = form().textBox("txtSpeed");
  connections_ += speed.Change.Connect([this] { txtSpeed_Change(); });
  connections_ += speed.Validate.Connect([this](bool& cancel) { txtSpeed_Validate(cancel); });
  EnableJogButtons(false);
  CheckHardwareServoForwardSetting();
}

// The servo goes off whichever way the window closes; what comes of it is not examined.
void frmServoJog::FormUnload() {
  if (!blnMouseUp_) cmdJog_MouseUp();
  (void)Hardware().DisableServo();
  mayBeOn_ = false;
  const auto start = SpeedIn(strStartValue_);
  if (!start || *start != lngSpeed_) blnNeedsSaving_ = true;
}

void frmServoJog::CheckHardwareServoForwardSetting() {
  std::string strVal;
  const ResultCode result = Hardware().GetParameter("0", strVal);
  if (result != kSuccess) {
    DisplayError(result,
                 "Hardware is not ready, or communication process settings are not set correctly.");
    return;
  }
  if (strVal.ends_with('0')) blnCWForward_ = false;
  if (strVal.ends_with('1')) blnCWForward_ = true;
}

// ---- the servo

void frmServoJog::cmdServo_Click() {
  try {
    blnServo_ = !blnServo_;
    TurnServo(blnServo_);
    EnableJogButtons(blnServo_);
  } catch (const std::exception& error) {
    ShowExclamation(std::string("Error enabling/disabling servo!\r") + error.what());
  }
}

void frmServoJog::TurnServo(bool on) {
  if (!on) {
    const ResultCode result = Hardware().DisableServo();
    if (result == kSuccess) {
      mayBeOn_ = false;
      ShowServo(false);
    } else {
      // The caption stays and the jog buttons go dead, deliberately.
      DisplayError(result, "Error setting servo off!");
    }
    return;
  }
  const bool sure = AskExclamationYesNo(
      "Use extreme caution!\r"
      "The enable operation will energize the motor and may cause motion \r"
      "of the motor shaft and any mechanism connected to the motor shaft.\r\r"
      "Are you sure you want to enable the servo system?\r"
      "Click Yes to enable the servo.  Click No to cancel.");
  if (!sure) {
    blnServo_ = false;
    return;
  }
  mayBeOn_ = true;
  const ResultCode result = Hardware().EnableServo();
  if (result == kSuccess) {
    ShowServo(true);
  } else {
    blnServo_ = false;
    DisplayError(result, "Error setting servo on!");
  }
}

void frmServoJog::ShowServo(bool on) {
  form().button("cmdServo").SetCaption(on ? "Disable &Servo" : "Enable &Servo");
  form().lamp("pcbServo").SetTone(on ? Tone::good : Tone::normal);
}

void frmServoJog::EnableJogButtons(bool bState) {
  for (const char* const name : {"cmdJog_0", "cmdJog_1"}) form().button(name).SetEnabled(bState);
}

// ---- motion

void frmServoJog::cmdJog_MouseDown(int Index) {
  const auto token = Token();
  try {
    blnMouseUp_ = false;
    StartMotion(Index);
  } catch (const std::exception& error) {
    // Whatever happened: it must not go on turning while a box is read.
    const bool open = !token.expired();
    (void)Hardware().StopJog();
    if (open) blnMouseUp_ = true;
    ShowExclamation(std::string(kCannotStart) + "\r" + error.what() + kHint);
  }
}

// Events run between the questions to the amplifier, so that a release is seen before anything
// starts to move.
void frmServoJog::StartMotion(int Index) {
  const auto token = Token();
  const float factor = OpenedProject().GetReferenceSpeedFactor();
  if (token.expired()) return;
  if (factor < 0) {
    blnMouseUp_ = true;
    ShowExclamation("Error communicating with hardware!\rCheck connections then retry!");
    return;
  }
  lngRefUnitSpeed_ =
      ToInt32(RoundHalfEven(static_cast<double>(factor) * static_cast<double>(lngSpeed_)));
  iCWIndex_ = static_cast<std::int16_t>(blnCWForward_ ? Index : (Index + 1) & 1);
  if (blnMouseUp_ || !blnServo_) return;
  const ResultCode result = Hardware().StartJog(iCWIndex_, lngRefUnitSpeed_);
  if (result == kSuccess || result == kBusy || token.expired()) return;
  // The command may have come through although its answer did not.
  blnMouseUp_ = true;
  (void)Hardware().StopJog();
  DisplayError(result, kCannotStart);
}

void frmServoJog::cmdJog_MouseUp() {
  try {
    blnMouseUp_ = true;
    const ResultCode result = Hardware().StopJog();
    // A line that is busy is passed over in silence, deliberately; nothing here lets it arise.
    if (result != kSuccess && result != kBusy) DisplayError(result, kCannotStop);
  } catch (const std::exception& error) {
    ShowExclamation(std::string(kCannotStop) + "\r" + error.what() + kHint);
  }
}

// ---- speed

void frmServoJog::RestoreSpeed(const char* words) {
  ShowExclamation(words);
  form().textBox("txtSpeed").SetText(strBeforeEdit_);
  if (const auto speed = SpeedIn(strBeforeEdit_)) lngSpeed_ = *speed;
}

void frmServoJog::txtSpeed_Change() {
  const auto speed = SpeedIn(form().textBox("txtSpeed").Text());
  if (!speed) return RestoreSpeed(kNotNumeric);
  lngSpeed_ = *speed;
}

void frmServoJog::txtSpeed_Validate(bool& Cancel) {
  TextBox& box = form().textBox("txtSpeed");
  const auto speed = SpeedIn(box.Text());
  if (!speed) {
    RestoreSpeed(kNotNumeric);
    Cancel = true;
  } else if (*speed < 1) {
    RestoreSpeed("Speed must be a positive integer value!  Previous value will be restored.");
    Cancel = true;
  } else {
    lngSpeed_ = *speed;
    ShowSpeed();
  }
  strBeforeEdit_ = box.Text();
}

void frmServoJog::ShowSpeed() {
  form().textBox("txtSpeed").SetText(NumberText(lngSpeed_));
}

// There is no upper limit of its own.
void frmServoJog::updServo_UpClick() {
  lngSpeed_ = ToInt32(static_cast<double>(lngSpeed_) + 1);
  ShowSpeed();
}

void frmServoJog::updServo_DownClick() {
  if (lngSpeed_ <= 1) return;
  --lngSpeed_;
  ShowSpeed();
}

}  // namespace velmoor
