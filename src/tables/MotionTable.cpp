#include "tables/MotionTable.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"

namespace velmoor {
namespace {

// The three tables name their mark alike.
constexpr std::string_view kDirty = schema::Position::kDirty;

bool IsWritten(const TableColumn& column) {
  return column.kind != CellKind::fixed;
}

}  // namespace

MotionTable::MotionTable(const TableLayout& layout)
    : layout_(layout),
      cells_(static_cast<std::size_t>(layout.rows),
             std::vector<std::string>(layout.columns.size())),
      dirty_(static_cast<std::size_t>(layout.rows), "0"),
      touched_(static_cast<std::size_t>(layout.rows), false) {}

Project& MotionTable::project() const {
  Project* const current = gMainForm != nullptr ? gMainForm->CurrentProject() : nullptr;
  if (current == nullptr) throw std::logic_error("No project is open");
  return *current;
}

std::string MotionTable::Prefix(std::string_view procedure) const {
  return std::string(layout_.className) + "." + std::string(procedure) + ": ";
}

// ---- cells
// ------------------------------------------------------------------------------------------

std::size_t MotionTable::Index(int row) const {
  if (row < 1 || row > layout_.rows) throw std::out_of_range("Subscript out of range");
  return static_cast<std::size_t>(row) - 1;
}

const std::string& MotionTable::Text(int row, int column) const {
  return cells_[Index(row)].at(static_cast<std::size_t>(column));
}

void MotionTable::SetText(int row, int column, std::string_view text) {
  std::string& cell = cells_[Index(row)].at(static_cast<std::size_t>(column));
  if (cell == text) return;
  cell = text;
  touched_[Index(row)] = true;
}

const std::string& MotionTable::DirtyCell(int row) const {
  return dirty_[Index(row)];
}

void MotionTable::SetDirtyCell(int row, bool dirty) {
  dirty_[Index(row)] = dirty ? "1" : "0";
  touched_[Index(row)] = true;
}

bool MotionTable::IsBlank(int row) const {
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    if (IsWritten(layout_.columns[i]) && !cells_[Index(row)][i].empty()) return false;
  }
  return true;
}

// ---- the file
// ---------------------------------------------------------------------------------------

void MotionTable::ForEachRecord(const std::function<void(int, RowSet&)>& work, bool writes) {
  const auto database =
      writes ? OpenForWriting(strDatabasePath_) : OpenForReading(strDatabasePath_);
  try {
    const auto records = database->OpenTable(layout_.table, layout_.order);
    int row = 1;
    for (records->MoveFirst(); !records->AtEnd() && row <= layout_.rows; records->MoveNext()) {
      work(row++, *records);
    }
    if (writes) database->Commit();
  } catch (...) {
    database->Rollback();
    throw;
  }
}

bool MotionTable::ReadFromDB() {
  // "ReadToDB" is how this message is spelled, on purpose.
  return Trapped(Prefix("ReadToDB"), [this] {
    ForEachRecord(
        [this](int row, RowSet& record) {
          for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
            const TableColumn& column = layout_.columns[i];
            if (!column.field.empty()) cells_[Index(row)][i] = record.Text(column.field);
          }
          dirty_[Index(row)] = record.Text(kDirty) == "1" ? "1" : "0";
          touched_[Index(row)] = false;
        },
        false);
    return true;
  });
}

bool MotionTable::SaveToDB() {
  return StoreRows(false);
}

bool MotionTable::StoreRows(bool markMovedCounts) {
  return Trapped(Prefix("SaveToDB"), [&] {
    ForEachRecord(
        [&](int row, RowSet& record) {
          const bool complete = IsDataSetComplete(row);
          if (markMovedCounts && complete && ControllerFormMoved(row, record)) {
            SetDirtyCell(row, true);
          }
          if (IsStored(row)) StoreRow(row, record, complete);
        },
        true);
    touched_.assign(touched_.size(), false);
    return true;
  });
}

// A step whose text stays but whose label of the next step has moved sends another number.
bool MotionTable::ControllerFormMoved(int row, const RowSet& record) const {
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    if (column.controllerField.empty()) continue;
    if (record.Text(column.controllerField) != ToController(column.kind, cells_[Index(row)][i])) {
      return true;
    }
  }
  return false;
}

void MotionTable::StoreRow(int row, RowSet& record, bool complete) {
  record.Edit();
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    if (!IsWritten(column)) continue;
    const std::string shown = complete ? cells_[Index(row)][i] : std::string();
    record.Set(column.field, shown);
    if (!column.controllerField.empty()) {
      record.Set(column.controllerField, ToController(column.kind, shown));
    }
  }
  record.Set(kDirty, StoredMark(row, complete) ? "1" : "0");
  record.Update();
}

