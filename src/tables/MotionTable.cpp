#include "tables/MotionTable.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tables/TableWindow.h"
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

MotionTable::~MotionTable() = default;

std::string MotionTable::Prefix(std::string_view procedure) const {
  return std::string(layout_.className) + "." + std::string(procedure) + ": ";
}

// ---- cells

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

void MotionTable::MarkChangesSince(const Rows& cells) {
  for (int row = 1; row <= layout_.rows; ++row) {
    if (cells.at(Index(row)) != cells_[Index(row)]) SetDirtyCell(row, true);
  }
}

bool MotionTable::IsBlank(int row) const {
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    if (IsWritten(layout_.columns[i]) && !cells_[Index(row)][i].empty()) return false;
  }
  return true;
}

// ---- the window

void MotionTable::TakeWindow(std::unique_ptr<TableWindow> window) {
  frm_ = std::move(window);
  connections_ += frm_->ChangeAccepted.Connect([this] { frm_ChangeAccepted(); });
  connections_ += frm_->ChangeCanceled.Connect([this] { frm_ChangeCanceled(); });
  connections_ += frm_->Closed.Connect([this] { Closed.Raise(); });
  connections_ += frm_->EditStateChanged.Connect([this] { EditStateChanged.Raise(); });
}

bool MotionTable::Show() {
  return frm_->Show(FormMode::modeless);
}

void MotionTable::Unload() {
  frm_->Unload();
}

void MotionTable::BringToFront() {
  frm_->BringToFront();
}

void MotionTable::UpdateUnitsDisplayed() {
  frm_->UpdateUnitsInHeader();
}

void MotionTable::ShowInWindow() {
  frm_->LoadFlexGrid();
}

void MotionTable::frm_ChangeAccepted() {
  if (!frm_->IsDirty()) return;
  if (ChangeAccepted()) {
    frm_->EditsApplied();
  } else {
    frm_->CommitFailed();
  }
}

void MotionTable::frm_ChangeCanceled() {
  LoadFromProject();
}

bool MotionTable::LoadFromProject() {
  const bool read = ReadFromDB();
  ShowInWindow();
  return read;
}

// ---- the file

// Cells, marks and flags come back when `work` throws.
void MotionTable::AllOrNothing(const std::function<void()>& work) {
  const Snapshot before = TakeSnapshot();
  try {
    work();
  } catch (...) {
    RestoreSnapshot(before);
    throw;
  }
}

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
    AllOrNothing([this] {
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
    });
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
          if (markMovedCounts && complete && WireFormMoved(row, record)) {
            SetDirtyCell(row, true);
          }
          if (IsStored(row)) StoreRow(row, record, complete);
        },
        true);
    touched_.assign(touched_.size(), false);
    return true;
  });
}

// What would go on the wire differs from what the record holds. A step whose text stays but whose
// label of the next step has moved sends another number; and a download may have cleared the mark
// of an edit that was not applied yet.
bool MotionTable::WireFormMoved(int row, const RowSet& record) const {
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    if (!IsWritten(column) || column.kind == CellKind::label) continue;
    const bool converted = !column.controllerField.empty();
    if (record.Text(converted ? column.controllerField : column.field) !=
        ToController(column.kind, cells_[Index(row)][i])) {
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
  const bool cleared = Trapped(Prefix("ClearData"), [this] {
    AllOrNothing([this] {
      for (auto& row : cells_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
          if (IsWritten(layout_.columns[i])) row[i].clear();
        }
      }
      dirty_.assign(dirty_.size(), "1");
      ForEachRecord([this](int row, RowSet& record) { StoreRow(row, record, true); }, true);
    });
    blnIsDirty_ = blnNeedsSaving_ = true;
    return true;
  });
  ShowInWindow();
  return cleared;
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
  const bool changed = Trapped(Prefix("ChangeResolution"), [&] {
    AllOrNothing([&] {
      ForEachRecord(
          [&](int row, RowSet& record) {
            if (!ScalesWithResolution(row)) return;
            for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
              std::string& cell = cells_[Index(row)][i];
              if (!cell.empty()) cell = Reformatted(layout_.columns[i].kind, cell, digits);
            }
            dirty_[Index(row)] = "1";
            // A row that is still being filled in reaches the file no more than by a store.
            StoreRow(row, record, IsDataSetComplete(row));
          },
          true);
    });
    blnIsDirty_ = blnNeedsSaving_ = true;
    return true;
  });
  ShowInWindow();
  return changed;
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
  if (SaveToDB()) LoadFromProject();
  frm_->PostUploadCommitted();
}

MotionTable::Snapshot MotionTable::TakeSnapshot() const {
  return {cells_, dirty_, blnIsDirty_, blnNeedsSaving_, frm_->NotCommitted()};
}

void MotionTable::RestoreSnapshot(const Snapshot& snapshot) {
  cells_ = snapshot.cells;
  dirty_ = snapshot.dirty;
  blnIsDirty_ = snapshot.isDirty;
  blnNeedsSaving_ = snapshot.needsSaving;
  frm_->RowsRestored(snapshot.notCommitted);
}

// ---- conversions

std::string MotionTable::ConvertUnitsToCounts(const std::string& text, UnitKind kind) const {
  if (text.empty() || text == "-") return text;
  return UnitsToCounts(text, FactorOf(OpenedProject(), kind));
}

std::string MotionTable::ConvertCountsToUnits(const std::string& counts, UnitKind kind) const {
  if (counts.empty() || counts == "-") return counts;
  const auto number = ParseFloat(counts);
  if (!number) throw NumberError("Type mismatch: '" + counts + "' is not a number");
  return CountsToUnits(*number, FactorOf(OpenedProject(), kind), OpenedProject().Resolution());
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
  const LimitedCounts counts =
      UnitsToLimitedCounts(formatted, FactorOf(OpenedProject(), kind), digits);
  if (counts.clamped) blnDataInvalidated_ = true;
  return counts.text;
}

std::string MotionTable::Reformatted(CellKind kind, const std::string& text, std::int16_t digits) {
  if (kind == CellKind::distance) return ReformattedNumber(UnitKind::distance, text, digits);
  if (kind == CellKind::speed) return ReformattedNumber(UnitKind::speed, text, digits);
  return text;
}

}  // namespace velmoor
