#include "rehearsal/Rehearsal.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>

#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "rehearsal/RehearsedAmplifier.h"
#include "session/Session.h"

namespace velmoor {
namespace {

using Kind = RehearsalFinding::Kind;

constexpr Micros kTick{250};
constexpr int kTicksPerSample = 4;
constexpr double kTickSeconds = 250e-6;
constexpr std::uint32_t kProfileDone = 1U << 2U;  // of STS

struct KindWord {
  Kind kind;
  std::string_view word;
};
constexpr KindWord kKindWords[] = {{Kind::refused, "refused"},     {Kind::alarm, "alarm"},
                                   {Kind::warning, "warning"},     {Kind::event, "event"},
                                   {Kind::unreached, "unreached"}, {Kind::cut, "cut"},
                                   {Kind::dwell, "dwell"},         {Kind::speed, "speed"}};

std::string SecondsText(double seconds) {
  return FixedText(seconds, 3) + " s";
}

}  // namespace

class Rehearsal::Run {
 public:
  Run(clsHX7Project& project, RehearsalOrder order,
      std::function<void(const RehearsalSample&)> sink)
      : order_(std::move(order)), sink_(std::move(sink)), programme_(project), amplifier_(project) {
    for (const std::string& line : amplifier_.Refused()) {
      Find(Kind::refused, 0, line + ": the amplifier does not take this value");
    }
    over_ = !Prepare();
  }

  bool GoOn(double seconds) {
    const double until = seconds_ + seconds;
    while (!over_ && seconds_ < until) Tick();
    return !over_;
  }

  RehearsalResult End() {
    const bool whole = over_;
    over_ = true;
    Close(false);
    JudgeSteps();
    if (whole) TellUnreached();
    return std::move(result_);
  }

  [[nodiscard]] double Seconds() const { return seconds_; }
  [[nodiscard]] const RehearsedProgramme& Programme() const { return programme_; }

 private:
  // ---- the beginning

  bool Prepare() {
    const ParameterMemory& parameters = amplifier_.Memory().parameters;
    constexpr std::uint32_t kMode = 0x803;
    constexpr std::int64_t kAlwaysJog = 3;
    const std::int64_t mode = parameters.Value(kMode);
    if (mode == kAlwaysJog) {
      Find(Kind::refused, 0, "The card is always in jog mode (Pn803): no programme runs");
      return false;
    }
    amplifier_.Amplifier().AdvanceTo(now_);
    axis_.SetInput("IN2", 0, mode == 1);
    for (const std::string& input : InputNames()) Put({{}, {}, input, input == "S-ON"});
    ApplyDue();
    std::optional<std::size_t> row;
    if (order_.startStep > 0) row = static_cast<std::size_t>(order_.startStep) - 1;
    if (!axis_.SwitchServo(true) || !axis_.StartProgramme(row)) {
      Find(Kind::refused, 0, "The programme cannot be started");
      return false;
    }
    return true;
  }

  void Put(const ScriptedInput& entry) {
    const auto line = LineOf(entry.input, entry.on, amplifier_.Memory().parameters);
    if (line) axis_.SetInput(line->word, line->bit, line->level);
    if (!line && entry.on && entry.input != "S-ON") {
      Find(Kind::refused, 0, "Input " + entry.input + " is not used by the project's parameters");
    }
  }

  void ApplyDue() {
    for (std::size_t i = 0; i < order_.inputs.size(); ++i) {
      const ScriptedInput& entry = order_.inputs[i];
      if (entry.seconds && *entry.seconds <= seconds_ && applied_.insert(i).second) Put(entry);
    }
  }

  void ApplyAt(int step) {
    for (const ScriptedInput& entry : order_.inputs) {
      if (entry.step == step) Put(entry);
    }
  }

  [[nodiscard]] bool InputsToCome() const {
    return std::ranges::any_of(order_.inputs, [this](const ScriptedInput& entry) {
      return entry.seconds && *entry.seconds > seconds_;
    });
  }

  // ---- time

