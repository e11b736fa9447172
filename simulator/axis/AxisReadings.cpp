// What the axis tells: positions, speeds, lines and states, as the value words ask for them.

#include <algorithm>
#include <cmath>

#include "simulator/axis/SimulatedAxis.h"
#include "simulator/memory/TableForms.h"

namespace velmoor {
namespace {

constexpr double kMostCounts = 99999999;

std::int32_t Whole(double value) {
  return static_cast<std::int32_t>(std::lround(std::clamp(value, -kMostCounts, kMostCounts)));
}

// The first zone that holds the position; 0 outside of all.
std::uint32_t ZoneAt(const ZoneTable& zones, double position) {
  for (std::size_t i = 0; i < zones.size(); ++i) {
    const std::string& lower = zones[i][0];
    const std::string& upper = zones[i][1];
    if (lower.empty() || upper.empty()) continue;
    if (position >= static_cast<double>(TableNumber(lower)) &&
        position <= static_cast<double>(TableNumber(upper))) {
      return static_cast<std::uint32_t>(i);
    }
  }
  return 0;
}

}  // namespace

std::string SimulatedAxis::StateText() const {
  if (!alarm_.current.empty()) return alarm_.current;
  if (inputs_.forwardEnd) return "P-OT";
  if (inputs_.reverseEnd) return "N-OT";
  if (!alarm_.warning.empty()) return alarm_.warning;
  if (!servoOn_) return "BB";
  return inPosition_ ? "INPOS" : "RUN";
}

// A rotary axis repeats with every turn.
double SimulatedAxis::Shown(double counts) const {
  if (settings_.kind == AxisKind::linear) return counts;
  const double turn = settings_.Modulus();
  const double rest = std::fmod(std::round(counts), turn);
  return rest < 0 ? rest + turn : rest;
}

AxisOutputs SimulatedAxis::Outputs() const {
  AxisOutputs outputs;
  outputs.alarm = !alarm_.current.empty();
  outputs.warning = !alarm_.warning.empty();
  outputs.brakeReleased = servoOn_;
  outputs.ready = alarm_.current.empty();
  outputs.inPosition = inPosition_;
  outputs.zone = ZoneAt(memory_.zones.working, Shown(Actual()));
  for (std::size_t i = 0; i < outputs.programme.size(); ++i) {
    const char state = programme_.Output(i);
    outputs.programme[i] = state == 'Z' ? ((outputs.zone >> i) & 1U) != 0 : state == 'A';
  }
  return outputs;
}

std::uint32_t SimulatedAxis::Status() const {
  const bool flags[] = {inPosition_,
                        near_,
                        servoOn_ && profile_.IsDone(),
                        programme_.IsHalted(),
                        IsProgrammeRunning(),
                        plant_.IsTorqueLimited(),
                        true};  // the main supply is always there
  std::uint32_t bits = 0;
  std::uint32_t bit = 1;
  for (const bool flag : flags) {
    if (flag) bits |= bit;
    bit <<= 1;
  }
  return bits;
}

std::optional<std::int32_t> SimulatedAxis::Value(std::string_view word) const {
  const double toRpm = 60 / settings_.countsPerTurn;
  if (word == "PUN") return Whole(Shown(Actual()));
  if (word == "PFB") return Whole(Actual());
  if (word == "PER") return Whole(PositionError());
  if (word == "POS") return Whole(Shown(profile_.Target()));
  if (word == "DST") return profile_.IsEndless() ? 0 : Whole(profile_.Target() - Actual());
  if (word == "RPOS") return Whole(Shown(programme_.RegistrationPosition()));
  if (word == "RDST") {
    return programme_.FollowsRegistration() ? Whole(profile_.Target() - Actual()) : 0;
  }
  if (word == "NFB") return Whole(plant_.Speed() * 60);
  if (word == "NREF") return Whole(profile_.Speed() * toRpm);
  if (word == "TREF") return Whole(plant_.Torque() * 100);
  if (word == "STS") return static_cast<std::int32_t>(Status());
  if (word == "INERTIA") return Whole(load_.inertiaRatio * 100);
  if (word == "IN1") return static_cast<std::int32_t>(Lines().amplifier);
  if (word == "IN2") return static_cast<std::int32_t>(Lines().card);
  if (word == "OUT1") {
    return static_cast<std::int32_t>(AmplifierOutputs(memory_.parameters, Outputs()));
  }
  if (word == "OUT2") return static_cast<std::int32_t>(CardOutputs(memory_.parameters, Outputs()));
  return std::nullopt;
}

}  // namespace velmoor
