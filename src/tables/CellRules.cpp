#include "tables/CellRules.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "platform/VisibleText.h"
#include "project/data/UnitConversion.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

constexpr const char* kRestored = "\rPrevious value has been restored!";

// The limits are those of the counts, shown in units at the project's resolution.
CellCheck CheckRange(const Project& project, UnitKind kind, const std::string& text,
                     const char* ending) {
  const double factor = FactorOf(project, kind);
  const std::int32_t lowest = kind == UnitKind::speed ? 0 : -kMostCounts;
  const std::string formatted = FormatToResolution(text, project.Resolution());
  const double counts = ParseFloat(formatted).value_or(0) * factor;
  if (counts < lowest || counts > kMostCounts) {
    return CellCheck::Refuse(text + " is out of range!\rValue must be within the range from " +
                             CountsToUnits(lowest, factor, project.Resolution()) + " and " +
                             CountsToUnits(kMostCounts, factor, project.Resolution()) + "!" +
                             ending);
  }
  return CellCheck::Accept(formatted);
}

// A sign that rounding took away stays: it is the direction of the move.
CellCheck CheckSignedDistance(const Project& project, const std::string& distance) {
  CellCheck number = CheckRange(project, UnitKind::distance, distance, "");
  if (!number.accepted) return number;
  std::string digits = number.text;
  if (digits.front() == '-') digits.erase(0, 1);
  const char sign = distance.front();
  return CellCheck::Accept((sign == '+' || sign == '-' ? std::string(1, sign) : "") + digits);
}

// Of UTF-8: bytes that continue a character are not counted.
std::size_t CountCharacters(const std::string& text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

bool IsMoveWord(const std::string& text) {
  return text == "+INFINITE" || text == "-INFINITE" || text == "STOP" || text == "-";
}

// The event before the "T"; true for one of those that exist.
bool IsEventWord(const std::string& word) {
  if (word.empty() || word == "I" || word == "N" || word == "D" || word == ":") return true;
  return word.size() == 4 && word.substr(0, 3) == "SEL" && word[3] >= '0' && word[3] <= '6';
}

}  // namespace

CellCheck CheckNumber(const Project& project, UnitKind kind, const std::string& name,
                      const std::string& text) {
  if (!IsFloatText(text)) return CellCheck::Refuse(name + " value must be numeric!" + kRestored);
  return CheckRange(project, kind, text, "");
}

CellCheck CheckLimit(const Project& project, UnitKind kind, const std::string& text) {
  std::string strError;
  if (text.empty()) return CellCheck::Accept(text);
  if (!IsFloatText(text, strError)) return CellCheck::Refuse(strError + kRestored);
  return CheckRange(project, kind, text, kRestored);
}

CellCheck CheckLabel(const clsHX7Position& table, int step, const std::string& text) {
  if (CountCharacters(text) > kMostLabelCharacters) {
    return CellCheck::Refuse("Label cannot exceed 16 characters in length!");
  }
  if (UpperCase(text) == "END" || text.find('|') != std::string::npos) {
    return CellCheck::Refuse("Label cannot be \"END\" or contain \"|\"!");
  }
  if (std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < ' '; })) {
    return CellCheck::Refuse("Label cannot contain tabs or line breaks!");
  }
  if (VisibleText(text) != text) {
    return CellCheck::Refuse("Label cannot contain control characters!");
  }
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    const std::string& other = table.Text(row, clsHX7Position::label);
    if (row != step && !other.empty() && UpperCase(other) == UpperCase(text)) {
      return CellCheck::Refuse("Label is already defined!  Please change label to an unique name!");
    }
  }
  return CellCheck::Accept(text);
}

CellCheck CheckMove(const Project& project, const std::string& text) {
  if (IsMoveWord(text)) return CellCheck::Accept(text);
  const std::string kind = Left(text, 1);
  if (kind != "I" && kind != "A") {
    const std::string distance = FixedText("100", project.Resolution());
    return CellCheck::Refuse(
        "Position must be a relative (I) or absolute (A) distance, +INFINITE, -INFINITE, STOP or "
        "-!\rFor example: A+" +
        distance + " or I-" + distance + ".");
  }
  const std::string distance = text.substr(1);
  if (distance.empty()) {
    return CellCheck::Refuse("Distance is required for relative or absolute moves!");
  }
  if (!IsFloatText(distance) || distance.front() == ' ') {
    return CellCheck::Refuse("Distance value must be numeric!" + std::string(kRestored));
  }
  CellCheck checked = CheckSignedDistance(project, distance);
  if (!checked.accepted) return checked;
  const bool signedText = checked.text.front() == '+' || checked.text.front() == '-';
  return CellCheck::Accept(kind + (signedText ? "" : "+") + checked.text);
}

CellCheck CheckDialogDistance(const Project& project, const std::string& text) {
  if (!IsFloatText(text)) {
    return CellCheck::Refuse("Distance value must be numeric!\rPrevious value will be restored!");
  }
  return CheckSignedDistance(project, text);
}

