#include "operations/MotorJudgement.h"

#include <cmath>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/clsHX7Project.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

constexpr std::uint32_t kNewFirmware = 3;
constexpr std::size_t kNamed = 4;

// ---- the encoder

// "16", "2.50".
std::string TimesText(double times) {
  const double whole = std::round(times);
  return std::abs(times - whole) < 1e-6 ? FixedText(whole, 0) : FixedText(times, 2);
}

std::string RatioText(const GearRatio& ratio) {
  return "B/A = " + NumberText(ratio.b) + "/" + NumberText(ratio.a);
}

// How many times too short a move is: what the gear ratio should be with that motor, over what it
// is. Where the machine allows no ratio with it, that of the lines.
double ShortBy(const Machine& described, const GearRatio& present, std::int32_t lines) {
  Machine machine = described;
  machine.encoderCount = lines;
  GearRatio fitting;
  std::string ignored;
  if (present.a <= 0 || present.b <= 0 || !IsGearRatioValid(machine, fitting, ignored)) {
    return static_cast<double>(lines) / described.encoderCount;
  }
  return (static_cast<double>(fitting.b) / fitting.a) /
         (static_cast<double>(present.b) / present.a);
}

void JudgeEncoder(clsHX7Project& project, const MotorFacts& facts, MotorJudgement& judgement) {
  const Machine machine = project.MechanicalSystem().Description().machine;
  const bool described = machine.length != 0.0F && machine.n1 != 0 && machine.n2 != 0;
  if (facts.encoderLines <= 0 || !described || machine.encoderCount == facts.encoderLines) return;
  const std::string counts = "the project says " + NumberText(machine.encoderCount) +
                             " lines, the motor has " + NumberText(facts.encoderLines) + ".";
  const GearRatio present = StoredRatio(project.Parameters());
  const double times = ShortBy(machine, present, facts.encoderLines);
  constexpr double kSame = 1e-4;
  std::string words = "Encoder: ";
  if (std::abs(times - 1) < kSame) {
    words += counts + "  The gear ratio, " + RatioText(present) + ", fits the motor all the same.";
  } else {
    words += "every move would be " + TimesText(times > 1 ? times : 1 / times) + " times too " +
             (times > 1 ? "short: " : "long: ") + counts;
  }
  judgement.encoderIndex = EncoderIndexOf(facts.encoderLines);
  if (judgement.encoderIndex < 0) words += "  The machine's list of encoders does not hold it.";
  judgement.differences.push_back(words);
}

// ---- the rated power

bool IsOutside(const Parameter& parameter, const ParameterLimits& limits) {
  const bool counts = parameter.form == ValueForm::number || parameter.form == ValueForm::units;
  if (!counts || !parameter.recorded || parameter.blank || IsNeverSent(parameter.Pn()))
    return false;
  const auto value = ParseWhole(parameter.controller);
  const auto low = ParseWhole(limits.min);
  const auto high = ParseWhole(limits.max);
  return value && low && high && (*value < *low || *value > *high);
}

// "Pn100 = 1500 (1 to 1000)" of each that lies outside.
std::vector<std::string> OutsideOf(const ParameterStore& store, const MotorLimits& limits) {
  std::vector<std::string> outside;
  for (int place = 0; place < store.Count(); ++place) {
    const Parameter& parameter = store.At(place);
    const auto own = limits.find(parameter.Pn());
    if (own == limits.end() || !IsOutside(parameter, own->second)) continue;
    outside.push_back(parameter.Pn() + " = " + parameter.controller + " (" + own->second.min +
                      " to " + own->second.max + ")");
  }
  return outside;
}

std::string Listed(const std::vector<std::string>& items) {
  std::string text;
  for (std::size_t i = 0; i < items.size() && i < kNamed; ++i) {
    text += (i > 0 ? ", " : "") + items[i];
  }
  if (items.size() > kNamed) text += " and " + NumberText(items.size() - kNamed) + " more";
  return text;
}

void JudgePower(const clsHX7Project& project, const MotorFacts& facts, MotorJudgement& judgement) {
  const std::string watts = CheckedMotorSize(facts.watts);
  const std::string& planned = project.MotorSize();
  if (watts.empty() || watts == planned) return;
  const std::vector<std::string> outside =
      OutsideOf(project.Parameters(), ReadMotorLimits(Int32FromText(watts)));
  judgement.outside = !outside.empty();
  // A project that tells no size is for any motor whose limits it keeps.
  if (planned.empty() && outside.empty()) return;
  std::string words = planned.empty() ? "Rated power: the motor has " + watts + " W.  "
                                      : "Rated power: the project is for a motor of " + planned +
                                            " W, this one has " + watts + " W.  ";
  if (outside.empty()) {
    words += "All values lie within its limits, but gains and torques were chosen for another one.";
  } else {
    words += NumberText(outside.size()) + (outside.size() == 1 ? " value lies" : " values lie") +
             " outside of its limits: " + Listed(outside) + ".";
  }
  judgement.watts = watts;
  judgement.differences.push_back(words);
}

// ---- the option card

void JudgeFirmware(clsHX7Project& project, const MotorFacts& facts, MotorJudgement& judgement) {
  const auto version = ParseHex(facts.firmware);
  if (!version || *version >= kNewFirmware) return;
  std::string words;
  const int steps = project.Position().StepsWithNewEvents();
  if (steps > 0) {
    words += "  " + NumberText(steps) + (steps == 1 ? " step waits" : " steps wait") +
             " for SEL5 or SEL6, which it does not know: the index table will not be downloaded.";
  }
  for (int place = 0; place < project.Parameters().Count(); ++place) {
    const Parameter& parameter = project.Parameters().At(place);
    if (!NeedsNewOptionVersion(parameter.Pn())) continue;
    if (parameter.controller == parameter.definition.initial_value) continue;
    words += "  It does not have " + parameter.Pn() + ", which stays on offer.";
  }
  if (words.empty()) return;
  judgement.differences.push_back("Option card: its firmware is " + NumberText(*version) +
                                  ", and the project needs " + NumberText(kNewFirmware) + "." +
                                  words);
}

}  // namespace

MotorJudgement Judge(clsHX7Project& project, const MotorFacts& facts) {
  MotorJudgement judgement;
  JudgeEncoder(project, facts, judgement);
  JudgePower(project, facts, judgement);
  JudgeFirmware(project, facts, judgement);
  return judgement;
}

}  // namespace velmoor
