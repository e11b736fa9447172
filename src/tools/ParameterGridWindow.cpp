#include "tools/ParameterGridWindow.h"

#include "platform/Clipboard.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr int kValueWidth = 22;  // the last column takes what room there is beyond

}  // namespace

ParameterGridWindow::ParameterGridWindow(const std::string& formName, ParameterToolBase& tool,
                                         ParameterWindow rules)
    : GridWindow(formName), tool_(tool), rules_(rules), source_(tool), trapPrefix_(formName) {}

void ParameterGridWindow::FormLoad() {
  Grid& vsFG = grid();
  vsFG.Bind(&source_);
  connections_ += vsFG.ValidateEdit.Connect([this](GridEdit& edit) { vsFG_ValidateEdit(edit); });
  connections_ += vsFG.AfterEdit.Connect([this](int row, int) { vsFG_AfterEdit(row); });
  connections_ += vsFG.RowColChange.Connect([this] { vsFG_RowColChange(); });
  connections_ += vsFG.KeyDown.Connect([this](KeyEvent& key) { vsFG_KeyDown(key); });
  connections_ +=
      vsFG.Tip.Connect([this](int row, int, std::string& tip) { vsFG_MouseMove(row, tip); });
  vsFG.SetColumnWidth(ParameterGrid::kValue, kValueWidth);
  vsFG.SetCurrent(1, ParameterGrid::kValue);
  vsFG.SetFocus();
  CurrentRowChanged(1);
}

// A sister tool may have stored newer values, and the units may be others, since the window was in
// front. Nothing else is read again: that would give up an open edit.
void ParameterGridWindow::FormActivate() {
  const Project& project = OpenedProject();
  const std::string units =
      project.DistanceUnits() + '|' + project.SpeedUnits() + '|' + project.AccelerationUnits();
  if (tool_.ReadUntouchedRows() || units != shownUnits_) UpdateUnitsInDescription();
  shownUnits_ = units;
}

bool ParameterGridWindow::Accept(int row, std::string& text) {
  return Trapped(trapPrefix_ + ".vsFG_ValidateEdit: ", [&] {
    const ParameterRow described = tool_.Describe(row);
    const CellCheck check = CheckParameter(OpenedProject(), rules_, described, text);
    if (!check.accepted) {
      if (!check.words.empty()) ShowExclamation(check.words);
      return false;
    }
    text = check.text;
    if (text != described.value) MarkEdited();
    return true;
  });
}

bool ParameterGridWindow::PutValue(int row, std::string text) {
  if (!Accept(row, text)) return false;
  source_.SetText(row, ParameterGrid::kValue, text);
  grid().RefreshRow(row);
  vsFG_AfterEdit(row);
  return true;
}

void ParameterGridWindow::vsFG_ValidateEdit(GridEdit& edit) {
  edit.cancel = !Accept(edit.row, edit.text);
}

void ParameterGridWindow::vsFG_AfterEdit(int row) {
  AfterEdit(row);
  if (grid().Row() == row) CurrentRowChanged(row);
}

void ParameterGridWindow::vsFG_RowColChange() {
  const int row = grid().Row();
  if (row < 1) return;
  // Only the value can be current.
  if (grid().Column() != ParameterGrid::kValue) grid().SetCurrent(row, ParameterGrid::kValue);
  CurrentRowChanged(row);
}

void ParameterGridWindow::CurrentRowChanged(int row) {
  if (row < 1 || row > tool_.RowsInArray()) return;
  form().label("lblHelp").SetText(tool_.Help(row));
}

void ParameterGridWindow::vsFG_KeyDown(KeyEvent& key) {
  if (key.code == keys::kTab && key.shift) {
    key.handled = true;
    GoUp();
    return;
  }
  // The other keys belong to an open edit.
  if (grid().IsEditing()) return;
  if (key.code == keys::kEnter && !key.AnyShift()) {
    key.handled = true;
    grid().BeginEdit();
  } else if (key.code == 'C' && key.ctrl && !key.shift && !key.alt) {
    key.handled = true;
    CopySelection();
  }
}

void ParameterGridWindow::GoUp() {
  if (!grid().FinishEdit()) return;
  int row = grid().Row() - 1;
  while (row >= 1 && grid().RowHidden(row)) --row;
  if (row < 1) return;
  grid().SetCurrent(row, ParameterGrid::kValue);
  RefreshGrid();
  CurrentRowChanged(row);
}

// Only what can be seen is copied: a filter may hide rows between others.
void ParameterGridWindow::CopySelection() {
  const GridBlock block = grid().Selection();
  if (block.IsEmpty() || world().clipboard == nullptr) return;
  std::string text;
  for (int row = block.top; row <= block.bottom; ++row) {
    if (grid().RowHidden(row)) continue;
    if (!text.empty()) text += '\n';
    std::string line;
    for (int column = block.left; column <= block.right; ++column) {
      if (grid().ColumnHidden(column)) continue;
      if (column > block.left) line += '\t';
      line += source_.Text(row, column);
    }
    text += line;
  }
  world().clipboard->SetText(text);
}

void ParameterGridWindow::vsFG_MouseMove(int row, std::string& tip) const {
  if (row < 1 || tool_.Rows().Text(row, Column::name).empty()) return;
  tip = ParameterTip(OpenedProject(), tool_.Describe(row));
  const std::string reason = source_.LockedBecause(row);
  if (!reason.empty()) tip += "\n" + reason;
}

}  // namespace velmoor