  void Tick() {
    now_ += kTick;
    ++ticks_;
    seconds_ = kTickSeconds * static_cast<double>(ticks_);
    ApplyDue();
    amplifier_.Amplifier().AdvanceTo(now_);
    LookAtSteps();
    LookAtAxis();
    LookAtAlarms();
    if (ticks_ % kTicksPerSample == 0) Tell();
    if (!axis_.IsProgrammeRunning()) {
      // It comes to rest yet: where, is the last step's.
      Close(false);
      over_ = over_ || !axis_.IsBusy();
      if (over_ && !result_.steps.empty()) result_.steps.back().endPosition = Read("PUN");
      return;
    }
    result_.seconds = seconds_;
    if (over_) return;
    if (WaitsInVain()) {
      Find(Kind::event, step_,
           "the event " + programme_.Text(step_, clsHX7Position::event) + " never comes");
      over_ = true;
    } else if (seconds_ >= order_.longest) {
      Find(Kind::event, step_, "the programme has not ended after " + SecondsText(order_.longest));
      over_ = true;
    }
  }

  [[nodiscard]] std::int32_t Read(std::string_view word) const {
    return axis_.Value(word).value_or(0);
  }

  void LookAtSteps() {
    const std::int64_t begun = axis_.Programme().StepsBegun();
    if (begun == begun_) return;
    begun_ = begun;
    const int step = static_cast<int>(axis_.Programme().Row()) + 1;
    Close(true);
    if (EndsPass(step)) return;
    step_ = step;
    waitsSince_ = seconds_;
    result_.steps.push_back({.step = step, .begin = seconds_, .wantedSpeed = WantedSpeed(step)});
    open_ = true;
    reached_.insert(step);
    ApplyAt(step);
  }

  // The programme is where it has been in this pass: it begins again. The repetitions of one step
  // are no pass.
  bool EndsPass(int step) {
    const bool repeats = step == step_ && ++repetitions_ < programme_.Loop(step);
    if (!repeats) repetitions_ = 0;
    const auto known = passBegin_.find(step);
    if (repeats || known == passBegin_.end()) {
      passBegin_.try_emplace(step, seconds_);
      return false;
    }
    result_.cycleSeconds = seconds_ - known->second;
    result_.cycleStep = step;
    passBegin_ = {{step, seconds_}};
    over_ = ++passes_ >= order_.passes;
    return over_;
  }

  // The step that is over, `goesOn` with the next one, or cut off by the end of all.
  void Close(bool goesOn) {
    if (!open_) return;
    RehearsedStep& step = result_.steps.back();
    step.end = seconds_;
    step.ended = goesOn || !axis_.IsProgrammeRunning();
    step.endPosition = Read("PUN");
    open_ = false;
    if (goesOn && profileMoves_ && step.wantedSpeed > 0 && programme_.OnlyWaits(step.step)) {
      Find(Kind::cut, step.step,
           "the next step begins " + SecondsText(step.end - step.begin) +
               " after this one, before its move is over");
    }
  }

  void LookAtAxis() {
    const bool moves = (static_cast<std::uint32_t>(Read("STS")) & kProfileDone) == 0;
    profileMoves_ = moves;
    if (!axis_.Programme().AwaitsEvent()) waitsSince_ = seconds_;
    if (moves && !programme_.IsEndless(step_)) waitsSince_ = seconds_;
    if (!open_) return;
    RehearsedStep& step = result_.steps.back();
    if (moves) step.moved = seconds_ - step.begin;
    step.topSpeed = std::max(step.topSpeed, std::abs(static_cast<double>(Read("NREF"))));
    step.largestError = std::max(step.largestError, std::abs(Read("PER")));
    step.peakTorque = std::max(step.peakTorque, std::abs(Read("TREF")));
  }

  [[nodiscard]] bool WaitsInVain() const {
    return axis_.Programme().AwaitsEvent() && !InputsToCome() &&
           seconds_ - waitsSince_ > order_.patience;
  }

  void LookAtAlarms() {
    const AlarmState& alarm = amplifier_.Amplifier().State().alarm;
    TellOnce(Kind::warning, alarm.warning, warning_);
    TellOnce(Kind::alarm, alarm.error == "0000" ? std::string() : alarm.error, error_);
    TellOnce(Kind::alarm, alarm.current, current_);
    if (!current_.empty()) over_ = true;
  }

  void TellOnce(Kind kind, const std::string& display, std::string& known) {
    if (display == known) return;
    known = display;
    if (display.empty()) return;
    const AlarmNames& names = *gMainForm->Alarm();
    const std::string name =
        display[0] == 'E' ? names.GetErrorName(display) : names.GetAlarmName(display);
    Find(kind, step_, display + (name.empty() ? "" : ", " + name));
  }

  void Tell() {
    const SimulatedAxis& axis = axis_;
    RehearsalSample sample;
    sample.seconds = seconds_;
    sample.step = axis.IsProgrammeRunning() ? step_ : 0;
    sample.position = Read("PUN");
    sample.speed = Read("NFB");
    sample.error = Read("PER");
    sample.torque = Read("TREF");
    sample.outputs = static_cast<std::uint32_t>(Read("OUT2")) >> 1U;
    sample.zone = axis.Zone();
    sink_(sample);
  }

