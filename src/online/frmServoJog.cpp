#include "online/frmServoJog.h"

#include <chrono>
#include <optional>

#include "link/CommandWords.h"
#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kNotPositive =
    "Speed must be a positive integer value!  Previous value will be restored.";
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

void frmServoJog::FormLoad() {
  run_.Reset();
  blnNeedsSaving_ = false;
  ui().txtSpeed.SetText(NumberText(lngSpeed_));
  strStartValue_ = strBeforeEdit_ = ui().txtSpeed.Text();
  for (int index = 0; index < 2; ++index) {
    Button& jog = ui().cmdJog_[index];
    connections_ += jog.Down.Connect([this, index] { cmdJog_MouseDown(index); });
    connections_ += jog.Up.Connect([this] { run_.Release(); });
  }
  connections_ += ui().cmdServo.Click.Connect([this] { run_.Toggle(); });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  connections_ += ui().updServo_Up.Click.Connect([this] { updServo_UpClick(); });
  connections_ += ui().updServo_Down.Click.Connect([this] { updServo_DownClick(); });
  TextBox& speed = ui().txtSpeed;
  connections_ += speed.Change.Connect([this] { txtSpeed_Change(); });
  connections_ += speed.Validate.Connect([this](bool& cancel) { txtSpeed_Validate(cancel); });
  connections_ += ui().cmdResetAlarm.Click.Connect([this] { cmdResetAlarm_Click(); });
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
  record_.Bind(ui().cmdRecord, connections_);
  ShowMotion();
  ShowChart();
  timer_ = world().forms->NewTimer();
  timer_->SetInterval(kWatch);
  connections_ += timer_->Tick.Connect([this] { tmrWatch_Timer(); });
  timer_->SetEnabled(true);
}

// The servo goes off whichever way the window closes.
void frmServoJog::FormUnload() {
  timer_->SetEnabled(false);
  run_.Leave();
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

void frmServoJog::ShowServo() {
  ui().cmdServo.SetCaption(run_.Caption());
  ui().pcbServo.SetTone(run_.LampTone());
  ui().lblServo.SetText(run_.Words());
  EnableJogButtons(run_.IsOn());
}

void frmServoJog::EnableJogButtons(bool bState) {
  for (std::size_t i = 0; i < ui().cmdJog_.size(); ++i) ui().cmdJog_[i].SetEnabled(bState);
}

// ---- motion

void frmServoJog::cmdJog_MouseDown(int Index) {
  const auto token = Token();
  run_.Press(token, [&] {
    if (!TakeSpeed()) return run_.LetGo();
    run_.Start(blnCWForward_ ? Index : (Index + 1) & 1, lngSpeed_, token);
  });
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
  if (silent && run_.IsHeld()) run_.Stop("The amplifier does not answer: the motion was ended.");
  if (token.expired() || !watch_.HasTripped() || !run_.IsOn()) return;
  // An alarm takes the servo off; its reset must not bring it back.
  EnableJogButtons(false);
  (void)run_.SwitchOff();
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
  record_.Show();
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
