#include "mechanics/MachineEdit.h"

#include <algorithm>
#include <array>
#include <optional>

#include "mechanics/MachineUnits.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "session/Project.h"
#include "tools/UnitConversion.h"

namespace velmoor {
namespace {

constexpr const char* kWillBeRestored = "\rPrevious value will be restored!";
constexpr const char* kRestoreQuestion = "\rRestore previous value?";
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

std::size_t FactorIndex(UnitKind kind) {
  return static_cast<std::size_t>(kind);
}

}  // namespace

MachineEdit::MachineEdit(const clsHX7MechanicalSystem& machine)
    : rows_(machine.Rows()),
      machine_(machine.Description()),
      original_(machine_),
      distanceUnits_(machine.DistanceUnits()),
      timeUnits_(machine.TimeUnits()),
      originalTimeUnits_(timeUnits_) {
  factors_[3] = 60;
  UpdateConversionFactors(factors_, timeUnits_, machine_.resolution);
  // Only what is edited from here on goes to the file and counts as changed.
  rows_.ClearTouched();
}

std::string MachineEdit::Value(const char* name) const {
  const int row = rows_.FindRow(name);
  return row > 0 ? rows_.Text(row, Column::value) : std::string();
}

void MachineEdit::Put(const char* name, const std::string& value) {
  const int row = rows_.FindRow(name);
  if (row == 0 || rows_.Text(row, Column::value) == value) return;
  rows_.Set(row, Column::value, value);
  rows_.Set(row, Column::dirty, "1");
  dirty_ = true;
}

MachineFigures MachineEdit::Figures() const {
  MachineFigures figures;
  figures.valid = IsGearRatioValid(machine_, figures.ratio, figures.reason);
  if (machine_.n2 != 0) {
    figures.travelPerMotorTurn = FeedConstantOf(machine_) * machine_.n1 / machine_.n2;
  }
  figures.countsPerUnit = factors_[0];
  figures.smallestStep = 1 / factors_[0];
  figures.topSpeed = kMostCounts / factors_[1];
  std::string ignored;
  figures.hasRange =
      GetResolutionRange(machine_, figures.lowestResolution, figures.highestResolution, ignored);
  return figures;
}

// ---- cells

MachineCheck MachineEdit::SetValue(const std::string& name, const std::string& text) {
  const int row = rows_.FindRow(name);
  if (row == 0) return Restore("There is no value " + name + "!");
  if (text == rows_.Text(row, Column::value)) return {};
  if (name == "Pn82B" || name == "Pn82C" || name == "Pn82D") return SetWhole(name, text);
  if (name == "Pn82F.0") return SetMeasure(text);
  if (name == "Pn82E.0") return SetDistanceUnits(text);
  if (name == "Pn82E.1") return SetTimeUnits(text);
  if (UnitKindOf(name)) return SetInUnits(row, text);
  return Restore("The value " + name + " follows from the others!");
}

MachineCheck MachineEdit::SetWhole(const std::string& name, const std::string& text) {
  std::string strError;
  if (!IsWholeNumberText(text, strError)) return Restore(strError);
  const int row = rows_.FindRow(name);
  const std::string& low = rows_.Text(row, Column::minimum);
  const std::string& high = rows_.Text(row, Column::maximum);
  const auto number = ParseWhole(text);
  if (!number || *number < Int32FromCell(low) || *number > Int32FromCell(high)) {
    return Ask(OutOfRange(text, low, high));
  }
  const auto value = static_cast<std::int16_t>(*number);
  Machine candidate = machine_;
  (name == "Pn82B" ? candidate.n1 : name == "Pn82C" ? candidate.n2 : candidate.resolution) = value;
  GearRatio ratio;
  MachineCheck gear = CheckGear(candidate, ratio);
  if (!gear.Accepted()) return gear;
  machine_ = candidate;
  Put(name.c_str(), NumberText(value));
  SetEGR(ratio);
  if (name == "Pn82D") UpdateValuesWithResolution();
  return {};
}

MachineCheck MachineEdit::SetMeasure(const std::string& text) {
  if (!IsPositiveFloatText(text)) return Restore("Please enter a positive float value.");
  const double number = ParseFloat(text).value_or(0);
  const std::string& high = rows_.Text(rows_.FindRow("Pn82F.0"), Column::maximum);
  if (number > ParseFloat(high).value_or(0)) return Ask(OutOfRange(text, "0", high));
  Machine candidate = machine_;
  candidate.length = static_cast<float>(number);
  GearRatio ratio;
  MachineCheck gear = CheckGear(candidate, ratio);
  if (!gear.Accepted()) return gear;
  machine_ = candidate;
  Put("Pn82F.0", NumberText(machine_.length));
  UpdateMeasure();
  SetEGR(ratio);
  return {};
}

MachineCheck MachineEdit::SetInUnits(int row, const std::string& text) {
  std::string strError;
  if (!IsFloatText(text, strError)) return Restore(strError);
  const std::string name = rows_.Text(row, Column::name);
  const auto [low, high] = LimitsInUnits(row);
  const double value = ParseFloat(text).value_or(0);
  if (value < low || value > high) {
    return Ask(OutOfRange(text, NumberText(low), NumberText(high)));
  }
  Put(name.c_str(), RoundTextToDigits(text, machine_.resolution));
  return {};
}

MachineCheck MachineEdit::CheckGear(const Machine& candidate, GearRatio& ratio) {
  std::string strError;
  if (IsGearRatioValid(candidate, ratio, strError)) return {};
  return Ask(strError.empty() ? "Gear Ratio is not valid!  Please modify values." : strError);
}

// ---- units

MachineCheck MachineEdit::SetDistanceUnits(const std::string& word) {
  const auto index = IndexOfWord(word, 6, DistanceUnitsFromIndex);
  if (!index) return Restore("'" + word + "' is none of the units!");
  const std::string before = distanceUnits_;
  distanceUnits_ = word;
  MachineCheck fits = ValidateUnits();
  if (!fits.Accepted()) {
    distanceUnits_ = before;
    return fits;
  }
  PutDigit(0, *index, "Pn82E.0", word);
  UpdateUnits();
  return {};
}

MachineCheck MachineEdit::SetTimeUnits(const std::string& word) {
  const auto index = IndexOfWord(word, 2, TimeUnitsFromIndex);
  if (!index) return Restore("'" + word + "' is none of the units!");
  timeUnits_ = word;
  PutDigit(1, *index, "Pn82E.1", word);
  UpdateUnits();
  MarkUnitRows();
  return {};
}

MachineCheck MachineEdit::ValidateUnits() const {
  const bool rotaryUnits = distanceUnits_ == "deg" || distanceUnits_ == "rad";
  if (machine_.system >= 0 && machine_.system <= 2 && rotaryUnits) {
    return Restore("Selected system cannot have rotary units!");
  }
  if (machine_.system == kRotaryTable && !rotaryUnits) {
    return Restore("Selected system cannot have linear units!");
  }
  return {};
}

// Writes a digit of Pn82E with the view row that shows it.
void MachineEdit::PutDigit(int digit, std::int32_t index, const char* viewRow,
                           const std::string& word) {
  std::string bits = PadToDigits(Right(Value("Pn82E"), 4), 4);
  bits[bits.size() - 1 - static_cast<std::size_t>(digit)] =
      HexText(static_cast<std::uint32_t>(index)).front();
  Put("Pn82E", bits);
  Put(viewRow, word);
}

// The factors and the words beside the values follow.
void MachineEdit::UpdateUnits() {
  UpdateConversionFactors(factors_, timeUnits_, machine_.resolution);
  for (int row = 1; row <= rows_.Rows(); ++row) {
    const std::string& name = rows_.Text(row, Column::name);
    const auto kind = name == "Pn82F.0" ? UnitKind::distance : UnitKindOf(name);
    if (!kind) continue;
    const std::string word = *kind == UnitKind::distance ? distanceUnits_
                             : *kind == UnitKind::speed
                                 ? SpeedUnitsOf(distanceUnits_, timeUnits_)
                                 : AccelerationUnitsOf(distanceUnits_, timeUnits_);
    rows_.Set(row, Column::unit, word);
  }
}

// The numbers stay and their counts change: they have to go out again.
void MachineEdit::MarkUnitRows() {
  for (const char* name : kUnitRows) {
    const int row = rows_.FindRow(name);
    if (row > 0) rows_.Set(row, Column::dirty, "1");
  }
  dirty_ = true;
}

// ---- system, encoder, resolution

MachineCheck MachineEdit::SetSystem(std::int32_t index) {
  if (MechanicalSystemFromIndex(index).empty() || index == machine_.system) return {};
  machine_.system = index;
  PutDigit(2, index, "Pn82E.2", MechanicalSystemFromIndex(index));
  const int row = rows_.FindRow("Pn82F.0");
  if (row > 0) rows_.Set(row, Column::description, SystemMeasureDescription(index));
  return AfterChoice();
}

MachineCheck MachineEdit::SetEncoder(std::int32_t index) {
  const std::int32_t count = EncoderCountFromIndex(index);
  if (count == machine_.encoderCount) return {};
  machine_.encoderCount = count;
  PutDigit(3, index, "Pn82E.3", NumberText(count));
  return AfterChoice();
}

MachineCheck MachineEdit::AfterChoice() {
  ValidateResolution();
  GearRatio ratio;
  std::string strError;
  if (!IsGearRatioValid(machine_, ratio, strError)) {
    return {MachineCheck::Kind::restore,
            "Electronic gear ratio values are invalid!\r"
            "Please modify the mechanical system properties to obtain valid values."};
  }
  SetEGR(ratio);
  return {};
}

// A resolution outside its range takes the high limit, whichever side it fell on.
void MachineEdit::ValidateResolution() {
  std::int16_t low = 0, high = 0;
  std::string strError;
  if (!GetResolutionRange(machine_, low, high, strError)) return;
  if (machine_.resolution >= low && machine_.resolution <= high) return;
  machine_.resolution = high;
  Put("Pn82D", NumberText(high));
  UpdateValuesWithResolution();
}

void MachineEdit::UpdateValuesWithResolution() {
  UpdateUnits();
  for (const char* name : kUnitRows) {
    const std::string value = Value(name);
    if (!value.empty()) Put(name, RoundTextToDigits(value, machine_.resolution));
  }
  MarkUnitRows();
  // The measure takes the new places too, unless rounding would describe another machine.
  const std::string measure = RoundTextToDigits(Value("Pn82F.0"), machine_.resolution);
  const bool same = static_cast<float>(ParseFloat(measure).value_or(0)) == machine_.length;
  const int row = rows_.FindRow("Pn82F.0");
  if (same && row > 0) rows_.Set(row, Column::value, measure);
}

void MachineEdit::SetEGR(const GearRatio& ratio) {
  const std::string a = NumberText(ratio.a);
  const std::string b = NumberText(ratio.b);
  if (Value("Pn203") == a && Value("Pn202") == b) return;
  Put("Pn203", a);
  Put("Pn202", b);
  egrDirty_ = true;
}

void MachineEdit::UpdateMeasure() {
  const std::string digits = world().rx900Utils->FloatToDec(machine_.length);
  Put("Pn82F", Left(digits, 8));
  Put("Pn830", Right(digits, 8));
}

std::string MachineEdit::ValidateProperties() {
  std::string corrected;
  for (const char* name : kUnitRows) {
    const int row = rows_.FindRow(name);
    if (row == 0) continue;
    const auto [low, high] = LimitsInUnits(row);
    const auto value = ParseFloat(rows_.Text(row, Column::value));
    if (value && *value >= low && *value <= high) continue;
    const double nearest = value && *value > high ? high : low;
    Put(name, FixedText(nearest, machine_.resolution));
    corrected += (corrected.empty() ? "" : ", ") + rows_.Text(row, Column::description);
  }
  if (corrected.empty()) return {};
  return "The following properties were out of range and have been corrected:\r" + corrected +
         "\r\rPlease check values before proceeding.";
}

// ---- limits

std::pair<double, double> MachineEdit::LimitsInUnits(int row) const {
  const UnitKind kind = UnitKindOf(rows_.Text(row, Column::name)).value();
  const double factor = factors_[FactorIndex(kind)];
  return {Int32FromCell(rows_.Text(row, Column::minimum)) / factor,
          Int32FromCell(rows_.Text(row, Column::maximum)) / factor};
}

std::string MachineEdit::MinimumText(int row) const {
  return LimitText(row, Column::minimum);
}

std::string MachineEdit::MaximumText(int row) const {
  return LimitText(row, Column::maximum);
}

std::string MachineEdit::LimitText(int row, Column column) const {
  const auto kind = UnitKindOf(rows_.Text(row, Column::name));
  const std::string& limit = rows_.Text(row, column);
  if (!kind) return limit;
  return CountsToUnits(Int32FromCell(limit), factors_[FactorIndex(*kind)], machine_.resolution);
}

}  // namespace velmoor
