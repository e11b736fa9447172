// What the value of a parameter may be: the one validation behind the grid windows and the console
// program, with the words that each window has for a refusal.
#pragma once

#include <cstdint>
#include <string>

#include "project/data/ParameterCatalogue.h"
#include "session/Project.h"
#include "tools/CellCheck.h"

namespace velmoor {

// Everything that validation, grid, tips and reports need to know of a row.
struct ParameterRow {
  std::string name;         // "Pn81B"
  std::string description;  // as shown
  std::string value;        // the cell's present text
  std::string minimum,
      maximum;       // counts, numbers, or hexadecimal texts, as the tool's rows hold them
  std::string list;  // items joined by "|"; empty: no list
  std::string unit;
  const NibbleDefinition* nibble = nullptr;  // null: no digit-wise row
  std::string fixedDigits = "0000";          // left to right; "1": not modifiable
};

// The windows differ in what they take for a number and in some words.
enum class ParameterWindow {
  properties,  // every plain row is a number in user units
  editor,      // numbers in user units, whole numbers, digits
  tuning       // whole numbers, and digits without fixed ones
};

// The description with the present word of the row's unit: "Positive limit (mm)".
[[nodiscard]] std::string DescriptionInUnits(const Project& project, std::string description,
                                             const std::string& unit);
// The project's word for a unit column of "distance", "speed" or "acceleration"; another text as it
// is.
[[nodiscard]] std::string UnitsInWords(const Project& project, const std::string& unit);

// The text as the cell takes it, or the words of the refusal. An empty text is refused without
// words. Throws NumberError when a unit row has no usable factor.
[[nodiscard]] CellCheck CheckParameter(const Project& project, ParameterWindow window,
                                       const ParameterRow& row, const std::string& text);

// The row's limits as the user reads them: in user units, as digits, or plain.
[[nodiscard]] std::string MinimumText(const Project& project, const ParameterRow& row);
[[nodiscard]] std::string MaximumText(const Project& project, const ParameterRow& row);
// "Minimum value is ...; Maximum value is ..."; empty for a list row.
[[nodiscard]] std::string LimitsInWords(const Project& project, const ParameterRow& row);
// The same for below the grid, behind the unit where the description does not tell it: "Unit: 0.01
// ms. Minimum value is ...".
[[nodiscard]] std::string LimitsWithUnit(const Project& project, const ParameterRow& row);
// "1 to 2000", "0000 to 0FB1"; empty for a list row.
[[nodiscard]] std::string RangeInWords(const Project& project, const ParameterRow& row);
// What each digit of the row's value means, from digit 0 on: "Direction 1: clockwise is forward,
// Control method 0: speed by analog input"; empty for a row that is not coded in digits.
[[nodiscard]] std::string DigitsInWords(const ParameterRow& row);
// The meaning of one value of a digit: "1: clockwise is forward", or the value alone.
[[nodiscard]] std::string DigitInWords(const NibbleDigit& digit, int value);
// "In Position Window: Minimum value is ...; Maximum value is ...", or the description of a list
// row.
[[nodiscard]] std::string ParameterTip(const Project& project, const ParameterRow& row);

// Why the direct editor does not let the user change the row; empty where it does.
[[nodiscard]] std::string LockedReason(const std::string& strPn);
// The same for a narrow cell: "locked, see Gain Tuning".
[[nodiscard]] std::string LockedInShort(const std::string& strPn);

}  // namespace velmoor
