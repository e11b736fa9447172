#include "tools/ParameterGridWindow.h"

#include <utility>

#include "platform/Clipboard.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr int kValueWidth = 22;  // the last column takes what room there is beyond
constexpr const char* kEdited = "1";

}  // namespace

ParameterGridWindow::ParameterGridWindow(const Layout& layout, ParameterToolBase& tool,
                                         ParameterWindow rules)
    : GridWindow(layout), tool_(tool), rules_(rules), source_(tool) {}

void ParameterGridWindow::FormLoad() {
  GridWindow::FormLoad();
  Grid& vsFG = grid();
  vsFG.Bind(&source_);
  history_.Reset(HistoryRows());
  connections_ += vsFG.ValidateEdit.Connect([this](GridEdit& edit) { vsFG_ValidateEdit(edit); });
  connections_ +=
      vsFG.AfterEdit.Connect([this](int row, int) { vsFG_AfterEdit(source_.ToolRow(row)); });
  connections_ += vsFG.RowColChange.Connect([this] { vsFG_RowColChange(); });
  connections_ += vsFG.KeyDown.Connect([this](KeyEvent& key) { vsFG_KeyDown(key); });
  connections_ += vsFG.Tip.Connect(
      [this](int row, int, std::string& tip) { vsFG_MouseMove(source_.ToolRow(row), tip); });
  vsFG.SetColumnWidth(ParameterGrid::kValue, kValueWidth);
  vsFG.SetCurrent(1, ParameterGrid::kValue);
  vsFG.SetFocus();
  CurrentRowChanged(CurrentRow());
}

void ParameterGridWindow::StoreChanged() {
  if (!IsOpen()) return;
  EditsChanged();
}

// An open edit is not given up: the rest is shown when it has ended.
void ParameterGridWindow::EditsChanged() {
  SetNotCommitted(tool_.HoldsEdits() || HoldsMore());
  if (grid().IsEditing()) return;
  RefreshGrid();
  CurrentRowChanged(CurrentRow());
  EditStateChanged.Raise();
}

bool ParameterGridWindow::CommitPending() {
  if (!IsOpen()) return true;
  // An access key presses a button while a cell is still under edit.
  return grid().FinishEdit() && (NotCommitted() ? Commit() : MayCommit());
}

bool ParameterGridWindow::Accept(int row, std::string& text) {
  return Trapped(FormName() + ".vsFG_ValidateEdit: ", [&] {
    const ParameterRow described = tool_.Describe(row);
    const CellCheck check = CheckParameter(OpenedProject(), rules_, described, text);
    if (!check.accepted) {
      if (!check.words.empty()) ShowExclamation(check.words);
      return false;
    }
    text = check.text;
    BeforeEdit();
    if (text != described.value) MarkEdited();
    return true;
  });
}

bool ParameterGridWindow::PutValue(int row, std::string text) {
  if (!Accept(row, text)) return false;
  tool_.EditValue(row, text);
  RefreshRow(row);
  vsFG_AfterEdit(row);
  return true;
}

void ParameterGridWindow::vsFG_ValidateEdit(GridEdit& edit) {
  edit.cancel = !Accept(source_.ToolRow(edit.row), edit.text);
}

void ParameterGridWindow::vsFG_AfterEdit(int row) {
  EditDone();
  AfterEdit(row);
  if (CurrentRow() == row) CurrentRowChanged(row);
}

void ParameterGridWindow::vsFG_RowColChange() {
  const int row = grid().Row();
  if (row < 1) return;
  // Only the value can be current.
  if (grid().Column() != ParameterGrid::kValue) grid().SetCurrent(row, ParameterGrid::kValue);
  CurrentRowChanged(CurrentRow());
  EditStateChanged.Raise();
}

void ParameterGridWindow::CurrentRowChanged(int row) {
  if (row < 1 || row > tool_.RowsInArray()) return;
  lblHelp_->SetText(tool_.Help(row));
  const std::string reason = source_.LockedBecause(row);
  Label& limits = *lblLimits_;
  limits.SetText(reason.empty() ? LimitsWithUnit(OpenedProject(), tool_.Describe(row)) : reason);
  limits.SetTone(Tone::faint);
}

// ---- undo and redo

