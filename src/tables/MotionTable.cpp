#include "tables/MotionTable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "session/Session.h"
#include "tables/TableWindow.h"

namespace velmoor {
namespace {

// The three tables name their mark alike.
constexpr std::string_view kDirty = schema::Position::kDirty;

}  // namespace

MotionTable::MotionTable(const TableLayout& layout)
    : layout_(layout),
      stored_(static_cast<std::size_t>(layout.rows)),
      cells_(static_cast<std::size_t>(layout.rows),
             std::vector<std::string>(layout.columns.size())),
      marks_(static_cast<std::size_t>(layout.rows), false),
      copies_(static_cast<std::size_t>(layout.rows)) {
  for (StoredRow& row : stored_) {
    row.cells.resize(layout.columns.size());
    row.controller.resize(layout.columns.size());
  }
}

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
  cells_[Index(row)].at(static_cast<std::size_t>(column)) = text;
}

std::string MotionTable::DirtyCell(int row) const {
  return marks_[Index(row)] ? "1" : "0";
}

void MotionTable::SetDirtyCell(int row, bool dirty) {
  marks_[Index(row)] = dirty;
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

// ---- edits

bool MotionTable::IsTouched(int row) const {
  const StoredRow& stored = stored_[Index(row)];
  return cells_[Index(row)] != stored.cells || marks_[Index(row)] != stored.marked;
}

bool MotionTable::HoldsEdits() const {
  for (int row = 1; row <= layout_.rows; ++row) {
    if (cells_[Index(row)] != stored_[Index(row)].cells) return true;
  }
  return false;
}

void MotionTable::DropEdits() {
  for (std::size_t i = 0; i < stored_.size(); ++i) {
    cells_[i] = stored_[i].cells;
    marks_[i] = stored_[i].marked;
  }
}

void MotionTable::PutBackEdits(const Edits& edits) {
  cells_ = edits.cells;
  marks_ = edits.marks;
}

// ---- the window

void MotionTable::TakeWindow(std::unique_ptr<TableWindow> window) {
  frm_ = std::move(window);
  connections_ += frm_->ChangeAccepted.Connect([this] { frm_ChangeAccepted(); });
  connections_ += frm_->ChangeCanceled.Connect([this] {
    DropEdits();
    ShowInWindow();
  });
  connections_ += frm_->Closed.Connect([this] { Closed.Raise(); });
  connections_ += frm_->EditStateChanged.Connect([this] { EditStateChanged.Raise(); });
}

bool MotionTable::Show() {
  return frm_->Show(FormMode::modeless);
}

void MotionTable::Unload() {
  frm_->Unload();
  DropEdits();
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

// ---- the file

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

MotionTable::StoredRow MotionTable::ReadRow(const RowSet& record) const {
  StoredRow row;
  for (const TableColumn& column : layout_.columns) {
    row.cells.push_back(column.field.empty() ? std::string() : record.Text(column.field));
    const bool converted = !column.controllerField.empty();
    row.controller.push_back(converted ? record.Text(column.controllerField) : row.cells.back());
  }
  row.marked = record.Text(kDirty) == "1";
  return row;
}

void MotionTable::ReadFromDB() {
  ForEachRecord([this](int row, RowSet& record) { stored_[Index(row)] = ReadRow(record); }, false);
  doubts_.clear();
  ShowWhatIsSent();
  DropEdits();
  JudgeChanges(std::vector<StoredRow>(stored_.size()), Source::file);
  uploaded_.clear();
  copies_.assign(stored_.size(), {});
  acknowledged_.clear();
}

std::vector<std::string> MotionTable::ControllerRow(const std::vector<std::string>& cells,
                                                    const Rows& all, const Units& units) const {
  std::vector<std::string> controller;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    const bool converted = !column.controllerField.empty();
    controller.push_back(converted ? ToController(column.kind, cells[i], all, units) : cells[i]);
  }
  return controller;
}

// Whether the same text can mean another value now: a label, whose step may have moved. Any other
// text that stays keeps its value, of which it may show fewer digits.
bool MotionTable::MayMean(std::size_t column, const std::string& text) const {
  if (layout_.columns[column].kind != CellKind::next) return false;
  const auto label = std::ranges::find(layout_.columns, CellKind::label, &TableColumn::kind);
  const auto at = static_cast<std::size_t>(label - layout_.columns.begin());
  return std::ranges::any_of(
      stored_, [&](const StoredRow& row) { return !text.empty() && row.cells[at] == text; });
}

// The rows as a commit of the edits stores them. A step whose text stays but whose label of the
// next step has moved sends another number, and is marked too.
std::vector<MotionTable::StoredRow> MotionTable::EditedRows(const Units& units) const {
  std::vector<StoredRow> rows = stored_;
  for (int row = 1; row <= layout_.rows; ++row) {
    StoredRow& stored = rows[Index(row)];
    const bool complete = IsDataSetComplete(row);
    if (!IsStored(row)) continue;
    std::vector<std::string> cells = cells_[Index(row)];
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (!complete && IsWritten(layout_.columns[i])) cells[i].clear();
    }
    std::vector<std::string> controller = ControllerRow(cells, cells_, units);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (cells[i] == stored.cells[i] && !MayMean(i, cells[i]))
        controller[i] = stored.controller[i];
    }
    bool moved = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const bool sent = layout_.columns[i].kind != CellKind::label;
      moved = moved || (sent && controller[i] != stored.controller[i]);
    }
    const bool marked = StoredMark(row, complete) || (moved && complete);
    stored = {std::move(cells), std::move(controller), marked};
  }
  return rows;
}

