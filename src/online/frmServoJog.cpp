#include "online/frmServoJog.h"

#include <chrono>
#include <exception>
#include <optional>

#include "link/CommandWords.h"
#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/World.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kCannotStart = "Error initiating servo jog!";
constexpr const char* kCannotStop = "Error terminating servo jog!";
constexpr const char* kHint =
    "\r\rHold jog button down for a few seconds before releasing to stop, if jog is still running.";
constexpr const char* kNotPositive =
    "Speed must be a positive integer value!  Previous value will be restored.";
constexpr const char* kMayBeOn =
    "The motor may still be energised and moving: servo off was not confirmed.\r"
    "Use the emergency stop, then check the line.";
// One question each time; a silent line is asked less often, since each costs half a second.
constexpr std::chrono::milliseconds kWatch{120};
constexpr std::chrono::milliseconds kWatchSilence{2000};
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

double Seconds() {
  return std::chrono::duration<double>(world().clock->Monotonic()).count();
}

}  // namespace

frmServoJog::~frmServoJog() {
  MakeSafe();
}

void frmServoJog::MakeSafe() {
  if (gMainForm == nullptr || gMainForm->Helix7() == nullptr) return;
  blnMouseUp_ = true;
  Hardware().MakeMotorSafe();
}

void frmServoJog::FormLoad() {
  blnServo_ = false;
  blnNeedsSaving_ = false;
  blnMouseUp_ = true;
  stopping_ = false;
  ui().txtSpeed.SetText(NumberText(lngSpeed_));
  strStartValue_ = strBeforeEdit_ = ui().txtSpeed.Text();
  for (int index = 0; index < 2; ++index) {
    Button& jog = ui().cmdJog_[index];
    connections_ += jog.Down.Connect([this, index] { cmdJog_MouseDown(index); });
    connections_ += jog.Up.Connect([this] { cmdJog_MouseUp(); });
  }
  connections_ += ui().cmdServo.Click.Connect([this] { cmdServo_Click(); });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  connections_ += ui().updServo_Up.Click.Connect([this] { updServo_UpClick(); });
  connections_ += ui().updServo_Down.Click.Connect([this] { updServo_DownClick(); });
  TextBox& speed = ui().txtSpeed;
  connections_ += speed.Change.Connect([this] { txtSpeed_Change(); });
  connections_ += speed.Validate.Connect([this](bool& cancel) { txtSpeed_Validate(cancel); });
  connections_ += ui().cmdResetAlarm.Click.Connect([this] { cmdResetAlarm_Click(); });
  EnableJogButtons(false);
  ShowServo();
  CheckHardwareServoForwardSetting();
  Project& project = OpenedProject();
  const auto feed = static_cast<float>(project.MechanicalSystemSister().FeedConstant());
  watch_ = MotorWatch(MonitoredUnits(project, feed), blnCWForward_);
  chart_ = {};
  opened_ = Seconds();
  TimeChart& chart = ui().chtMotion;
  connections_ += chart.Zoom.Connect([this](double time, double factor) {
    chart_.Zoom(time, factor);
    ShowChart();
  });
  connections_ += chart.Pan.Connect([this](double seconds) {
    chart_.Pan(seconds);
    ShowChart();
  });
  ShowMotion();
  ShowChart();
  timer_ = world().forms->NewTimer();
  timer_->SetInterval(kWatch);
  connections_ += timer_->Tick.Connect([this] { tmrWatch_Timer(); });
  timer_->SetEnabled(true);
}

