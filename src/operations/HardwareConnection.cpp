#include "operations/HardwareConnection.h"

#include <utility>

#include "link/AxisScan.h"
#include "link/DisplayError.h"
#include "operations/FailureText.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/SerialPorts.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kCannotTerminate =
    "Error terminating communications with hardware!  Check connections and setup!";
constexpr const char* kCannotModifyRate = "Error modifying communications baud rate!";
constexpr std::int32_t kSearchTimeOut = 500;  // milliseconds
constexpr std::int32_t kTimeOut = 5000;
constexpr int kAttempts = 2;
constexpr std::size_t kHourInMoment = 11;
constexpr const char* kNotReady =
    "Hardware is not ready, or communication\rprocess settings are not set correctly.";

}  // namespace

void HardwareConnection::FollowDevice() {
  clsHX7Helix7& helix = *session_.Helix7();
  device_.Clear();
  device_ += helix.CommunicationDown.Connect([this] { Leave(); });
  helix.SetSearchWatch([this](std::int32_t bitsPerSecond, const std::string& axis) {
    desk_.SearchGoesOn(bitsPerSecond, axis, ++tries_);
    YieldEvents();
    return !session_.StopProcedure();
  });
}

void HardwareConnection::FollowProject() {
  clsHX7Project& project = *session_.OwnProject();
  project_.Clear();
  project_ += project.CommunicationDown.Connect([this] { Leave(); });
  project_ += project.LineLost.Connect([this] { TellLost("The amplifier does not answer."); });
  project_ +=
      project.OnlineStatus.Connect([this](const std::string& status) { desk_.StatusTold(status); });
}

void HardwareConnection::Show(LineState state) {
  state_ = state;
  desk_.LineChanged(state);
}

std::string HardwareConnection::StateText() const {
  switch (state_) {
    case LineState::offline:
      return "Offline";
    case LineState::searching:
      return "Searching";
    case LineState::online:
      return "Online";
    case LineState::lost:
      return "Lost " + MomentText(lost_).substr(kHourInMoment, 5);
    case LineState::alarm:
      break;
  }
  const std::string lead = IsWarning(alarm_) ? "Warning " : "In alarm ";
  return lead + alarm_.display + (alarm_.name.empty() ? "" : ": " + alarm_.name);
}

std::string HardwareConnection::ConnectionText() const {
  if (!session_.IsOnline()) return StateText();
  const bool simulated = session_.COM() == kSimulatedPort;
  return StateText() + ", axis " + session_.Axis() + ", " + NumberText(session_.BaudRate()) + ", " +
         (simulated ? "simulated" : "COM" + NumberText(session_.COM() + 1));
}

void HardwareConnection::NoteAlarm(const AlarmReading& reading) {
  if (!session_.IsOnline()) return;
  const LineState state = IsAlarm(reading) ? LineState::alarm : LineState::online;
  // The names change with their language.
  const bool same = reading.display == alarm_.display && reading.name == alarm_.name;
  const bool news = state != state_ || (state == LineState::alarm && !same);
  alarm_ = reading;
  if (!news) return;
  Show(state);
  desk_.StatusTold(StateText());
}

// The search too writes a parameter.
ResultCode HardwareConnection::Search(const std::function<ResultCode()>& search) {
  session_.SetStopProcedure(false);
  ForgetFailures();
  tries_ = 0;
  ResultCode result;
  {
    const BusyPointer busy;
    result = search();
  }
  desk_.SearchEnds();
  if (session_.OwnProject() != nullptr) session_.OwnProject()->MarkAfterStrayWrite();
  return result;
}

// ---- online

HardwareConnection::Outcome HardwareConnection::GoOnline() {
  if (session_.IsOnline()) {
    ShowExclamation("System is already online!");
    return Outcome::online;
  }
  Show(LineState::searching);
  desk_.StatusTold("Polling to Go Online...");
  const ResultCode result = Search([this] {
    // Without this the text would not be seen.
    YieldEvents();
    return session_.Helix7()->GoOnline(false);
  });
  if (result == kSuccess) {
    TellOnline();
    OfferToSetLineRight(true);
    motor_.Tell();
    return Outcome::online;
  }
  const std::string question = FailureText(
      "Error autoconnecting with hardware!\r"
      "Do you wish to establish communications manually?");
  // The search leaves the port open, which another program may want.
  Leave();
  if (AskYesNo(question)) return Outcome::byHand;
  ShowExclamation("Error communicating with hardware!  Check connections and setup!");
  return Outcome::failed;
}

HardwareConnection::Outcome HardwareConnection::GoOnlineAt(std::int16_t com) {
  if (!MayLeaveForChange()) return Outcome::failed;
  session_.Helix7()->SetCOMPort(static_cast<std::int16_t>(com + 1));
  session_.SetCOM(com);
  return GoOnline();
}