void MotionTable::WriteRow(RowSet& record, const StoredRow& row) const {
  record.Edit();
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    if (!IsWritten(column)) continue;
    record.Set(column.field, row.cells[i]);
    if (!column.controllerField.empty()) record.Set(column.controllerField, row.controller[i]);
  }
  record.Set(kDirty, row.marked ? "1" : "0");
  record.Update();
}

void MotionTable::WriteRows(Database& database, const std::vector<StoredRow>& rows) const {
  const auto records = database.OpenTable(layout_.table, layout_.order);
  std::size_t i = 0;
  for (records->MoveFirst(); !records->AtEnd() && i < rows.size(); records->MoveNext(), ++i) {
    const StoredRow& before = stored_[i];
    const StoredRow& row = rows[i];
    const bool same = row.cells == before.cells && row.controller == before.controller &&
                      row.marked == before.marked;
    if (!same) WriteRow(*records, row);
  }
}

void MotionTable::TakeStored(std::vector<StoredRow> rows, Source source) {
  const std::vector<StoredRow> before = std::exchange(stored_, std::move(rows));
  DropEdits();
  JudgeChanges(before, source);
}

bool MotionTable::ChangeAccepted() {
  const bool stored = Trapped(Prefix("SaveToDB"), [this] {
    std::vector<StoredRow> rows = EditedRows(UnitsOf(OpenedProject()));
    const auto database = OpenForWriting(strDatabasePath_);
    try {
      WriteRows(*database, rows);
      database->Commit();
    } catch (...) {
      database->Rollback();
      throw;
    }
    TakeStored(std::move(rows), Source::typed);
    return true;
  });
  if (stored) Applied.Raise();
  return stored;
}

std::int16_t MotionTable::GetNumberOfNewRows() const {
  return Narrow<std::int16_t>(std::ranges::count_if(stored_, &StoredRow::marked));
}

void MotionTable::Mark(const std::vector<int>& rows) {
  if (rows.empty()) return;
  ForEachRecord(
      [&](int row, RowSet& record) {
        if (!std::ranges::binary_search(rows, row) || record.Text(kDirty) == "1") return;
        record.Edit();
        record.Set(kDirty, "1");
        record.Update();
      },
      true);
  for (const int row : rows) {
    stored_[Index(row)].marked = true;
    marks_[Index(row)] = true;
  }
}

}  // namespace velmoor
