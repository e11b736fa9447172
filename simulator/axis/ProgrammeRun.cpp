#include "simulator/axis/ProgrammeRun.h"

#include <cmath>

#include "simulator/memory/TableForms.h"

namespace velmoor {
namespace {

enum Field : std::size_t { position, speed, rdst, rspd, pout, event, loop, next };

constexpr const char* kStepMissing = "E300";
constexpr const char* kStepIncomplete = "E301";
constexpr const char* kSpeedIsZero = "E305";
constexpr const char* kRegistrationTooShort = "E121";

double NumberIn(const std::string& text) {
  return static_cast<double>(TableNumber(text));
}

std::string EventWord(const std::string& text) {
  return text.substr(0, text.find('T'));
}

double EventSeconds(const std::string& text) {
  const std::size_t time = text.find('T');
  return time == std::string::npos ? 0 : NumberIn(text.substr(time + 1)) / 1000;
}

bool IsEndless(const std::string& text) {
  return text.ends_with("INFINITE");
}

// Where an absolute move of a rotary axis ends, in counts that run on over the turns.
double RotaryTarget(const AxisSettings& settings, double from, double to) {
  const double turn = settings.Modulus();
  const double forward = std::fmod(std::fmod(std::abs(to) - from, turn) + turn, turn);
  const double backward = forward == 0 ? 0 : forward - turn;
  switch (settings.kind) {
    case AxisKind::forwardOnly:
      return from + forward;
    case AxisKind::reverseOnly:
      return from + backward;
    case AxisKind::signedPath:
      return from + (to < 0 ? backward : forward);
    default:
      return from + (forward <= -backward ? forward : backward);
  }
}

}  // namespace

void ProgrammeRun::Start(std::size_t row) {
  if (!halted_) {
    row_ = row;
    repetitions_ = 0;
    phase_ = Phase::atStep;
  } else if (phase_ == Phase::waitsForEvent) {
    // The move that the halt cut short begins once more.
    phase_ = Phase::atStep;
  }
  halted_ = false;
}

void ProgrammeRun::Halt(MotionProfile& profile) {
  if (!IsRunning()) return;
  halted_ = true;
  profile.Stop();
}

void ProgrammeRun::Reset() {
  phase_ = Phase::idle;
  halted_ = false;
  registrationArmed_ = false;
  row_ = 0;
}

std::string ProgrammeRun::Step(double seconds, const ProgrammeSurroundings& axis) {
  if (!IsRunning() || halted_) return {};
  std::string fault;
  if (registrationArmed_ && axis.registered) fault = FollowRegistration(axis);
  if (fault.empty()) {
    switch (phase_) {
      case Phase::idle:
        break;
      case Phase::atStep:
        fault = BeginStep(axis);
        break;
      case Phase::waitsForEvent:
        if (EventHasCome(axis)) {
          phase_ = Phase::waitsForTime;
          waited_ = 0;
        }
        break;
      case Phase::waitsForTime:
        waited_ += seconds;
        if (waited_ >= EventSeconds(axis.table[row_][Field::event])) fault = EndStep(axis);
        break;
    }
  }
  if (!fault.empty()) Reset();
  return fault;
}

std::string ProgrammeRun::BeginStep(const ProgrammeSurroundings& axis) {
  const auto& row = axis.table[row_];
  if (row[Field::position].empty()) return kStepMissing;
  for (const std::size_t needed : {Field::speed, Field::pout, Field::loop, Field::next}) {
    if (row[needed].empty()) return kStepIncomplete;
  }
  for (std::size_t i = 0; i < outputs_.size() && i < row[Field::pout].size(); ++i) {
    if (row[Field::pout][i] != ':') outputs_[i] = row[Field::pout][i];
  }
  const std::string word = EventWord(row[Field::event]);
  if (word != ":") event_ = word;
  registrationArmed_ = !row[Field::rdst].empty() && row[Field::rdst] != "-";
  followsRegistration_ = false;
  phase_ = Phase::waitsForEvent;
  ++stepsBegun_;
  return BeginMove(axis, row[Field::position], CountsPerSecond(NumberIn(row[Field::speed])));
}

std::string ProgrammeRun::BeginMove(const ProgrammeSurroundings& axis, const std::string& text,
                                    double speedOfStep) {
  MotionProfile& profile = axis.profile;
  if (text == "-") return {};
  if (text == "STOP") {
    profile.Stop();
    return {};
  }
  if (speedOfStep <= 0) return kSpeedIsZero;
  if (IsEndless(text)) {
    profile.Run(text[0] == '-' ? -speedOfStep : speedOfStep);
    return {};
  }
  const double number = NumberIn(text.substr(1));
  // A relative move begins where the one before ends.
  double target = profile.Target() + number;
  if (text[0] == 'A') {
    target = axis.settings.kind == AxisKind::linear
                 ? number
                 : RotaryTarget(axis.settings, profile.Target(), number);
  }
  profile.MoveTo(target, speedOfStep);
  return {};
}

// The move now ends at its distance behind the signal.
std::string ProgrammeRun::FollowRegistration(const ProgrammeSurroundings& axis) {
  registrationArmed_ = false;
  MotionProfile& profile = axis.profile;
  if (profile.IsDone()) return {};
  const double direction = profile.GoesBackward() ? -1 : 1;
  registrationPosition_ = axis.position;
  followsRegistration_ = true;
  const auto& row = axis.table[row_];
  const double target = axis.position + direction * NumberIn(row[Field::rdst]);
  const double overrun = direction * (profile.StoppingPoint(axis.settings.rates) - target);
  profile.MoveTo(target, CountsPerSecond(NumberIn(row[Field::rspd])));
  return overrun > 0 ? kRegistrationTooShort : std::string();
}

bool ProgrammeRun::EventHasCome(const ProgrammeSurroundings& axis) const {
  if (event_ == "I") return axis.inPosition;
  if (event_ == "N") return axis.near;
  if (event_ == "D") return axis.profile.IsDone();
  if (event_.starts_with("SEL") && event_.size() == 4) {
    return ((axis.selection >> static_cast<unsigned>(event_[3] - '0')) & 1U) != 0;
  }
  return true;
}

std::string ProgrammeRun::EndStep(const ProgrammeSurroundings& axis) {
  const auto& row = axis.table[row_];
  phase_ = Phase::atStep;
  if (++repetitions_ < TableNumber(row[Field::loop])) return {};
  repetitions_ = 0;
  if (row[Field::next] == "END") {
    Reset();
    return {};
  }
  row_ = static_cast<std::size_t>(TableNumber(row[Field::next]));
  return {};
}

}  // namespace velmoor
