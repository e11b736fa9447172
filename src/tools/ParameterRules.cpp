#include "tools/ParameterRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/data/ComboListText.h"
#include "project/data/NibbleDefinitions.h"
#include "project/data/UnitConversion.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {
namespace {

constexpr const char* kPreviousRestored = "\rPrevious value has been restored!";
constexpr std::size_t kNibbleDigits = 4;

CellCheck RefuseRange(const std::string& text, const std::string& low, const std::string& high) {
  return CellCheck::Refuse("The value " + text +
                           " is out of the allowable range!\rValue must range from " + low +
                           " to " + high + ".");
}

// Only one protocol and one form of acknowledge work; the two windows word the first differently.
CellCheck CheckList(ParameterWindow window, const ParameterRow& row, const std::string& text) {
  const std::int32_t index = ComboListIndex(row.list, text);
  if (ComboListItem(row.list, index) != text) {
    return CellCheck::Refuse("The value " + text + " is none of the items of " + row.name + "!" +
                             kPreviousRestored);
  }
  if (row.name == "Pn800" && index != 1) {
    const char* const words =
        window == ParameterWindow::editor
            ? "Existing version functions only with RS422+Echo Back!"
            : "Existing version functions only with RS422 + Echoback (RS232 + Echoback)!";
    return CellCheck::Refuse(std::string(words) + "\rValue has been restored!");
  }
  if (row.name == "Pn802" && index != 1) {
    return CellCheck::Refuse(
        "Existing version functions only with OK=Answer is back!\rValue has been restored!");
  }
  return CellCheck::Accept(text);
}

// The factor of the row's unit, or nothing for a row without one.
std::optional<double> UnitFactor(const Project& project, const ParameterRow& row) {
  const auto kind = UnitKindOf(row.name);
  if (!kind) return std::nullopt;
  return FactorOf(project, *kind);
}

// The limit as it is shown may lie beyond the quotient by the last bit of a double.
bool IsShownLimit(const Project& project, const ParameterRow& row, double value, double factor) {
  const double counts = std::round(value * factor);
  return (value == ParseFloat(MinimumText(project, row)) ||
          value == ParseFloat(MaximumText(project, row))) &&
         counts >= Int32FromCell(row.minimum) && counts <= Int32FromCell(row.maximum);
}

CellCheck CheckFloat(const Project& project, const ParameterRow& row, const std::string& text) {
  if (!IsFloatText(text)) {
    return CellCheck::Refuse("Value must be a float number in the range from " +
                             MinimumText(project, row) + " and " + MaximumText(project, row) + "." +
                             kPreviousRestored);
  }
  const auto factor = UnitFactor(project, row);
  if (!factor) throw NumberError("Division by zero");
  const double low = Int32FromCell(row.minimum) / *factor;
  const double high = Int32FromCell(row.maximum) / *factor;
  const double value = ParseFloat(text).value_or(0);
  const bool inRange = value >= low && value <= high;
  if (!inRange && !IsShownLimit(project, row, value, *factor)) {
    return RefuseRange(text, NumberText(low), NumberText(high));
  }
  return CellCheck::Accept(RoundTextToDigits(text, project.Resolution()));
}

CellCheck CheckLong(const ParameterRow& row, const std::string& text) {
  std::string strError;
  if (!IsLongText(text, strError)) {
    return CellCheck::Refuse("Value must be an integer in the range from " + row.minimum + " and " +
                             row.maximum + "." + kPreviousRestored);
  }
  const std::int32_t value = Int32FromText(text);
  if (value < Int32FromCell(row.minimum) || value > Int32FromCell(row.maximum)) {
    return RefuseRange(text, row.minimum, row.maximum);
  }
  return CellCheck::Accept(NumberText(value));
}

CellCheck CheckDigit(const ParameterRow& row, std::size_t digit, char character, bool changed) {
  const std::size_t place = kNibbleDigits - 1 - digit;
  if (row.fixedDigits[place] == '1' && changed) {
    return CellCheck::Refuse("Value has uneditable digits!\rHexadecimal digit " +
                             NumberText(digit) +
                             " is not modifiable!\r(Digit 0 is right most digit.)");
  }
  const int allowed = row.nibble->digits[digit].use_bit;
  const auto value = static_cast<int>(HexDigitValue(std::string(1, character)));
  const bool fits = allowed > 0 ? value < allowed : character == '0';
  if (fits) return CellCheck::Accept({});
  return CellCheck::Refuse(
      "Value has digit out of range!\rMinimum allowable value is 0000.\rMaximum allowable value "
      "is " +
      GetMaximumHex(*row.nibble) + ".");
}

CellCheck CheckHex(const ParameterRow& row, const std::string& text) {
  const std::string current = PadToDigits(UpperCase(text), kNibbleDigits);
  if (current.size() != kNibbleDigits) {
    return CellCheck::Refuse("The value " + current +
                             " is greater than 4 hexadecimals!  Please modify!");
  }
  if (!IsHexText(current)) {
    return CellCheck::Refuse("The value " + current +
                             " contains non-hexadecimal characters!  Please modify!");
  }
  const std::string old = PadToDigits(UpperCase(row.value), kNibbleDigits);
  for (std::size_t digit = 0; digit < kNibbleDigits; ++digit) {
    const std::size_t place = kNibbleDigits - 1 - digit;
    const bool changed = place >= old.size() || old[place] != current[place];
    CellCheck check = CheckDigit(row, digit, current[place], changed);
    if (!check.accepted) return check;
  }
  return CellCheck::Accept(current);
}

std::string LimitText(const Project& project, const ParameterRow& row, const std::string& limit) {
  if (row.nibble != nullptr) return limit;
  if (const auto factor = UnitFactor(project, row)) {
    return CountsToUnits(Int32FromCell(limit), *factor, project.Resolution());
  }
  return NumberText(Int32FromCell(limit));
}

}  // namespace

