#include "tools/frmEditor.h"

#include <algorithm>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

// The choices of cmbShow, in its order.
enum class Wanted { all, changed, notDefault, toDownload, differs };

}  // namespace

void frmEditor::FormLoad() {
  DisableCells();
  digits_.Bind(ui().lblDigit, ui().cmbDigit, connections_, [this](const std::string& text) {
    const int row = CurrentRow();
    // A refused digit goes back to what the row holds.
    if (row > 0 && !PutValue(row, text)) CurrentRowChanged(row);
  });
  MakeTree();
  ParameterGridWindow::FormLoad();
  grid().SetSortMark(sortedBy_, descending_);
  connections_ += grid().HeadingClick.Connect([this](int column) { SortBy(column); });
  connections_ += ui().txtFilter.Change.Connect([this] { ApplyFilter(); });
  connections_ += ui().cmbShow.Click.Connect([this] { ApplyFilter(); });
  connections_ += ui().cmdDefault.Click.Connect([this] { ResetRow(); });
  connections_ += ui().cmdDefaultGroup.Click.Connect([this] { ResetGroup(); });
  connections_ += ui().cmdCompare.Click.Connect([this] {
    Requested.Raise(WindowRequest::compare);
    if (!IsOpen()) return;
    RefreshGrid();
    ApplyFilter();
  });
  ApplyFilter();
}

void frmEditor::DisableCells() {
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    source().SetLocked(row, LockedReason(tool().Text(row, Column::name)));
  }
}

void frmEditor::MakeTree() {
  std::vector<std::string> groups;
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    groups.push_back(tool().ParameterOf(row).definition.group);
  }
  groups_.emplace(groups);
  groups_->Bind(ui().vsGroups, connections_, [this] { ApplyFilter(); });
}

// ---- what of the list is shown

bool frmEditor::IsWanted(int row) {
  switch (static_cast<Wanted>(ui().cmbShow.ListIndex())) {
    case Wanted::changed:
      return tool().EditOf(row).has_value();
    case Wanted::notDefault:
      return !tool().IsDefault(row);
    case Wanted::toDownload:
      return tool().ParameterOf(row).IsMarked();
    case Wanted::differs:
      return tool().OtherInAmplifier(row).has_value();
    default:
      return true;
  }
}

bool frmEditor::IsFound(int row, const std::string& filter) {
  const auto holds = [&](int column) {
    return LowerCase(source().Text(source().GridRow(row), column)).find(filter) !=
           std::string::npos;
  };
  return holds(ParameterGrid::kParameter) || holds(ParameterGrid::kDescription);
}

void frmEditor::ApplyFilter() {
  const std::string filter = LowerCase(Trim(ui().txtFilter.Text()));
  std::vector<std::string> groups;
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    const bool wanted = IsWanted(row) && IsFound(row, filter);
    const std::string& group = tool().ParameterOf(row).definition.group;
    if (wanted) groups.push_back(group);
    const bool hidden = !wanted || !groups_->Holds(group);
    const int gridRow = source().GridRow(row);
    if (hidden != grid().RowHidden(gridRow)) grid().SetRowHidden(gridRow, hidden);
  }
  groups_->Count(groups);
  TellCompared();
  LeaveHiddenRow();
}

void frmEditor::TellCompared() {
  int seen = 0, different = 0;
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    if (tool().ParameterOf(row).seen) ++seen;
    if (tool().OtherInAmplifier(row)) ++different;
  }
  std::string words = "Not compared with the amplifier yet";
  if (seen > 0) {
    words = NumberText(different) + " of " + NumberText(seen) + " read from the amplifier differ";
  }
  ui().lblCompared.SetText(words);
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
  const bool locked = !source().LockedBecause(row).empty();
  digits_.Show(tool().Describe(row), locked);
  ui().cmdDefault.SetEnabled(!locked && !tool().IsDefault(row));
}

// An edited row stays in sight although the filter would hide it: nothing is looked for anew.
void frmEditor::AfterEdit(int row) {
  RefreshRow(row);
}

void frmEditor::ShowRow(int row) {
  grid().SetRowHidden(source().GridRow(row), false);
  ParameterGridWindow::ShowRow(row);
}

// ---- back to the defaults

void frmEditor::ResetRow() {
  const int row = CurrentRow();
  if (row > 0 && grid().FinishEdit()) PutValues({{row, tool().DefaultText(row)}});
}

// Of the whole branch, whatever else the filters hide of it.
void frmEditor::ResetGroup() {
  if (!grid().FinishEdit()) return;
  std::vector<std::pair<int, std::string>> values;
  for (int row = 1; row <= tool().RowsInArray(); ++row) {
    const bool open = source().LockedBecause(row).empty() && !tool().IsDefault(row);
    if (!open || !groups_->Holds(tool().ParameterOf(row).definition.group)) continue;
    values.emplace_back(row, tool().DefaultText(row));
  }
  const std::string group =
      groups_->Chosen().empty() ? "all parameters" : "'" + groups_->Chosen() + "'";
  if (values.empty()) {
    ShowInformation("What can be changed of " + group + " has its default value.");
    return;
  }
  if (AskGraveYesNo(NumberText(values.size()) + " values of " + group +
                    " will be set to their defaults.\rDo you wish to proceed?")) {
    PutValues(values);
  }
}

}  // namespace velmoor