  // min^-1 of the motor, by the table; 0: it has no move.
  [[nodiscard]] double WantedSpeed(int step) const {
    constexpr double kMinute = 60;
    return programme_.WantedSpeed(step) * kMinute / amplifier_.CountsPerTurn();
  }
  [[nodiscard]] std::string SpeedText(double turnsPerMinute) const {
    constexpr double kThousand = 1000;
    const Units& units = programme_.InUnits();
    return units.Shown(turnsPerMinute * amplifier_.CountsPerTurn() / kThousand, UnitKind::speed) +
           " " + units.Word(UnitKind::speed);
  }

  // ---- findings

  void Find(Kind kind, int step, const std::string& words) {
    result_.findings.push_back({kind, seconds_, step, words});
  }

  // Once a step, however often it ran.
  void JudgeSteps() {
    std::set<int> judged;
    for (const RehearsedStep& step : result_.steps) {
      const bool moved = step.wantedSpeed > 0 && step.moved > 0;
      if (!step.ended || !moved || !judged.insert(step.step).second) continue;
      const double dwell = programme_.Dwell(step.step);
      if (dwell > step.moved) {
        FindAt(Kind::dwell, step,
               "its dwell of " + SecondsText(dwell) + " is longer than its move of " +
                   SecondsText(step.moved));
      }
      constexpr double kRounding = 1;  // min^-1
      if (step.topSpeed < step.wantedSpeed - kRounding) {
        FindAt(Kind::speed, step,
               "its speed of " + SpeedText(step.wantedSpeed) +
                   " is never attained: " + SpeedText(step.topSpeed) + " at most");
      }
    }
  }

  void FindAt(Kind kind, const RehearsedStep& step, const std::string& words) {
    result_.findings.push_back({kind, step.end, step.step, words});
  }

  void TellUnreached() {
    std::string steps;
    for (int step = 1; step <= programme_.Steps(); ++step) {
      if (programme_.IsBlank(step) || reached_.contains(step)) continue;
      steps += (steps.empty() ? "" : ", ") + NumberText(step);
    }
    if (!steps.empty()) Find(Kind::unreached, 0, "Never run: " + steps);
  }

  const RehearsalOrder order_;
  const std::function<void(const RehearsalSample&)> sink_;
  const RehearsedProgramme programme_;
  RehearsedAmplifier amplifier_;
  SimulatedAxis& axis_ = amplifier_.Axis();
  RehearsalResult result_;
  Micros now_{0};
  std::int64_t ticks_ = 0;
  double seconds_ = 0;
  std::set<std::size_t> applied_;
  std::int64_t begun_ = 0;
  int step_ = 0;
  std::int64_t repetitions_ = 0;
  bool open_ = false;  // the last of the result's steps is under way
  std::set<int> reached_;
  std::map<int, double> passBegin_;  // of the steps of this pass
  int passes_ = 0;
  bool profileMoves_ = false;
  double waitsSince_ = 0;
  std::string warning_, error_, current_;
  bool over_ = false;
};

Rehearsal::Rehearsal(clsHX7Project& project, RehearsalOrder order,
                     std::function<void(const RehearsalSample&)> sink)
    : run_(std::make_unique<Run>(project, std::move(order), std::move(sink))) {}

Rehearsal::~Rehearsal() = default;

bool Rehearsal::GoOn(double seconds) {
  return run_->GoOn(seconds);
}

RehearsalResult Rehearsal::End() {
  return run_->End();
}

double Rehearsal::Seconds() const {
  return run_->Seconds();
}

const RehearsedProgramme& Rehearsal::Programme() const {
  return run_->Programme();
}

std::string_view WordOf(RehearsalFinding::Kind kind) {
  return std::ranges::find(kKindWords, kind, &KindWord::kind)->word;
}

std::vector<std::string> FindingWords() {
  std::vector<std::string> words;
  for (const KindWord& entry : kKindWords) words.emplace_back(entry.word);
  return words;
}

RehearsalResult Rehearse(clsHX7Project& project, const RehearsalOrder& order,
                         const std::function<void(const RehearsalSample&)>& sink) {
  Rehearsal rehearsal(project, order, sink);
  while (rehearsal.GoOn(1)) continue;
  return rehearsal.End();
}

}  // namespace velmoor
