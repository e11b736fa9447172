#include "tools/frmEditor.h"

#include <algorithm>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr const char* kAllCategories = "All categories";

}  // namespace

void frmEditor::FormLoad() {
  DisableCells();
  digits_.Bind(ui().lblDigit, ui().cmbDigit, connections_, [this](const std::string& text) {
    const int row = CurrentRow();
    // A refused digit goes back to what the row holds.
    if (row > 0 && !PutValue(row, text)) CurrentRowChanged(row);
  });
  FillCategories();
  ParameterGridWindow::FormLoad();
  grid().SetSortMark(sortedBy_, descending_);
  connections_ += grid().HeadingClick.Connect([this](int column) { SortBy(column); });
  connections_ += grid().RowColChange.Connect([this] { TellWhyLocked(); });
  connections_ += ui().txtFilter.Change.Connect([this] { ApplyFilter(); });
  connections_ += ui().chkChangedOnly.Click.Connect([this] { ApplyFilter(); });
  connections_ += ui().cmbCategory.Click.Connect([this] { ApplyFilter(); });
}

void frmEditor::DisableCells() {
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    source().SetLocked(row, LockedReason(tool().Text(row, Column::name)));
  }
}

void frmEditor::FillCategories() {
  std::vector<std::string> categories{kAllCategories};
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    const std::string category = tool().Text(row, Column::category);
    if (std::find(categories.begin(), categories.end(), category) == categories.end()) {
      categories.push_back(category);
    }
  }
  ComboBox& combo = ui().cmbCategory;
  combo.SetItems(categories);
  combo.SetListIndex(0);
}

// ---- what of the list is shown

bool frmEditor::IsWanted(int row, const std::string& filter, const std::string& category) {
  if (ui().chkChangedOnly.Value() && !tool().IsMarked(row)) return false;
  if (!category.empty() && tool().Text(row, Column::category) != category) return false;
  const auto holds = [&](int column) {
    return LowerCase(source().Text(source().GridRow(row), column)).find(filter) !=
           std::string::npos;
  };
  return holds(ParameterGrid::kParameter) || holds(ParameterGrid::kDescription);
}

void frmEditor::ApplyFilter() {
  const std::string filter = LowerCase(Trim(ui().txtFilter.Text()));
  const ComboBox& combo = ui().cmbCategory;
  const std::string category = combo.ListIndex() > 0 ? combo.Text() : std::string();
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    const bool hidden = !IsWanted(row, filter, category);
    const int gridRow = source().GridRow(row);
    if (hidden != grid().RowHidden(gridRow)) grid().SetRowHidden(gridRow, hidden);
  }
  LeaveHiddenRow();
}

// The cursor goes to the first row in sight where its own was hidden.
void frmEditor::LeaveHiddenRow() {
  const int rows = tool().RowsInArray();
  if (grid().Row() < 1 || !grid().RowHidden(grid().Row())) return;
  int row = 1;
  while (row <= rows && grid().RowHidden(row)) ++row;
  if (row > rows) return;
  grid().SetCurrent(row, ParameterGrid::kValue);
  CurrentRowChanged(CurrentRow());
}

// A second click on the same heading turns the order round.
void frmEditor::SortBy(int column) {
  if (!grid().FinishEdit()) return;
  descending_ = column == sortedBy_ && !descending_;
  sortedBy_ = column;
  const int row = CurrentRow();
  source().SortBy(column, descending_);
  grid().SetSortMark(sortedBy_, descending_);
  RefreshGrid();
  ApplyFilter();
  if (row > 0) grid().SetCurrent(source().GridRow(row), ParameterGrid::kValue);
}

void frmEditor::StoreChanged() {
  ParameterGridWindow::StoreChanged();
  if (IsOpen()) ApplyFilter();
}

// ---- the current row

void frmEditor::CurrentRowChanged(int row) {
  ParameterGridWindow::CurrentRowChanged(row);
  if (row < 1 || row > tool().RowsInArray()) return;
  digits_.Show(tool().Describe(row), !source().LockedBecause(row).empty());
}

// An edited row stays in sight although the filter would hide it: nothing is looked for anew.
void frmEditor::AfterEdit(int row) {
  RefreshRow(row);
}

void frmEditor::ShowRow(int row) {
  grid().SetRowHidden(source().GridRow(row), false);
  ParameterGridWindow::ShowRow(row);
}

void frmEditor::TellWhyLocked() {
  const std::string reason = source().LockedBecause(CurrentRow());
  if (!reason.empty()) ShowInformation(reason);
}

}  // namespace velmoor