bool MotionTable::ClearData() {
  return Trapped(Prefix("ClearData"), [this] {
    const Snapshot before = TakeSnapshot();
    try {
      for (auto& row : cells_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
          if (IsWritten(layout_.columns[i])) row[i].clear();
        }
      }
      dirty_.assign(dirty_.size(), "1");
      ForEachRecord([this](int row, RowSet& record) { StoreRow(row, record, true); }, true);
    } catch (...) {
      RestoreSnapshot(before);
      throw;
    }
    blnIsDirty_ = blnNeedsSaving_ = true;
    return true;
  });
}

std::int16_t MotionTable::GetNumberOfNewRows() const {
  std::int16_t count = 0;
  Trapped(Prefix("GetNumberOfNewRows"), [&] {
    const auto database = OpenForReading(strDatabasePath_);
    const auto records = database->OpenTable(layout_.table, layout_.order);
    for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
      if (records->Text(kDirty) == "1") ++count;
    }
    return true;
  });
  return count;
}

bool MotionTable::ChangeResolution(std::int16_t digits) {
  return Trapped(Prefix("ChangeResolution"), [&] {
    const Snapshot before = TakeSnapshot();
    try {
      ForEachRecord(
          [&](int row, RowSet& record) {
            if (!ScalesWithResolution(row)) return;
            for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
              std::string& cell = cells_[Index(row)][i];
              if (!cell.empty()) cell = Reformatted(layout_.columns[i].kind, cell, digits);
            }
            dirty_[Index(row)] = "1";
            StoreRow(row, record, true);
          },
          true);
    } catch (...) {
      RestoreSnapshot(before);
      throw;
    }
    blnIsDirty_ = blnNeedsSaving_ = true;
    return true;
  });
}

bool MotionTable::ChangeAccepted() {
  blnIsDirty_ = blnNeedsSaving_ = true;
  if (!StoreRows(true)) return false;
  Applied.Raise();
  return true;
}

void MotionTable::CommitUploadedData(bool bState) {
  if (!bState) return;
  blnNeedsSaving_ = true;
  blnIsDirty_ = false;
  // Read back, so that memory shows just what the file holds: a blank step has no label.
  if (SaveToDB()) ReadFromDB();
}

MotionTable::Snapshot MotionTable::TakeSnapshot() const {
  return {cells_, dirty_, blnIsDirty_, blnNeedsSaving_};
}

void MotionTable::RestoreSnapshot(const Snapshot& snapshot) {
  cells_ = snapshot.cells;
  dirty_ = snapshot.dirty;
  blnIsDirty_ = snapshot.isDirty;
  blnNeedsSaving_ = snapshot.needsSaving;
}

// ---- conversions
// ------------------------------------------------------------------------------------

std::string MotionTable::ConvertUnitsToCounts(const std::string& text, UnitKind kind) const {
  if (text.empty() || text == "-") return text;
  return UnitsToCounts(text, FactorOf(project(), kind));
}

std::string MotionTable::ConvertCountsToUnits(const std::string& counts, UnitKind kind) const {
  if (counts.empty() || counts == "-") return counts;
  const auto number = ParseFloat(counts);
  if (!number) throw NumberError("Type mismatch: '" + counts + "' is not a number");
  return CountsToUnits(*number, FactorOf(project(), kind), project().Resolution());
}

std::string MotionTable::ToController(CellKind kind, const std::string& text) const {
  if (kind == CellKind::distance) return ConvertUnitsToCounts(text, UnitKind::distance);
  if (kind == CellKind::speed) return ConvertUnitsToCounts(text, UnitKind::speed);
  return text;
}

std::string MotionTable::FromController(CellKind kind, const std::string& text) const {
  if (kind == CellKind::distance) return ConvertCountsToUnits(text, UnitKind::distance);
  if (kind == CellKind::speed) return ConvertCountsToUnits(text, UnitKind::speed);
  return text;
}

std::string MotionTable::ReformattedNumber(UnitKind kind, const std::string& text,
                                           std::int16_t digits) {
  if (text == "-") return text;
  const std::string formatted = FormatToResolution(text, digits);
  const LimitedCounts counts = UnitsToLimitedCounts(formatted, FactorOf(project(), kind), digits);
  if (counts.clamped) blnDataInvalidated_ = true;
  return counts.text;
}

std::string MotionTable::Reformatted(CellKind kind, const std::string& text, std::int16_t digits) {
  if (kind == CellKind::distance) return ReformattedNumber(UnitKind::distance, text, digits);
  if (kind == CellKind::speed) return ReformattedNumber(UnitKind::speed, text, digits);
  return text;
}

}  // namespace velmoor
