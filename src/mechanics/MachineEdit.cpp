#include "mechanics/MachineEdit.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/data/MachineUnits.h"
#include "project/data/UnitConversion.h"

namespace velmoor {
namespace {

constexpr const char* kWillBeRestored = "\rPrevious value will be restored!";
constexpr const char* kRestoreQuestion = "\rRestore previous value?";
constexpr const char* kMostMeasure = "1E+16";
constexpr std::array<const char*, 5> kUnitRows{"Pn81E", "Pn81F", "Pn820", "Pn821", "Pn822"};

MachineCheck Restore(const std::string& words) {
  return {MachineCheck::Kind::restore, words + kWillBeRestored};
}

MachineCheck Ask(const std::string& words) {
  return {MachineCheck::Kind::ask, words + kRestoreQuestion};
}

std::string OutOfRange(const std::string& text, const std::string& low, const std::string& high) {
  return "The value " + text + " is out of the allowable range!\rValue must range from " + low +
         " to " + high + ".";
}

// The index of the word in the list that `wordAt` tells, or nothing.
template <typename WordAt>
std::optional<std::int32_t> IndexOfWord(const std::string& word, std::int32_t count,
                                        WordAt wordAt) {
  for (std::int32_t index = 0; index < count; ++index) {
    if (wordAt(index) == word) return index;
  }
  return std::nullopt;
}

}  // namespace

MachineEdit::MachineEdit(const ParameterStore& store) : store_(store) {}

// ---- what is derived

MachineDescription MachineEdit::Description() const {
  MachineDescription description = DescribeMachine(store_);
  Machine& machine = description.machine;
  machine.system = typed_.system.value_or(machine.system);
  machine.encoderCount = typed_.encoderCount.value_or(machine.encoderCount);
  machine.length = typed_.length.value_or(machine.length);
  machine.n1 = typed_.n1.value_or(machine.n1);
  machine.n2 = typed_.n2.value_or(machine.n2);
  description.distanceUnits = typed_.distanceUnits.value_or(description.distanceUnits);
  description.timeUnits = typed_.timeUnits.value_or(description.timeUnits);
  machine.resolution = typed_.resolution.value_or(machine.resolution);
  if (!typed_.resolutionStands && (typed_.system || typed_.encoderCount)) {
    // A resolution outside its range takes the high limit, whichever side it fell on.
    std::int16_t low = 0, high = 0;
    std::string ignored;
    const bool ranged = GetResolutionRange(machine, low, high, ignored);
    const bool fits = machine.resolution >= low && machine.resolution <= high;
    if (ranged && !fits) machine.resolution = high;
  }
  return description;
}

GearRatio MachineEdit::Ratio() const {
  GearRatio ratio = StoredRatio(store_);
  std::string ignored;
  if (typed_.gear) (void)IsGearRatioValid(Description().machine, ratio, ignored);
  return ratio;
}

MachineChange MachineEdit::Wanted() const {
  return {Description(), Ratio(), typed_.properties};
}

const ParameterStep& MachineEdit::Change() const {
  if (!step_ || storeRevision_ != store_.Revision()) {
    step_ = StepParameters(store_, Wanted());
    storeRevision_ = store_.Revision();
  }
  return *step_;
}

std::string MachineEdit::WholeFault() const {
  const MachineDescription description = Description();
  GearRatio ratio;
  std::string strError;
  if (!IsGearRatioValid(description.machine, ratio, strError)) {
    return strError.empty() ? "Gear Ratio is not valid!  Please modify values." : strError;
  }
  return description.UnitFault();
}

MachineFigures MachineEdit::Figures() const {
  const MachineDescription description = Description();
  const Machine& machine = description.machine;
  const Units units = description.ShownUnits();
  MachineFigures figures;
  figures.reason = WholeFault();
  figures.valid = figures.reason.empty();
  std::string ignored;
  (void)IsGearRatioValid(machine, figures.ratio, ignored);
  if (machine.n2 != 0) {
    figures.travelPerMotorTurn = FeedConstantOf(machine) * machine.n1 / machine.n2;
  }
  figures.countsPerUnit = units.Factor(UnitKind::distance);
  figures.smallestStep = 1 / figures.countsPerUnit;
  figures.topSpeed = kMostCounts / units.Factor(UnitKind::speed);
  if (const Parameter* const limit = store_.Find("Pn30D")) {
    figures.motorSpeed = Int32FromCell(limit->controller);
  }
  // Time units a minute; the limit counts turns a minute.
  figures.reachedSpeed = figures.motorSpeed * figures.travelPerMotorTurn / units.factors[3];
  figures.hasRange =
      GetResolutionRange(machine, figures.lowestResolution, figures.highestResolution, ignored);
  return figures;
}

// ---- cells

MachineCheck MachineEdit::SetValue(const std::string& name, const std::string& text) {
  if (FindRow(name) == 0) return Restore("There is no value " + name + "!");
  const bool wasValid = WholeFault().empty();
  const Typed before = typed_;
  MachineCheck check;
  if (name == "Pn82B" || name == "Pn82C" || name == "Pn82D") {
    check = SetWhole(name, text);
  } else if (name == "Pn82F.0") {
    check = SetMeasure(text);
  } else if (name == "Pn82E.0") {
    check = SetDistanceUnits(text);
  } else if (name == "Pn82E.1") {
    check = SetTimeUnits(text);
  } else if (UnitKindOf(name)) {
    check = SetInUnits(name, text);
  } else {
    check = Restore("The value " + name + " follows from the others!");
  }
  if (!check.Accepted()) return check;
  before_ = before;
  step_.reset();
  return JudgeWhole(wasValid);
}

MachineCheck MachineEdit::JudgeWhole(bool wasValid) const {
  const std::string fault = WholeFault();
  if (fault.empty() || !wasValid) return {};
  return {MachineCheck::Kind::whole, fault + kRestoreQuestion};
}

void MachineEdit::TakeBack() {
  typed_ = before_;
  step_.reset();
}

MachineCheck MachineEdit::SetWhole(const std::string& name, const std::string& text) {
  std::string strError;
  if (!IsWholeNumberText(text, strError)) return Restore(strError);
  const ValueLimits limits = LimitsOf(store_.Get(name));
  const auto number = ParseWhole(text);
  if (!number || *number < limits.low || *number > limits.high) {
    return Ask(OutOfRange(text, NumberText(limits.low), NumberText(limits.high)));
  }
  auto& place = name == "Pn82B" ? typed_.n1 : name == "Pn82C" ? typed_.n2 : typed_.resolution;
  place = static_cast<std::int16_t>(*number);
  if (name == "Pn82D") typed_.resolutionStands = true;
  typed_.gear = true;
  return {};
}

MachineCheck MachineEdit::SetMeasure(const std::string& text) {
  const auto number = ParseFloat(text);
  if (!number || !IsPositiveFloatText(text)) return Restore("Please enter a positive float value.");
  if (*number > *ParseFloat(kMostMeasure)) return Ask(OutOfRange(text, "0", kMostMeasure));
  if (text == MeasureText()) return {};
  typed_.length = static_cast<float>(*number);
  typed_.gear = true;
  return {};
}

MachineCheck MachineEdit::SetInUnits(const std::string& name, const std::string& text) {
  std::string strError;
  if (!IsFloatText(text, strError)) return Restore(strError);
  const Parameter& parameter = store_.Get(name);
  const Units units = Description().ShownUnits();
  const std::string rounded = RoundTextToDigits(text, units.resolution);
  const MeantValue meant = ValueMeant(parameter, rounded, units);
  if (!meant.valid || meant.limited) {
    const double factor = units.Factor(*parameter.unit);
    const ValueLimits limits = LimitsOf(parameter);
    return Ask(OutOfRange(text, NumberText(limits.low / factor), NumberText(limits.high / factor)));
  }
  // What the row shows already is no edit.
  if (rounded != Value(name)) typed_.properties[name] = rounded;
  return {};
}

// ---- units

MachineCheck MachineEdit::SetDistanceUnits(const std::string& word) {
  if (!IndexOfWord(word, 6, DistanceUnitsFromIndex)) {
    return Restore("'" + word + "' is none of the units!");
  }
  typed_.distanceUnits = word;
  return {};
}

MachineCheck MachineEdit::SetTimeUnits(const std::string& word) {
  if (!IndexOfWord(word, 2, TimeUnitsFromIndex)) {
    return Restore("'" + word + "' is none of the units!");
  }
  typed_.timeUnits = word;
  return {};
}

// ---- system and encoder

MachineCheck MachineEdit::SetSystem(std::int32_t index) {
  if (MechanicalSystemFromIndex(index).empty() || index == Description().machine.system) return {};
  before_ = typed_;
  typed_.system = index;
  return AfterChoice();
}

MachineCheck MachineEdit::SetEncoder(std::int32_t index) {
  const std::int32_t count = EncoderCountFromIndex(index);
  if (count == Description().machine.encoderCount) return {};
  before_ = typed_;
  typed_.encoderCount = count;
  return AfterChoice();
}

MachineCheck MachineEdit::AfterChoice() {
  typed_.gear = true;
  typed_.resolutionStands = false;
  step_.reset();
  GearRatio ratio;
  std::string strError;
  if (IsGearRatioValid(Description().machine, ratio, strError)) return {};
  return {MachineCheck::Kind::restore,
          "Electronic gear ratio values are invalid!\r"
          "Please modify the mechanical system properties to obtain valid values."};
}

std::string MachineEdit::NewlyCorrected() {
  const ParameterStep& step = Change();
  std::string corrected;
  for (const char* const name : kUnitRows) {
    if (step.limited.contains(name) && named_.insert(name).second) {
      corrected += (corrected.empty() ? "" : ", ") + Text(FindRow(name), Column::description);
    }
  }
  if (corrected.empty()) return {};
  return "The following properties were out of range and have been corrected:\r" + corrected +
         "\r\rPlease check values before proceeding.";
}

// ---- commit

bool MachineEdit::EGRDirty() const {
  const GearRatio stored = StoredRatio(store_);
  const GearRatio ratio = Ratio();
  return ratio.a != stored.a || ratio.b != stored.b;
}

bool MachineEdit::ResolutionDirty() const {
  return Description().machine.resolution != store_.PresentUnits().resolution;
}

bool MachineEdit::SystemDirty() const {
  return Description().machine.system != DescribeMachine(store_).machine.system;
}

std::string MachineEdit::CommitQuestion() const {
  if (ResolutionDirty() && SystemDirty()) {
    return "Programming resolution and mechanical system have been changed!\r\r"
           "Accepting change would invalidate existing Index Table and Zone Table!\r"
           "Also, existing parameters of numeric values may no longer be valid!\r"
           "(Pn81B-Pn81D and Pn825-Pn828 may no longer be within allowable ranges.)\r\r"
           "Do you wish to accept the change?";
  }
  if (EGRDirty() && !ResolutionDirty()) {
    return "Electronic gear ratio has been changed!\r\r"
           "Existing Index Table entries, Zone Table entries, and\r"
           "Over Travel switch settings may no longer be valid!\r"
           "Please review aforementioned values if changes are accepted.\r\r"
           "Do you wish to accept the change?";
  }
  return {};
}

std::string MachineEdit::CommitInformation() const {
  if (!ResolutionDirty() || SystemDirty()) return {};
  return "Programming resolution has been changed!\r\r"
         "All values have been updated to the new resolution.\r"
         "Please review values to check if changes are acceptable.";
}

}  // namespace velmoor