bool HardwareConnection::ReachFixed(const std::string& failure) {
  clsHX7Helix7& helix = *session_.Helix7();
  if (session_.IsOnline() && helix.Answers()) return true;
  const std::string words = TryTwice(*fixed_);
  if (words.empty()) {
    TellOnline();
    bool acknowledges = true;
    // As a search does: what is written counts only with its acknowledge.
    if (helix.AskAcknowledges(acknowledges) == kSuccess && !acknowledges) {
      (void)helix.MakeItAcknowledge();
    }
    ForgetFailures();
    return true;
  }
  const std::string lead = "Cannot go online!" + (failure.empty() ? "" : "  " + failure);
  const std::string told = FailureText(lead + "\r" + words);
  Leave();
  ShowExclamation(told);
  return false;
}

bool HardwareConnection::GoOnlineFor(const std::string& failure) {
  if (fixed_) return ReachFixed(failure);
  const ResultCode result = Search([this] { return session_.Helix7()->GoOnline(false); });
  if (result == kSuccess) {
    if (!session_.IsOnline()) TellOnline();
    // What failed on the way here is no failure of the operation.
    ForgetFailures();
    return true;
  }
  std::string lead = "Cannot go online!";
  if (!failure.empty()) lead += "  " + failure;
  const std::string words = FailureText(lead + "\r" + kNotReady);
  Leave();
  ShowExclamation(words);
  return false;
}

void HardwareConnection::TellOnline() {
  session_.SetOnline(true);
  const std::string& watts = session_.Helix7()->MotorSize();
  if (!watts.empty()) session_.SetLastMotorSize(watts);
  Show(LineState::online);
  desk_.StatusTold("Online");
}

Restarted HardwareConnection::AwaitRestart(std::optional<std::int32_t> rate) {
  const std::int32_t before = session_.BaudRate();
  const bool changed = rate && *rate != 0 && *rate != before;
  if (changed) session_.SetBaudRate(*rate);
  Show(LineState::searching);
  desk_.StatusTold("Waiting for the restart...");
  const ResultCode result = Search([this] { return session_.Helix7()->GoOnlineAfterRestart(); });
  if (result != kSuccess) {
    const std::string words = ErrorText(
        result, changed ? kCannotModifyRate : "The amplifier was not found after its restart!");
    Leave();
    return {.words = words};
  }
  TellOnline();
  if (rate == 0) return {.words = kCannotModifyRate};
  if (!changed) return {.found = true};
  const std::int32_t now = session_.BaudRate();
  if (now != *rate) {
    return {.words = std::string(kCannotModifyRate) + "\rThe amplifier answers at " +
                     NumberText(now) + " bit/s."};
  }
  return {.found = true,
          .words = "Communications baud rate has been modified.\rIt was " + NumberText(before) +
                   " bit/s and is " + NumberText(now) + " bit/s now."};
}

// A search has made the amplifier acknowledge already.
void HardwareConnection::OfferToSetLineRight(bool searched) {
  clsHX7Helix7& helix = *session_.Helix7();
  bool acknowledges = true;
  if (!searched) (void)helix.AskAcknowledges(acknowledges);
  if (!acknowledges &&
      AskYesNo("The amplifier does not acknowledge what is written to it (Pn802 is 0):\r"
               "every write would be taken for failed.\r\r"
               "Do you wish to switch its acknowledge on?")) {
    const ResultCode result = helix.MakeItAcknowledge();
    if (result != kSuccess) DisplayError(result, "The acknowledge could not be switched on!");
  }
  if (helix.Echoes() ||
      !AskYesNo("The amplifier answers without echo (Pn800):\r"
                "a command that was changed on its way cannot be found out, and\r"
                "the terminal and the display of errors stay empty.\r\r"
                "Do you wish to switch its echo on?  It restarts, and its servo goes off.")) {
    return;
  }
  const ResultCode result = Search([&helix] { return helix.MakeItEcho(); });
  if (result == kSuccess) return;
  DisplayError(result, "The echo could not be switched on!");
  Suspect();
  LeaveIfLost();
}

// ---- by hand

// False: the user keeps the connection.
bool HardwareConnection::MayLeaveForChange() {
  if (!session_.IsOnline()) return true;
  if (!AskOkCancel("Velmoor is currently online!\rDo you wish to disconnect before change?")) {
    return false;
  }
  if (session_.Helix7()->GoOffline()) {
    TellOffline();
  } else {
    ShowExclamation(kCannotTerminate);
  }
  return true;
}

bool HardwareConnection::ConnectBy(const LineSettings& settings,
                                   const std::function<bool()>& prepare) {
  if (!MayLeaveForChange() || !prepare()) return false;
  const std::string words = TryTwice(settings);
  if (!words.empty()) {
    TellOffline();
    ShowExclamation(
        FailureText(words + "\rPlease recheck connections and settings before retrying!"));
    return false;
  }
  TellOnline();
  OfferToSetLineRight(false);
  motor_.Tell();
  ShowInformation("Settings changed and communications established successfully!");
  return true;
}

