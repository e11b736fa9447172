#include "tables/clsHX7Position.h"

#include <algorithm>
#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tables/CellRules.h"
#include "tables/frmPosition.h"

namespace velmoor {

using schema::Position;

namespace {

constexpr std::array<TableColumn, 9> kColumns{{
    {Position::kLabel, {}, CellKind::label},
    {Position::kPosition, Position::kControllerPosition, CellKind::position},
    {Position::kSpeed, Position::kControllerSpeed, CellKind::speed},
    {Position::kRDST, Position::kControllerRDST, CellKind::distance},
    {Position::kRSPD, Position::kControllerRSPD, CellKind::speed},
    {Position::kPOut, {}, CellKind::text},
    {Position::kEvent, {}, CellKind::text},
    {Position::kLoop, {}, CellKind::text},
    {Position::kNext, Position::kControllerNext, CellKind::next},
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

std::string clsHX7Position::ConvertPositionToCounts(const std::string& value) const {
  if (value.empty() || IsMoveWord(value)) return value;
  if (!HasMovePrefix(value)) return ConvertUnitsToCounts(value, UnitKind::distance);
  return value.substr(0, 2) + ConvertUnitsToCounts(value.substr(2), UnitKind::distance);
}

std::string clsHX7Position::ConvertCountsToPosition(const std::string& value) const {
  if (!HasMovePrefix(value)) return value;
  return value.substr(0, 2) + ConvertCountsToUnits(value.substr(2), UnitKind::distance);
}

std::string clsHX7Position::GetControllerNext(const std::string& strNext) const {
  if (strNext.empty()) return strNext;
  if (strNext != "END") {
    for (int row = 1; row <= RowsInArray(); ++row) {
      if (Text(row, label) == strNext) return NumberText(row - 1);
    }
  }
  return "END";
}

std::string clsHX7Position::ToController(CellKind kind, const std::string& text) const {
  if (kind == CellKind::position) return ConvertPositionToCounts(text);
  if (kind == CellKind::next) return GetControllerNext(text);
  return MotionTable::ToController(kind, text);
}

std::string clsHX7Position::FromController(CellKind kind, const std::string& text) const {
  if (kind == CellKind::position) return ConvertCountsToPosition(text);
  if (kind == CellKind::next) {
    if (text.empty() || text == "END") return text;
    return DefaultLabel(Int32FromText(text) + 1);
  }
  return MotionTable::FromController(kind, text);
}

std::string clsHX7Position::Reformatted(CellKind kind, const std::string& text,
                                        std::int16_t digits) {
  if (kind == CellKind::position) {
    if (!HasMovePrefix(text)) return text;
    return text.substr(0, 2) + ReformattedNumber(UnitKind::distance, text.substr(2), digits);
  }
  return MotionTable::Reformatted(kind, text, digits);
}

bool clsHX7Position::TableUsesNewEvents() const {
  for (int row = 1; row <= RowsInArray(); ++row) {
    if (IsNewEvent(Text(row, event))) return true;
  }
  return false;
}

// ---- the amplifier

ResultCode clsHX7Position::UploadRow(int row) {
  IndexRow texts;
  const ResultCode result =
      gMainForm->Helix7()->readIndexTable(Narrow<std::int16_t>(row - 1), texts);
  if (result != kSuccess) return result;
  std::vector<std::string> cells{DefaultLabel(row)};
  for (int column = position; column <= next; ++column) {
    const std::string text(Trim(texts[static_cast<std::size_t>(column) - 1]));
    std::string shown = FromController(kColumns[static_cast<std::size_t>(column)].kind, text);
    if (column == event) shown = ConvertPaddedTimeToTime(text);
    if (column == loop && !text.empty()) shown = NumberText(Int32FromText(text));
    // Words have no number form that would fail: a garbled one must not become the project's.
    const bool garbled = (column == outputs && !CheckOutputs(shown).accepted) ||
                         (column == event && !CheckEvent(shown).accepted);
    if (garbled && !shown.empty()) return kValueNotFound;
    cells.push_back(std::move(shown));
  }
  // All are converted before any is shown.
  for (int column = label; column <= next; ++column) {
    SetText(row, column, cells[static_cast<std::size_t>(column)]);
  }
  return kSuccess;
}

ResultCode clsHX7Position::SendRecord(const RowSet& record) {
  const IndexRow texts{record.Text(Position::kControllerPosition),
                       record.Text(Position::kControllerSpeed),
                       record.Text(Position::kControllerRDST),
                       record.Text(Position::kControllerRSPD),
                       record.Text(Position::kPOut),
                       record.Text(Position::kEvent),
                       record.Text(Position::kLoop),
                       record.Text(Position::kControllerNext)};
  return gMainForm->Helix7()->writeIndexTable(
      Narrow<std::int16_t>(Int32FromText(record.Text(Position::kIndex))), texts);
}

bool clsHX7Position::MayDownload() {
  if (gMainForm->Helix7()->IsOptionVersionNew() || !TableUsesNewEvents()) return true;
  ShowExclamation(
      "The firmware in controller does not support SEL5 or SEL6 events in Index table!");
  return false;
}

}  // namespace velmoor
