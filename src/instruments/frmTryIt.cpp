#include "instruments/frmTryIt.h"

#include <array>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

constexpr std::array<int, 4> kWidths{7, 19, 7, 9};

// A question each time: the line gives the pace. A silent one is asked less often.
constexpr std::chrono::milliseconds kRead{1};
constexpr std::chrono::milliseconds kSilence{2000};
constexpr const char* kNothing =
    "Hold the button for a test move, or record a pass of the programme: its curves are drawn "
    "here, over those of the trial before it.";
constexpr double kBeforePass = 0.2;              // s
constexpr double kBehindPass = 0.5;              // s
constexpr std::int32_t kProgrammeRuns = 1 << 4;  // of the status

double Seconds() {
  return std::chrono::duration<double>(world().clock->Monotonic()).count();
}

}  // namespace

void frmTryIt::FormLoad() {
  run_.Reset();
  move_ = {};
  trial_ = Trial::none;
  readings_ = {};
  former_.clear();
  trials_.clear();
  view_.Forget();
  Grid& grid = ui().vsGains;
  grid.Bind(&gains_);
  for (std::size_t i = 0; i < kWidths.size(); ++i) {
    grid.SetColumnWidth(static_cast<int>(i), kWidths.at(i));
  }
  grid.SetRowsInSight(12);
  connections_ += grid.AfterEdit.Connect([this](int row, int) {
    ui().vsGains.RefreshRow(row);
    OfferGains();
  });
  connections_ += ui().cmdSend.Click.Connect([this] { cmdSend_Click(); });
  connections_ += ui().cmdBack.Click.Connect([this] { cmdBack_Click(); });
  connections_ += ui().cmdServo.Click.Connect([this] { run_.Toggle(); });
  connections_ += ui().cmdMove.Down.Connect([this] { cmdMove_Down(); });
  connections_ += ui().cmdMove.Up.Connect([this] { cmdMove_Up(); });
  connections_ += ui().cmdPass.Click.Connect([this] { cmdPass_Click(); });
  connections_ += ui().optWay.Click.Connect([this](int) { ShowUnit(); });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  ui().optWay.SetValue(0);
  // 10 mm, or what is about as much in counts.
  if (instruments_.Headings().CountsForDistance() <= 1) ui().txtAmount.SetText("10000");
  ShowUnit();
  view_.Bind(ui().chtTimes, ui().vsFigures, ui().lblCursors, kNothing, connections_);
  ReadGains();
  ShowServo();
  TakeTrials();
  tmrRead_ = world().forms->NewTimer();
  tmrRead_->SetInterval(kRead);
  connections_ += tmrRead_->Tick.Connect([this] { tmrRead_Timer(); });
  tmrRead_->SetEnabled(true);
}

// The servo goes off whichever way the window closes.
void frmTryIt::FormUnload() {
  tmrRead_->SetEnabled(false);
  move_.End();
  run_.Leave();
  if (trial_ != Trial::none) instruments_.Record().Stop();
  trial_ = Trial::none;
}

// ---- the gains

void frmTryIt::ReadGains() {
  gains_.Read(instruments_.OpenProject()->Tuning());
  ui().vsGains.Refresh();
  OfferGains();
}

void frmTryIt::OfferGains() {
  const bool free = trial_ == Trial::none;
  ui().cmdSend.SetEnabled(free && gains_.IsEdited());
  ui().cmdBack.SetEnabled(free && !former_.empty());
}

bool frmTryIt::SendValues(const std::vector<std::string>& values) {
  const std::vector<std::string> assignments = gains_.Assignments(values);
  if (assignments.empty()) return true;
  const auto token = Token();
  // The line is the transfer's alone.
  tmrRead_->SetEnabled(false);
  const bool sent = send_(assignments);
  if (token.expired()) return sent;
  tmrRead_->SetEnabled(true);
  ReadGains();
  return sent;
}

void frmTryIt::cmdSend_Click() {
  if (!ui().vsGains.FinishEdit() || trial_ != Trial::none) return;
  std::vector<std::string> before = gains_.Values();
  const std::vector<std::string> next = gains_.Edited();
  const auto token = Token();
  const bool sent = SendValues(next);
  if (token.expired()) return;
  if (sent) {
    former_ = std::move(before);
  } else {
    // What was typed stays to be mended.
    gains_.Edit(next);
    ui().vsGains.Refresh();
  }
  OfferGains();
}