// The servo goes off whichever way the window closes. Where the motor cannot be on nothing is told.
void frmServoJog::FormUnload() {
  timer_->SetEnabled(false);
  const bool moved = !blnMouseUp_;
  blnMouseUp_ = true;
  blnServo_ = false;
  if (moved) (void)Hardware().StopForCertain();
  const ResultCode result = Hardware().SwitchOffForCertain();
  if (result != kSuccess && Hardware().MotorMayBeOn()) {
    Tell(Hardware().LatestFailure(), "Error setting servo off!");
  }
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

// What may be on is switched off, whatever was asked for last.
void frmServoJog::cmdServo_Click() {
  try {
    blnServo_ = !blnServo_ && !Hardware().MotorMayBeOn();
    std::optional<LinkFailure> enableFailure;
    if (blnServo_) enableFailure = AskAndEnable();
    if (!blnServo_) {
      const ResultCode off = SwitchOff();
      if (enableFailure) {
        Tell(*enableFailure, "Error setting servo on!");
      } else if (off != kSuccess) {
        Tell(Hardware().LatestFailure(), "Error setting servo off!");
      }
    }
    EnableJogButtons(blnServo_);
  } catch (const std::exception& error) {
    ShowExclamation(std::string("Error enabling/disabling servo!\r") + error.what());
  }
}

// blnServo_ stays only where the servo is on.
std::optional<LinkFailure> frmServoJog::AskAndEnable() {
  blnServo_ = AskExclamationYesNo(
      "Use extreme caution!\r"
      "The enable operation will energize the motor and may cause motion \r"
      "of the motor shaft and any mechanism connected to the motor shaft.\r\r"
      "Are you sure you want to enable the servo system?\r"
      "Click Yes to enable the servo.  Click No to cancel.");
  if (!blnServo_) return std::nullopt;
  blnServo_ = Hardware().EnableServoForRun() == kSuccess;
  ShowServo();
  if (blnServo_) return std::nullopt;
  return Hardware().LatestFailure();
}

ResultCode frmServoJog::SwitchOff() {
  blnServo_ = false;
  const ResultCode result = Hardware().SwitchOffForCertain();
  ShowServo();
  return result;
}

void frmServoJog::ShowServo() {
  const bool mayBeOn = Hardware().MotorMayBeOn();
  ui().cmdServo.SetCaption(mayBeOn ? "Disable &Servo" : "Enable &Servo");
  ui().pcbServo.SetTone(!mayBeOn ? Tone::normal : blnServo_ ? Tone::good : Tone::alarm);
  ui().lblServo.SetText(!mayBeOn    ? "Servo not enabled"
                        : blnServo_ ? "Servo on"
                                    : "Servo may be on: use the emergency stop");
}

void frmServoJog::Tell(const LinkFailure& failure, const char* words) {
  DisplayError(failure, words, Hardware().MotorMayBeOn() && !blnServo_ ? kMayBeOn : "");
}

void frmServoJog::EnableJogButtons(bool bState) {
  for (std::size_t i = 0; i < ui().cmdJog_.size(); ++i) ui().cmdJog_[i].SetEnabled(bState);
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
    (void)Hardware().StopForCertain();
    if (open) {
      blnMouseUp_ = true;
      ShowServo();
    }
    ShowExclamation(std::string(kCannotStart) + "\r" + error.what() + kHint);
  }
}

// Events run between the questions to the amplifier, so that a release is seen before anything
// starts to move.
void frmServoJog::StartMotion(int Index) {
  if (!TakeSpeed()) {
    blnMouseUp_ = true;
    return;
  }
  const auto token = Token();
  const float factor = OpenedProject().GetReferenceSpeedFactor();
  if (token.expired()) return;
  if (factor < 0) {
    blnMouseUp_ = true;
    ShowExclamation("Error communicating with hardware!\rCheck connections then retry!\r\r" +
                    CauseOf(Hardware().LatestFailure(), *gMainForm->Alarm()));
    return;
  }
  lngRefUnitSpeed_ =
      ToInt32(RoundHalfEven(static_cast<double>(factor) * static_cast<double>(lngSpeed_)));
  iCWIndex_ = static_cast<std::int16_t>(blnCWForward_ ? Index : (Index + 1) & 1);
  if (blnMouseUp_ || !blnServo_) return;
  const ResultCode result = Hardware().StartJog(iCWIndex_, lngRefUnitSpeed_);
  if (result == kSuccess || result == kBusy || token.expired()) return;
  // The command may have come through although its answer did not.
  const LinkFailure failure = Hardware().LatestFailure();
  StopMotion(nullptr);
  Tell(failure, kCannotStart);
}

