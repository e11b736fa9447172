#include "tables/clsHX7Position.h"

#include <algorithm>
#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "session/Session.h"
#include "tables/CellRules.h"
#include "tables/frmPosition.h"

namespace velmoor {

using schema::Position;

namespace {

// No blank before the printed brackets, unlike those of the two other tables: intended.
constexpr std::array<TableColumn, 9> kColumns{{
    {Position::kLabel,
     {},
     CellKind::label,
     "Label",
     "label",
     {},
     "Name of the step, by which Next refers to it; known to the project alone"},
    {Position::kPosition, Position::kControllerPosition, CellKind::position, "Position", "position",
     "Position(",
     "Where to: I+ or I- a distance from here, A+ or A- a place, +INFINITE, -INFINITE, "
     "STOP, or - for no move"},
    {Position::kSpeed, Position::kControllerSpeed, CellKind::speed, "Speed", "speed", "Speed(",
     "Speed of the move"},
    {Position::kRDST, Position::kControllerRDST, CellKind::distance, "RDST", "rdst", "RDST(",
     "Registration distance: from the place at which the registration input comes; - for none"},
    {Position::kRSPD, Position::kControllerRSPD, CellKind::speed, "RSPD", "rspd", "RSPD(",
     "Registration speed: of the move to the registration distance"},
    {Position::kPOut,
     {},
     CellKind::text,
     "POUT",
     "pout",
     {},
     "Outputs POUT0 to POUT4 while the step runs: A on, N off, : as they were, Z zone signal"},
    {Position::kEvent,
     {},
     CellKind::text,
     "Event",
     "event",
     {},
     "What ends the step: I in position, N near, D end of the move, SEL0 to SEL6 an input, : as "
     "the "
     "step before; then T and a time in ms"},
    {Position::kLoop, {}, CellKind::text, "Loop", "loop", {}, "How often the step is done"},
    {Position::kNext,
     Position::kControllerNext,
     CellKind::next,
     "Next",
     "next",
     {},
     "Label of the step that follows, or END"},
}};

constexpr TableLayout kLayout{Tool::position,
                              "clsPosition",
                              Position::kTable,
                              Position::kId,
                              static_cast<int>(Position::kRows),
                              kColumns};

// "A+", "A-", "I+" or "I-": what follows is a distance.
bool HasMovePrefix(const std::string& value) {
  return value.size() >= 2 && (value[0] == 'A' || value[0] == 'I') &&
         (value[1] == '+' || value[1] == '-');
}

// "STOP", "+INFINITE", "-INFINITE" and "-" need no conversion.
bool IsMoveWord(const std::string& value) {
  const std::string head = Left(value, 2);
  return head == "ST" || head == "+I" || head == "-I" || head == "-";
}

// A move as it goes out: a word, or a prefix and a count.
bool IsMove(const std::string& text) {
  if (!HasMovePrefix(text))
    return (text == "+INFINITE" || text == "-INFINITE" || text == "STOP" || text == "-");
  const std::string digits = text.substr(2);
  const auto count = IsWholeNumberText(digits) ? ParseWhole(digits) : std::nullopt;
  return count && digits.front() >= '0' && digits.front() <= '9' && *count <= kMostCounts;
}

// "00012" reads "12"; what is no number stays as it was found.
std::string PlainWhole(const std::string& text) {
  const auto number = ParseWhole(text);
  return number ? NumberText(*number) : text;
}

// The amplifier's number of a step, from 0.
std::optional<int> StepOf(const std::string& text) {
  const auto number = ParseWhole(text);
  if (!number || *number < 0 || *number >= static_cast<std::int64_t>(Position::kRows)) {
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

// "A+00012345" reads "A+12345"; words stay.
std::string PlainMove(const std::string& text) {
  if (!HasMovePrefix(text)) return text;
  return text.substr(0, 2) + PlainCount(text.substr(2));
}

}  // namespace

std::string DefaultLabel(int step) {
  return "label" + NumberText(step);
}

std::string ConvertPaddedTimeToTime(const std::string& strText) {
  const std::size_t at = strText.find('T');
  if (at == std::string::npos) return strText;
  return strText.substr(0, at + 1) + PlainWhole(strText.substr(at + 1));
}

bool IsNewEvent(const std::string& strEvent) {
  return strEvent.find("SEL5") != std::string::npos || strEvent.find("SEL6") != std::string::npos;
}

const TableLayout& clsHX7Position::Columns() {
  return kLayout;
}

clsHX7Position::clsHX7Position() : MotionTable(kLayout) {
  TakeWindow(std::make_unique<frmPosition>(*this));
}

bool clsHX7Position::IsDataSetComplete(int row) const {
  for (int column = position; column <= next; ++column) {
    if (Text(row, column).empty()) return false;
  }
  return true;
}

// ---- conversions

std::size_t clsHX7Position::NumberAt(CellKind /*kind*/, const std::string& text) const {
  if (HasMovePrefix(text)) return 2;
  return IsMoveWord(text) ? std::string::npos : 0;
}

std::string clsHX7Position::GetControllerNext(const std::string& strNext, const Rows& cells) {
  if (strNext.empty() || strNext == "END") return strNext;
  const auto step = std::ranges::find_if(
      cells, [&](const std::vector<std::string>& row) { return row[label] == strNext; });
  return step == cells.end() ? "END" : NumberText(step - cells.begin());
}

std::string clsHX7Position::ToController(CellKind kind, const std::string& text, const Rows& cells,
                                         const Units& units) const {
  if (kind == CellKind::next) return GetControllerNext(text, cells);
  return MotionTable::ToController(kind, text, cells, units);
}

std::string clsHX7Position::FromController(CellKind kind, const std::string& text,
                                           const Units& units) const {
  if (kind != CellKind::next) return MotionTable::FromController(kind, text, units);
  const auto step = StepOf(text);
  return step ? DefaultLabel(*step + 1) : text;
}

std::string clsHX7Position::ShownCell(CellKind kind, const std::string& controller,
                                      const Rows& cells, const Units& units) const {
  if (kind != CellKind::next) return FromController(kind, controller, units);
  const auto step = StepOf(controller);
  if (!step) return controller;
  const std::string& strLabel = cells.at(static_cast<std::size_t>(*step)).at(label);
  return strLabel.empty() ? controller : strLabel;
}

bool clsHX7Position::IsAsTyped(int row, int column, const StoredRow& stored) const {
  const std::string& text = stored.controller.at(static_cast<std::size_t>(column));
  switch (column) {
    case position:
      return IsMove(text);
    case outputs:
      return CheckOutputs(text).accepted;
    case event:
      return CheckEvent(text).accepted;
    case loop:
      return CheckLoop(text).accepted;
    case next: {
      const auto step = StepOf(text);
      return text == "END" || (step && *step != row - 1 && !IsBlankStep(*step));
    }
    default:
      return MotionTable::IsAsTyped(row, column, stored);
  }
}

bool clsHX7Position::IsBlankStep(int step) const {
  const std::vector<std::string>& controller = Stored(step + 1).controller;
  return std::all_of(controller.begin() + position, controller.end(),
                     [](const std::string& cell) { return cell.empty(); });
}

int clsHX7Position::StepsWithNewEvents() const {
  int steps = 0;
  for (int row = 1; row <= RowsInArray(); ++row) {
    if (IsNewEvent(Text(row, event))) ++steps;
  }
  return steps;
}

// ---- the amplifier

ResultCode clsHX7Position::UploadRow(int row, std::vector<std::string>& controller) {
  IndexRow texts;
  const ResultCode result =
      gMainForm->Helix7()->readIndexTable(Narrow<std::int16_t>(row - 1), texts);
  if (result != kSuccess) return result;
  for (int column = position; column <= next; ++column) {
    const std::string text(Trim(texts[static_cast<std::size_t>(column) - 1]));
    std::string& cell = controller[static_cast<std::size_t>(column)];
    cell = text;
    if (column == position) cell = PlainMove(text);
    if (column == speed || column == registrationSpeed || column == registrationDistance) {
      cell = PlainCount(text);
    }
    if (column == event) cell = ConvertPaddedTimeToTime(text);
    if (column == loop || column == next) cell = PlainWhole(text);
  }
  return kSuccess;
}

ResultCode clsHX7Position::SendRow(int row, const std::vector<std::string>& controller) {
  IndexRow texts;
  for (int column = position; column <= next; ++column) {
    texts[static_cast<std::size_t>(column) - 1] = controller[static_cast<std::size_t>(column)];
  }
  return gMainForm->Helix7()->writeIndexTable(Narrow<std::int16_t>(row - 1), texts);
}

bool clsHX7Position::MayDownload() {
  if (gMainForm->Helix7()->IsOptionVersionNew() || StepsWithNewEvents() == 0) return true;
  ShowExclamation(
      "The firmware in controller does not support SEL5 or SEL6 events in Index table!");
  return false;
}

}  // namespace velmoor