// There is one way back, from the last change that was sent.
void frmTryIt::cmdBack_Click() {
  if (trial_ != Trial::none) return;
  const std::vector<std::string> values = former_;
  const auto token = Token();
  if (SendValues(values) && !token.expired()) former_.clear();
  if (!token.expired()) OfferGains();
}

// ---- a trial

void frmTryIt::ShowServo() {
  ui().cmdServo.SetCaption(run_.Caption());
  ui().pcbServo.SetTone(run_.LampTone());
  ui().lblServo.SetText(run_.Words());
  ui().cmdMove.SetEnabled(run_.IsOn() && trial_ != Trial::pass);
}

void frmTryIt::ShowUnit() {
  ui().lblAmountUnit.SetText(ui().optWay.Value() == 0 ? instruments_.Headings().Items().front().unit
                                                      : "s");
}

bool frmTryIt::TakeOrder() {
  const auto refuse = [](TextBox& box, const std::string& words) {
    ShowExclamation(words);
    box.SetFocus();
    return false;
  };
  const auto speed = ParseWhole(ui().txtSpeed.Text());
  if (!speed || *speed < 1 || !std::in_range<std::int32_t>(*speed)) {
    return refuse(ui().txtSpeed, "Speed must be a positive integer value!");
  }
  speed_ = static_cast<std::int32_t>(*speed);
  const auto amount = ParseFloat(Trim(ui().txtAmount.Text()));
  const bool byDistance = ui().optWay.Value() == 0;
  if (!amount || *amount <= 0) {
    return refuse(ui().txtAmount, "Distance and time are numbers above 0.");
  }
  order_ = {};
  if (!byDistance) {
    if (*amount > TestMove::kLongest) {
      return refuse(ui().txtAmount, "A test move takes at most 30 s each way.");
    }
    order_.seconds = *amount;
    return true;
  }
  try {
    order_.distance = ToInt32(*amount * instruments_.Headings().CountsForDistance());
  } catch (const NumberError&) {
    return refuse(ui().txtAmount, "The distance is too long.");
  }
  return true;
}

void frmTryIt::cmdMove_Down() {
  const auto token = Token();
  run_.Press(token, [&] {
    if (!TakeOrder() || trial_ != Trial::none || !run_.IsOn()) return run_.LetGo();
    if (!readings_.Position()) {
      run_.LetGo();
      return ShowExclamation("The position of the axis is not known, so it does not move.");
    }
    BeginTrial(Trial::move, {}, "test move");
    if (token.expired() || trial_ != Trial::move) return run_.LetGo();
    if (run_.IsHeld()) move_.Begin(order_, *readings_.Position(), Seconds());
  });
}

void frmTryIt::cmdMove_Up() {
  const auto token = Token();
  move_.End();
  run_.Release();
  if (!token.expired() && trial_ == Trial::move) EndTrial();
}

void frmTryIt::cmdPass_Click() {
  if (trial_ == Trial::pass) return EndTrial();
  if (trial_ != Trial::none) return;
  passEnded_.reset();
  RecorderOrder order;
  order.before = kBeforePass;
  order.trigger = Trigger{recorded::kStatus, TriggerKind::bitOn, 4, "the programme begins"};
  BeginTrial(Trial::pass, order, "pass of the programme");
}

void frmTryIt::BeginTrial(Trial trial, RecorderOrder order, const std::string& cause) {
  try {
    instruments_.Begin(order, cause);
  } catch (const FileError& error) {
    ShowExclamation(std::string("Nothing can be recorded!\r") + error.what());
    return;
  }
  trial_ = trial;
  ShowState();
}

void frmTryIt::EndTrial() {
  move_.End();
  trial_ = Trial::none;
  Recorder& recorder = instruments_.Record();
  const bool recorded = recorder.Now() == Recorder::State::running;
  recorder.Stop();
  if (recorded && !recorder.Name().empty()) {
    trials_.push_back(recorder.Name());
    if (trials_.size() > 2) trials_.erase(trials_.begin());
    TakeTrials();
  }
  ShowState();
}