std::string HardwareConnection::TryTwice(const LineSettings& settings) {
  clsHX7Helix7& helix = *session_.Helix7();
  helix.SetTimeOut(kSearchTimeOut);
  std::string words = TryBy(settings);
  for (int attempt = 1; attempt < kAttempts && !words.empty(); ++attempt) words = TryBy(settings);
  helix.SetTimeOut(kTimeOut);
  return words;
}

std::string HardwareConnection::TryBy(const LineSettings& settings) {
  ForgetFailures();
  if (!Take(settings)) return "Error changing communications settings!";
  clsHX7Helix7& helix = *session_.Helix7();
  const BusyPointer busy;
  if (!helix.GoOnlineManually()) return "Error establishing communications with hardware!";
  ResultCode code = helix.IsRX900AndVKLM();
  std::string value;
  // An answer to another question than that of Pn800 may pass for its own echo.
  if (code == kNoResponse && helix.GetParameter("800", value) == kEchoMismatch) {
    helix.SetEcho(false);
    session_.SetEcho(0);
    if (helix.GoOnlineManually()) code = helix.IsRX900AndVKLM();
  }
  if (code == kSuccess) return {};
  const bool other = code == kNotRX900 || code == kNotVKLM;
  const std::string words =
      other ? helix.IdentityText(code) : std::string("Error communicating to indexer!");
  helix.GoOffline();
  return words;
}

// In this order; a text that is no axis leaves what came before it changed.
bool HardwareConnection::Take(const LineSettings& settings) {
  clsHX7Helix7& helix = *session_.Helix7();
  helix.SetEcho(settings.echo);
  session_.SetEcho(settings.echo ? 1 : 0);
  helix.SetCOMPort(static_cast<std::int16_t>(settings.com + 1));
  session_.SetCOM(settings.com);
  helix.SetBaudRate(settings.bitsPerSecond);
  session_.SetBaudRate(settings.bitsPerSecond);
  const auto axis = ParseHex(settings.axis);
  if (!axis) return false;
  helix.SetAxisNumber(static_cast<std::int16_t>(*axis));
  session_.SetAxis(settings.axis);
  return true;
}

std::optional<std::vector<std::string>> HardwareConnection::FindAxes(
    const LineSettings& settings, const std::function<bool(int queried)>& queried) {
  clsHX7Helix7& helix = *session_.Helix7();
  const bool opens = !session_.IsOnline();
  if (opens) {
    helix.SetEcho(settings.echo);
    helix.SetCOMPort(static_cast<std::int16_t>(settings.com + 1));
    helix.SetBaudRate(settings.bitsPerSecond);
    // The port alone: nobody is known yet whose model could be read.
    if (!helix.SerialComm().manualConnect()) {
      ShowExclamation(session_.Comm().LastError());
      return std::nullopt;
    }
  }
  const struct Closing {
    clsHX7Helix7* helix;
    ~Closing() {
      if (helix != nullptr) helix->GoOffline();
    }
  } closing{opens ? &helix : nullptr};
  const BusyPointer busy;
  return ScanAxes(helix, queried);
}

// ---- offline

void HardwareConnection::GoOffline() {
  if (!session_.IsOnline()) {
    ShowExclamation("System is already offline!");
  } else if (session_.Helix7()->GoOffline()) {
    TellOffline();
  } else {
    ShowExclamation(kCannotTerminate);
  }
}

void HardwareConnection::TellOffline() {
  session_.SetOnline(false);
  motor_.Forget();
  Show(LineState::offline);
  desk_.StatusTold("Offline");
}

void HardwareConnection::Leave() {
  if (session_.Helix7()->GoOffline()) TellOffline();
}

// ---- a line that is gone

// A refusal of the amplifier ends a transfer too, and is no reason to leave it.
void HardwareConnection::LeaveIfLost() {
  const bool suspect = std::exchange(suspect_, false);
  if (!session_.IsOnline()) return;
  const bool answers = session_.Comm().IsOpen() && (!suspect || session_.Helix7()->Answers());
  if (!answers) Leave();
}

void HardwareConnection::WatchLine() {
  if (!session_.IsOnline()) return;
  std::string reason;
  try {
    (void)session_.Comm().WaitingBytes();
    if (session_.Comm().IsOpen()) return;
    reason = "The serial port was closed.";
  } catch (const SerialPortError& error) {
    reason = error.what();
  }
  TellLost(reason);
}

void HardwareConnection::TellLost(const std::string& reason) {
  Leave();
  lost_ = world().clock->Now();
  Show(LineState::lost);
  const bool again = AskYesNo("The connection to the hardware was lost!\r" + reason +
                              "\rThe project is unchanged.\r\rDo you wish to try again?");
  if (again) (void)GoOnlineFor("");
}

}  // namespace velmoor