CellCheck CheckOutputs(const std::string& text) {
  if (text.size() != 5 || text.find_first_not_of("AN:Z") != std::string::npos) {
    return CellCheck::Refuse("Outputs must be five of the characters A, N, : and Z!" +
                             std::string(kRestored));
  }
  return CellCheck::Accept(text);
}

// A time with decimals is refused, on purpose.
CellCheck CheckEventTime(const std::string& text) {
  std::string strError;
  if (!IsLongText(text, strError)) {
    return CellCheck::Refuse(strError + "\rPlease enter a non-float value." + kRestored);
  }
  const std::int32_t milliseconds = Int32FromText(text);
  if (milliseconds < 0 || milliseconds > kMostEventTime) {
    return CellCheck::Refuse("Time value must be in the range from 0 to 99999!" +
                             std::string(kRestored));
  }
  return CellCheck::Accept(NumberText(milliseconds));
}

CellCheck CheckEvent(const std::string& text) {
  const std::size_t at = text.find('T');
  const std::string word = text.substr(0, at);
  if (!IsEventWord(word)) {
    return CellCheck::Refuse(
        "Event must be I, N, D, SEL0 to SEL6, : or nothing, then T and a time!" +
        std::string(kRestored));
  }
  const std::string time = at == std::string::npos ? "" : text.substr(at + 1);
  if (time.empty()) return CellCheck::Accept(word + "T0");
  const CellCheck check = CheckEventTime(time);
  return check.accepted ? CellCheck::Accept(word + "T" + check.text) : check;
}

CellCheck CheckLoop(const std::string& text) {
  const bool digitsOnly = text.find_first_not_of("0123456789") == std::string::npos;
  if (!IsWholeNumberText(text) || !digitsOnly || text.find_first_not_of('0') == std::string::npos) {
    return CellCheck::Refuse("Loop value must be a positive integer!" + std::string(kRestored));
  }
  const auto loops = ParseWhole(text);
  if (!loops || *loops > kMostLoops) {
    return CellCheck::Refuse(text + " exceeds maximum allowable value!\rMaximum loop count is " +
                             NumberText(kMostLoops) + "!");
  }
  return CellCheck::Accept(NumberText(*loops));
}

CellCheck CheckNext(const clsHX7Position& table, int step, const std::string& text) {
  if (text != "END" && text == table.Text(step, clsHX7Position::label)) {
    return CellCheck::Refuse("Next position definition cannot be self!\rChoose different step.");
  }
  return CellCheck::Accept(text);
}

CellCheck CheckIndexCell(const Project& project, const clsHX7Position& table, int step, int column,
                         const std::string& text) {
  if (text.empty()) return CellCheck::Accept(text);
  switch (column) {
    case clsHX7Position::label:
      return CheckLabel(table, step, text);
    case clsHX7Position::position:
      return CheckMove(project, text);
    case clsHX7Position::speed:
      return CheckNumber(project, UnitKind::speed, "Speed", text);
    case clsHX7Position::registrationDistance:
      if (text == "-") return CellCheck::Accept(text);
      return CheckNumber(project, UnitKind::distance, "Registration Distance", text);
    case clsHX7Position::registrationSpeed:
      return CheckNumber(project, UnitKind::speed, "Registration Speed", text);
    case clsHX7Position::outputs:
      return CheckOutputs(text);
    case clsHX7Position::event:
      return CheckEvent(text);
    case clsHX7Position::loop:
      return CheckLoop(text);
    default:
      return CheckNext(table, step, text);
  }
}

std::string FaultAlone(const std::string& words) {
  return words.substr(0, words.find(kRestored));
}

std::vector<ProgrammeFault> FaultsOfProgramme(const clsHX7Position& table) {
  std::vector<ProgrammeFault> faults;
  for (int step = 1; step <= table.RowsInArray(); ++step) {
    if (table.IsBlank(step) || table.IsDataSetComplete(step)) continue;
    faults.push_back(
        {step, -1,
         "Definition in step " + NumberText(step) + " is incomplete!\rPlease edit definition."});
  }
  for (int step = 1; step <= table.RowsInArray(); ++step) {
    const std::string& next = table.Text(step, clsHX7Position::next);
    if (next.empty() || next == "END") continue;
    if (next == table.Text(step, clsHX7Position::label)) {
      faults.push_back({step, clsHX7Position::next,
                        "Next position definition cannot be self!\rChoose different step."});
      continue;
    }
    bool found = false;
    for (int row = 1; row <= table.RowsInArray() && !found; ++row) {
      found = table.Text(row, clsHX7Position::label) == next;
    }
    if (found) continue;
    faults.push_back({step, clsHX7Position::next,
                      "Next block '" + next + "' for definition 'Step " + NumberText(step) +
                          "' is undefined!\rPlease edit definition."});
  }
  return faults;
}

std::optional<std::string> FindProgrammeFault(const clsHX7Position& table) {
  const std::vector<ProgrammeFault> faults = FaultsOfProgramme(table);
  if (faults.empty()) return std::nullopt;
  return faults.front().words;
}

}  // namespace velmoor