void frmTryIt::tmrRead_Timer() {
  // The start of a motion serves events between its questions.
  if (reading_) return;
  const ScopedFlag reading(reading_);
  const auto token = Token();
  const ResultCode result = readings_.AskNext(trial_ == Trial::pass);
  const bool silent = result == kPortNotOpen || result == kNoResponse;
  tmrRead_->SetInterval(silent ? kSilence : kRead);
  if (silent) {
    readings_.Forget();
    move_.End();
    // Nobody can tell what a motor does that is held running on a silent line.
    if (run_.IsHeld()) run_.Stop("The amplifier does not answer: the motion was ended.");
    if (!token.expired() && trial_ != Trial::none) EndTrial();
    return;
  }
  if (readings_.HasTripped() && run_.IsOn()) {
    // An alarm takes the servo off; its reset must not bring it back.
    move_.End();
    ui().cmdMove.SetEnabled(false);
    if (token.expired()) return;
    (void)run_.SwitchOff();
    if (trial_ == Trial::move) EndTrial();
    return;
  }
  GoOn();
  if (token.expired()) return;
  FollowPass();
  ShowState();
}

void frmTryIt::GoOn() {
  if (!move_.IsUnderWay() || !run_.IsHeld()) return;
  constexpr const char* kCannotStop = "Error terminating servo jog!";
  const auto token = Token();
  // Nobody knows any more how far it goes.
  if (!readings_.Position()) {
    run_.Stop(kCannotStop);
    if (token.expired()) return;
    EndTrial();
    return ShowExclamation("The position could not be read: the motion was ended.");
  }
  switch (move_.Next(*readings_.Position(), Seconds())) {
    case TestMove::Wish::nothing:
      return;
    case TestMove::Wish::forward:
      return run_.Start(0, speed_, token);
    case TestMove::Wish::reverse:
      return run_.Start(1, speed_, token);
    case TestMove::Wish::stop:
      if (!run_.Pause(kCannotStop) && !token.expired()) EndTrial();
      return;
    case TestMove::Wish::end:
      return EndTrial();
  }
}

void frmTryIt::FollowPass() {
  if (trial_ != Trial::pass || !readings_.Status()) return;
  const bool runs = (*readings_.Status() & kProgrammeRuns) != 0;
  // One that ran before the recording waited for it is passed over.
  if (instruments_.Record().Now() != Recorder::State::running) return;
  if (runs) return passEnded_.reset();
  if (!passEnded_) passEnded_ = Seconds();
  if (Seconds() - *passEnded_ >= kBehindPass) EndTrial();
}

void frmTryIt::ShowState() {
  const bool isPass = trial_ == Trial::pass;
  ui().cmdPass.SetCaption(isPass ? "Stop &Recording" : "&Record a Pass");
  ui().cmdPass.SetEnabled(trial_ != Trial::move);
  const bool waits = isPass && instruments_.Record().Now() == Recorder::State::waiting;
  ui().lblState.SetText(trial_ == Trial::none ? std::string()
                        : waits ? "Start the programme at the machine: one pass is recorded."
                                : instruments_.Record().Words());
  ui().lblState.SetTone(trial_ == Trial::none ? Tone::normal : Tone::busy);
  ui().cmdMove.SetEnabled(run_.IsOn() && !isPass);
  OfferGains();
}

// ---- what came of it

void frmTryIt::TakeTrials() {
  std::vector<Overlay::Shown> shown;
  const auto folder = instruments_.Folder();
  for (std::size_t i = 0; i < trials_.size() && folder; ++i) {
    const char* const name = i + 1 < trials_.size() ? "before" : "now";
    Trapped("The trial cannot be shown!\r", [&] {
      shown.push_back({.name = name, .recording = ReadRecording(folder->PathOf(trials_[i]))});
      return true;
    });
  }
  constexpr int kFigure = 38;
  constexpr int kValue = 12;
  view_.Take(std::move(shown), Alignment::motion, kFigure, kValue);
  std::string words = trials_.empty() ? "" : "now: " + trials_.back();
  const auto& all = view_.All();
  if (all.size() == 2) {
    // Those of the amplifier, as each began.
    const bool same = all[0].recording.heading.gains == all[1].recording.heading.gains;
    words = "before: " + trials_.front() + (same ? " (the same gains); " : "; ") + words;
  }
  ui().lblTrials.SetText(words);
}

}  // namespace velmoor