EditHistory::Rows ParameterGridWindow::HistoryRows() const {
  EditHistory::Rows rows;
  for (int row = 1; row <= tool_.RowsInArray(); ++row) {
    const auto edit = tool_.EditOf(row);
    rows.push_back({edit ? kEdited : "", edit.value_or(std::string())});
  }
  return rows;
}

std::optional<std::string> ParameterGridWindow::RememberedEdit(std::size_t place) const {
  const auto& state = history_.Now()[place];
  if (state[0] != kEdited) return std::nullopt;
  return state[1];
}

// An edit that came from a sister's window, and a commit, are no steps of the user's here: the
// history begins anew behind them.
void ParameterGridWindow::BeforeEdit() {
  EditHistory::Rows now = HistoryRows();
  if (now != history_.Now()) history_.Reset(std::move(now));
}

void ParameterGridWindow::EditDone() {
  (void)history_.Record(HistoryRows());
  SetNotCommitted(tool_.HoldsEdits() || HoldsMore());
  EditStateChanged.Raise();
}

bool ParameterGridWindow::CanUndo() const {
  return IsOpen() && history_.CanUndo() && HistoryRows() == history_.Now();
}

bool ParameterGridWindow::CanRedo() const {
  return IsOpen() && history_.CanRedo() && HistoryRows() == history_.Now();
}

void ParameterGridWindow::Undo() {
  if (IsOpen() && grid().FinishEdit() && CanUndo()) PutBack(history_.Undo());
}

void ParameterGridWindow::Redo() {
  if (IsOpen() && grid().FinishEdit() && CanRedo()) PutBack(history_.Redo());
}

void ParameterGridWindow::PutBack(const std::vector<EditHistory::Assignment>& cells) {
  const auto place = cells.front().row;
  const int row = static_cast<int>(place) + 1;
  tool_.PutBackEdit(row, RememberedEdit(place));
  // A sister that follows edits of the row follows this one too.
  AfterEdit(row);
  SetNotCommitted(tool_.HoldsEdits() || HoldsMore());
  ShowRow(row);
  RefreshGrid();
  CurrentRowChanged(CurrentRow());
  EditStateChanged.Raise();
}

void ParameterGridWindow::ShowRow(int row) {
  const int gridRow = source_.GridRow(row);
  if (!grid().RowHidden(gridRow)) grid().SetCurrent(gridRow, ParameterGrid::kValue);
}

// ---- keys

void ParameterGridWindow::vsFG_KeyDown(KeyEvent& key) {
  if (key.code == keys::kTab && key.shift) {
    key.handled = true;
    GoUp();
    return;
  }
  // The other keys belong to an open edit.
  if (!grid().IsEditing()) key.handled = RunKey(key);
}

bool ParameterGridWindow::RunKey(const KeyEvent& key) {
  if (key.code == keys::kEnter && !key.AnyShift()) {
    grid().BeginEdit();
    return true;
  }
  if (!key.ctrl || key.alt) return false;
  // In a window that blocks the main window its menu cannot be reached.
  if (key.code == 'C' && !key.shift) {
    Copy();
  } else if (key.code == 'Z' && !key.shift) {
    Undo();
  } else if ((key.code == 'Z' && key.shift) || (key.code == 'Y' && !key.shift)) {
    Redo();
  } else {
    return false;
  }
  return true;
}

void ParameterGridWindow::GoUp() {
  if (!grid().FinishEdit()) return;
  int row = grid().Row() - 1;
  while (row >= 1 && grid().RowHidden(row)) --row;
  if (row < 1) return;
  grid().SetCurrent(row, ParameterGrid::kValue);
  RefreshGrid();
  CurrentRowChanged(CurrentRow());
}

bool ParameterGridWindow::CanCopy() const {
  return IsOpen() && !const_cast<ParameterGridWindow*>(this)->grid().Selection().IsEmpty();
}

// Only what can be seen is copied: a filter may hide rows between others.
void ParameterGridWindow::Copy() {
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
  if (row < 1) return;
  tip = ParameterTip(OpenedProject(), tool_.Describe(row));
  const std::string reason = source_.LockedBecause(row);
  if (!reason.empty()) tip += "\n" + reason;
}

}  // namespace velmoor
