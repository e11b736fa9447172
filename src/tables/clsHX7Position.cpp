#include "tables/clsHX7Position.h"

#include <algorithm>
#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
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
    {Position::kLabel, {}, CellKind::label, "Label", "label"},
    {Position::kPosition, Position::kControllerPosition, CellKind::position, "Position", "position",
     "Position("},
    {Position::kSpeed, Position::kControllerSpeed, CellKind::speed, "Speed", "speed", "Speed("},
    {Position::kRDST, Position::kControllerRDST, CellKind::distance, "RDST", "rdst", "RDST("},
    {Position::kRSPD, Position::kControllerRSPD, CellKind::speed, "RSPD", "rspd", "RSPD("},
    {Position::kPOut, {}, CellKind::text, "POUT", "pout"},
    {Position::kEvent, {}, CellKind::text, "Event", "event"},
    {Position::kLoop, {}, CellKind::text, "Loop", "loop"},
    {Position::kNext, Position::kControllerNext, CellKind::next, "Next", "next"},
}};

constexpr TableLayout kLayout{"clsPosition", Position::kTable, Position::kId,
                              static_cast<int>(Position::kRows), kColumns};

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
  return strText.substr(0, at + 1) + NumberText(Int32FromText(strText.substr(at + 1)));
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
  if (text.empty() || text == "END") return text;
  return DefaultLabel(Int32FromText(text) + 1);
}

bool clsHX7Position::TableUsesNewEvents() const {
  for (int row = 1; row <= RowsInArray(); ++row) {
    if (IsNewEvent(Text(row, event))) return true;
  }
  return false;
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
    if (column == loop && !text.empty()) cell = NumberText(Int32FromText(text));
    if (column == next && !text.empty() && text != "END") cell = NumberText(Int32FromText(text));
    // Words have no number form that would fail: a garbled one must not become the project's.
    const bool garbled = (column == outputs && !CheckOutputs(cell).accepted) ||
                         (column == event && !CheckEvent(cell).accepted);
    if (garbled && !cell.empty()) return kValueNotFound;
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
  if (gMainForm->Helix7()->IsOptionVersionNew() || !TableUsesNewEvents()) return true;
  ShowExclamation(
      "The firmware in controller does not support SEL5 or SEL6 events in Index table!");
  return false;
}

}  // namespace velmoor