bool frmServoJog::TakeSpeed() {
  const auto speed = SpeedIn(ui().txtSpeed.Text());
  if (speed && *speed >= 1) {
    lngSpeed_ = *speed;
    return true;
  }
  RestoreSpeed(speed ? kNotPositive : kNotNumeric);
  return false;
}

void frmServoJog::cmdJog_MouseUp() {
  if (stopping_) return;
  try {
    StopMotion(kCannotStop);
  } catch (const std::exception& error) {
    ShowExclamation(std::string(kCannotStop) + "\r" + error.what() + kHint);
  }
}

// A line that is busy is passed over in silence, deliberately; nothing here lets it arise. Without
// `words` the caller tells.
void frmServoJog::StopMotion(const char* words) {
  const ScopedFlag stopping(stopping_);
  blnMouseUp_ = true;
  const ResultCode result = Hardware().StopForCertain();
  if (result == kSuccess || result == kBusy) return;
  const LinkFailure failure = Hardware().LatestFailure();
  blnServo_ = false;
  ShowServo();
  EnableJogButtons(false);
  if (words != nullptr) Tell(failure, words);
}

// ---- what the motor does

void frmServoJog::tmrWatch_Timer() {
  const ResultCode result = watch_.AskNext();
  if (const auto& read = watch_.Latest()) {
    chart_.Add(read->item, Seconds() - opened_, read->raw);
    ShowChart();
  }
  const bool silent = result == kPortNotOpen || result == kNoResponse;
  if (silent) watch_.Forget();
  timer_->SetInterval(silent ? kWatchSilence : kWatch);
  ShowMotion();
  const auto token = Token();
  // Nobody can tell what a motor does that is held running on a silent line.
  if (silent && !blnMouseUp_) StopMotion("The amplifier does not answer: the motion was ended.");
  if (token.expired() || !watch_.HasTripped() || !blnServo_) return;
  // An alarm takes the servo off; its reset must not bring it back.
  EnableJogButtons(false);
  (void)SwitchOff();
}

void frmServoJog::ShowMotion() {
  ui().lblActualSpeed.SetText(watch_.SpeedText());
  ui().lblActualPosition.SetText(watch_.PositionText());
  ui().lblMotion.SetText(watch_.MotionText());
  Label& alarm = ui().lblAlarm;
  alarm.SetText(watch_.AlarmText());
  alarm.SetTone(watch_.IsAlarm() ? Tone::alarm : Tone::normal);
  ui().cmdResetAlarm.SetEnabled(watch_.IsAlarm());
}

void frmServoJog::ShowChart() {
  TimeChart& chart = ui().chtMotion;
  chart.Show(chart_.Visible(watch_.InMachineUnits(), chart.WidthInPoints()),
             "Speed and position are drawn here.");
}

void frmServoJog::cmdResetAlarm_Click() {
  const ResultCode result =
      Hardware().ResetDefaults(static_cast<std::int32_t>(SimpleCommand::resetAlarm));
  if (result != kSuccess) DisplayError(result, "Error resetting current alarm!");
}

// ---- speed

void frmServoJog::RestoreSpeed(const char* words) {
  ShowExclamation(words);
  ui().txtSpeed.SetText(strBeforeEdit_);
  if (const auto speed = SpeedIn(strBeforeEdit_)) lngSpeed_ = *speed;
}

void frmServoJog::txtSpeed_Change() {
  const auto speed = SpeedIn(ui().txtSpeed.Text());
  if (!speed) return RestoreSpeed(kNotNumeric);
  lngSpeed_ = *speed;
}

void frmServoJog::txtSpeed_Validate(bool& Cancel) {
  TextBox& box = ui().txtSpeed;
  const auto speed = SpeedIn(box.Text());
  if (!speed) {
    RestoreSpeed(kNotNumeric);
    Cancel = true;
  } else if (*speed < 1) {
    RestoreSpeed(kNotPositive);
    Cancel = true;
  } else {
    lngSpeed_ = *speed;
    ShowSpeed();
  }
  strBeforeEdit_ = box.Text();
}

void frmServoJog::ShowSpeed() {
  ui().txtSpeed.SetText(NumberText(lngSpeed_));
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