std::string UnitsInWords(const Project& project, const std::string& unit) {
  const std::string word = LowerCase(unit);
  if (word == "distance") return project.DistanceUnits();
  if (word == "speed") return project.SpeedUnits();
  if (word == "acceleration") return project.AccelerationUnits();
  return unit;
}

std::string DescriptionInUnits(const Project& project, std::string description,
                               const std::string& unit) {
  const std::string words = UnitsInWords(project, unit);
  if (words == unit) return description;
  TrimCurrentUnits(description);
  return description + " (" + words + ")";
}

CellCheck CheckParameter(const Project& project, ParameterWindow window, const ParameterRow& row,
                         const std::string& text) {
  if (text.empty()) return CellCheck::Refuse({});
  if (!row.list.empty()) return CheckList(window, row, text);
  if (row.nibble != nullptr) return CheckHex(row, text);
  const bool inUnits = UnitKindOf(row.name).has_value();
  if (window == ParameterWindow::properties || (window == ParameterWindow::editor && inUnits)) {
    return CheckFloat(project, row, text);
  }
  return CheckLong(row, text);
}

std::string MinimumText(const Project& project, const ParameterRow& row) {
  return LimitText(project, row, row.minimum);
}

std::string MaximumText(const Project& project, const ParameterRow& row) {
  return LimitText(project, row, row.maximum);
}

std::string RangeInWords(const Project& project, const ParameterRow& row) {
  if (!row.list.empty() || row.minimum.empty() || row.maximum.empty()) return {};
  return MinimumText(project, row) + " to " + MaximumText(project, row);
}

std::string DigitInWords(const NibbleDigit& digit, int value) {
  const std::string number = HexText(static_cast<std::uint32_t>(value));
  if (digit.choices.empty()) return number;
  return number + ": " + ComboListItem(digit.choices, value);
}

std::string DigitsInWords(const ParameterRow& row) {
  std::string words;
  const std::string value = PadToDigits(row.value, kNibbleDigits);
  if (row.nibble == nullptr || value.size() != kNibbleDigits || !IsHexText(value)) return words;
  for (std::size_t digit = 0; digit < kNibbleDigits; ++digit) {
    const NibbleDigit& definition = row.nibble->digits[digit];
    if (definition.use_bit == 0) continue;
    const auto number = static_cast<int>(HexDigitValue(value.substr(kNibbleDigits - 1 - digit, 1)));
    words += (words.empty() ? "" : ", ") + definition.digit_name + " " +
             DigitInWords(definition, number);
  }
  return words;
}

std::string LimitsInWords(const Project& project, const ParameterRow& row) {
  if (!row.list.empty()) return {};
  return "Minimum value is " + MinimumText(project, row) + "; Maximum value is " +
         MaximumText(project, row);
}

std::string LimitsWithUnit(const Project& project, const ParameterRow& row) {
  const std::string limits = LimitsInWords(project, row);
  // Units of the machine stand behind the description.
  const bool told = UnitsInWords(project, row.unit) != row.unit;
  if (limits.empty() || row.unit.empty() || told) return limits;
  return "Unit: " + row.unit + ".  " + limits;
}

std::string ParameterTip(const Project& project, const ParameterRow& row) {
  const std::string limits = LimitsInWords(project, row);
  const std::string digits = DigitsInWords(row);
  return row.description + (limits.empty() ? "" : ": " + limits) +
         (digits.empty() ? "" : "\n" + digits);
}

namespace {

bool IsSetElsewhere(const std::string& strPn) {
  return strPn == "Pn202" || strPn == "Pn203";
}

}  // namespace

std::string LockedReason(const std::string& strPn) {
  static constexpr std::array<std::string_view, 12> kLocked{"Pn104", "Pn50A", "Pn200", "Pn207",
                                                            "Pn50B", "Pn50C", "Pn50D", "Pn50E",
                                                            "Pn50F", "Pn510", "Pn511", "Pn512"};
  const std::string head = "Parameter " + strPn + " can";
  if (std::find(kLocked.begin(), kLocked.end(), strPn) != kLocked.end()) {
    return head + "not be modified by Velmoor!";
  }
  if (IsSetElsewhere(strPn)) {
    return head + " only be modified by changing values within the 'Mechanical System' window!";
  }
  if (strPn == "Pn408") return head + " only be modified with 'Gain Tuning' window!";
  return {};
}

std::string LockedInShort(const std::string& strPn) {
  if (strPn == "Pn408") return "locked, see Gain Tuning";
  return IsSetElsewhere(strPn) ? "locked, see Mechanical System" : "locked, never modified";
}

}  // namespace velmoor
