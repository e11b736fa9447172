#include "tools/ParameterGridWindow.h"

#include <set>
#include <utility>

#include "platform/Clipboard.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

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
  connections_ += vsFG.EditDenied.Connect([this](int row) { TellWhyLocked(source_.ToolRow(row)); });
  connections_ += vsFG.Tip.Connect(
      [this](int row, int, std::string& tip) { vsFG_MouseMove(source_.ToolRow(row), tip); });
  ShowColumns();
  vsFG.SetCurrent(1, ParameterGrid::kValue);
  vsFG.SetFocus();
  CurrentRowChanged(CurrentRow());
}

void ParameterGridWindow::ShowColumns() {
  constexpr int kValueWidth = 22, kValueBeside = 18;
  struct Width {
    int column, characters;
  };
  constexpr Width kFurther[] = {{ParameterGrid::kUnit, 9},
                                {ParameterGrid::kDefault, 11},
                                {ParameterGrid::kRange, 24},
                                {ParameterGrid::kNotes, 16}};
  // The last column takes what room there is beyond.
  const bool all = rules_ == ParameterWindow::editor;
  grid().SetColumnWidth(ParameterGrid::kValue, all ? kValueBeside : kValueWidth);
  grid().SetColumnHidden(ParameterGrid::kCategory, !all);
  for (const Width& width : kFurther) {
    grid().SetColumnHidden(width.column, !all);
    grid().SetColumnWidth(width.column, width.characters);
  }
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

CellCheck ParameterGridWindow::Check(int row, const std::string& text) const {
  return CheckParameter(OpenedProject(), rules_, tool_.Describe(row), text);
}

bool ParameterGridWindow::Accept(int row, std::string& text) {
  return Trapped(FormName() + ".vsFG_ValidateEdit: ", [&] {
    const CellCheck check = Check(row, text);
    if (!check.accepted) {
      if (!check.words.empty()) ShowExclamation(check.words);
      return false;
    }
    text = check.text;
    BeforeEdit();
    if (text != tool_.Text(row, Column::value)) MarkEdited();
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

void ParameterGridWindow::PutValues(const std::vector<std::pair<int, std::string>>& values) {
  Trapped(FormName() + ".PutValues: ", [&] {
    std::string refused;
    BeforeEdit();
    for (const auto& [row, text] : values) {
      const CellCheck check = Check(row, text);
      if (check.accepted) {
        tool_.EditValue(row, check.text);
        AfterEdit(row);
      } else {
        refused += (refused.empty() ? "" : "\r\r") + check.words;
      }
    }
    EditDone();
    RefreshGrid();
    CurrentRowChanged(CurrentRow());
    if (!refused.empty()) ShowExclamation(refused);
    return true;
  });
}

// A text that was typed stays for the user to correct; a choice of a list goes.
void ParameterGridWindow::vsFG_ValidateEdit(GridEdit& edit) {
  const int row = source_.ToolRow(edit.row);
  edit.cancel = !Accept(row, edit.text);
  const std::string range = source_.RangeText(row);
  if (edit.cancel && !edit.text.empty() && edit.comboIndex < 0 && !range.empty()) {
    edit.hint = "Range: " + range;
  }
}

void ParameterGridWindow::TellWhyLocked(int row) const {
  ShowInformation(source_.LockedBecause(row));
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
  const int row = static_cast<int>(cells.front().row) + 1;
  std::set<std::size_t> places;
  for (const EditHistory::Assignment& cell : cells) places.insert(cell.row);
  for (const std::size_t place : places) {
    const int each = static_cast<int>(place) + 1;
    tool_.PutBackEdit(each, RememberedEdit(place));
    // A sister that follows edits of the row follows this one too.
    AfterEdit(each);
    ShowRow(each);
  }
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

void ParameterGridWindow::OnKey(KeyEvent& key) {
  // The other keys belong to an open edit.
  if (!grid().IsEditing()) key.handled = RunKey(key);
  if (!key.handled) GridWindow::OnKey(key);
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
