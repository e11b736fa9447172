#include "tables/TableWindow.h"

#include <algorithm>

#include "platform/Clipboard.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Session.h"
#include "tables/CellRules.h"

namespace velmoor {
namespace {

constexpr std::size_t kMostFaultsShown = 12;
constexpr int kLampWidth = 6;  // characters
constexpr const char* kCsvFilter = "Comma-separated values (*.csv)|*.csv|All files (*.*)|*.*";

}  // namespace

TableWindow::TableWindow(const Layout& layout, TableWindowInfo info, MotionTable& table)
    : GridWindow(layout),
      info_(std::move(info)),
      table_(table),
      source_(table, info_.numberHeading, info_.firstNumber) {}

void TableWindow::FormLoad() {
  GridWindow::FormLoad();
  source_.SetHeadings(Headings(table_.Layout(), OpenedProject()));
  grid().Bind(&source_);
  connections_ += grid().ValidateEdit.Connect([this](GridEdit& edit) { vsFG_ValidateEdit(edit); });
  connections_ += grid().AfterEdit.Connect([this](int, int) { EditDone(); });
  connections_ += grid().RowColChange.Connect([this] { EditStateChanged.Raise(); });
  connections_ += grid().Tip.Connect([this](int row, int column, std::string& tip) {
    if (column < 1) {
      tip = "A stripe: the row has to be downloaded";
    } else if (row == 0) {
      tip = table_.Layout().columns[static_cast<std::size_t>(column) - 1].tip;
    } else {
      tip = CellTip(row, column - 1);
    }
  });
  history_.Reset(HistoryRows());
  LayOutColumns();
  grid().SetCurrent(1, 1);
  RowsShown();
}

void TableWindow::LayOutColumns() {
  const int columns = source_.Columns();
  for (int column = 1; column < columns; ++column) {
    if (source_.Traits(1, column).lamp == CellLamp::none) {
      grid().SetColumnShare(column);
    } else {
      grid().SetColumnWidth(column, kLampWidth);
    }
  }
}

void TableWindow::UpdateUnitsInHeader() {
  if (!IsOpen()) return;
  source_.SetHeadings(Headings(table_.Layout(), OpenedProject()));
  RefreshGrid();
  grid().Bind(&source_);  // the columns fit the new words
  RowsShown();
}

void TableWindow::LoadFlexGrid() {
  history_.Reset(HistoryRows());
  if (!IsOpen()) return;
  SetIsDirty(table_.HoldsEdits());
  SetNotCommitted(table_.HoldsEdits());
  RefreshGrid();
  RowsShown();
  EditStateChanged.Raise();
}

void TableWindow::EditsApplied() {
  history_.Reset(HistoryRows());
  EditStateChanged.Raise();
}

// ---- editing

void TableWindow::vsFG_ValidateEdit(GridEdit& edit) {
  const bool checked = Trapped(FormName() + ".vsFG_ValidateEdit: ", [&] {
    const std::string text(Trim(edit.text));
    const CellCheck check = Check(edit.row, edit.column - 1, text);
    if (!check.accepted) {
      if (!check.words.empty()) ShowExclamation(check.words);
      edit.cancel = true;
      // A text that was typed stays for the user to correct.
      if (source_.Traits(edit.row, edit.column).comboItems.empty())
        edit.hint = OneLine(FaultAlone(check.words));
      return true;
    }
    edit.text = check.text;
    // Leaving a cell as it is changes nothing.
    if (edit.text == table_.Text(edit.row, edit.column - 1)) edit.cancel = true;
    return true;
  });
  if (!checked) edit.cancel = true;
}

EditHistory::Rows TableWindow::HistoryRows() const {
  EditHistory::Rows rows = table_.Cells();
  for (int row = 1; row <= table_.RowsInArray(); ++row) {
    rows[static_cast<std::size_t>(row) - 1].push_back(table_.DirtyCell(row));
  }
  return rows;
}

void TableWindow::EditDone() {
  MotionTable::Rows before = history_.Now();
  for (auto& row : before) row.pop_back();  // the marks
  FollowEdits(before);
  table_.MarkChangesSince(before);
  if (!history_.Record(HistoryRows())) return;
  MarkEdited();
  RefreshGrid();
  RowsShown();
  EditStateChanged.Raise();
}

void TableWindow::PutBack(const std::vector<EditHistory::Assignment>& texts) {
  if (texts.empty()) return;
  const std::size_t marks = table_.Layout().columns.size();
  for (const auto& text : texts) {
    const int row = static_cast<int>(text.row) + 1;
    if (text.column == marks) {
      table_.SetDirtyCell(row, text.text == "1");
    } else {
      table_.SetText(row, static_cast<int>(text.column), text.text);
    }
  }
  SetNotCommitted(table_.HoldsEdits());
  RefreshGrid();
  RowsShown();
  EditStateChanged.Raise();
}

bool TableWindow::CanUndo() const {
  return IsOpen() && history_.CanUndo();
}

bool TableWindow::CanRedo() const {
  return IsOpen() && history_.CanRedo();
}

void TableWindow::Undo() {
  if (CanUndo() && grid().FinishEdit()) PutBack(history_.Undo());
}

void TableWindow::Redo() {
  if (CanRedo() && grid().FinishEdit()) PutBack(history_.Redo());
}

bool TableWindow::Accepted(const std::vector<std::string>& faults) {
  if (faults.empty()) return true;
  std::string words;
  for (std::size_t i = 0; i < std::min(faults.size(), kMostFaultsShown); ++i) {
    words += faults[i] + "\r";
  }
  if (faults.size() > kMostFaultsShown) {
    words += "and " + NumberText(faults.size() - kMostFaultsShown) + " more.\r";
  }
  ShowExclamation(words + "Nothing has been changed.");
  return false;
}

CellContext TableWindow::Context() const {
  return {[this](int row, int column, const std::string& text) {
            return text.empty() ? CellCheck::Accept(text) : Check(row, column, text);
          },
          [this](int row, int column) {
            return info_.numberHeading + " " + NumberText(row - 1 + info_.firstNumber) + ", " +
                   source_.Text(0, column + 1);
          }};
}

// ---- the selection

GridBlock TableWindow::Selection() const {
  return IsOpen() ? const_cast<TableWindow*>(this)->grid().Selection() : GridBlock{};
}

bool TableWindow::IsEditing() const {
  return const_cast<TableWindow*>(this)->grid().IsEditing();
}

std::optional<CellBlock> TableWindow::SelectedBlock() const {
  const GridBlock block = Selection();
  if (block.IsEmpty()) return std::nullopt;
  const int right = block.right < 1 ? source_.Columns() - 1 : block.right;
  return CellBlock{block.top, std::max(block.left, 1) - 1, block.bottom, right - 1};
}

CellPlace TableWindow::CurrentCell() const {
  if (!IsOpen()) return {};
  Grid& cells = const_cast<TableWindow*>(this)->grid();
  const int row = cells.Row();
  const int column = std::max(cells.Column(), 1);
  if (row < 1 || !source_.Traits(row, column).editable) return {};
  return {row, column - 1};
}

bool TableWindow::CanCopy() const {
  return !Selection().IsEmpty();
}

bool TableWindow::CanCut() const {
  const GridBlock block = Selection();
  return !block.IsEmpty() && source_.Traits(block.top, std::max(block.left, 1)).editable;
}

bool TableWindow::CanPaste() const {
  if (CurrentCell().row == 0) return false;
  return HoldsBuffer() || (world().clipboard != nullptr && !world().clipboard->Text().empty());
}

void TableWindow::Copy() {
  if (!grid().FinishEdit()) return;
  const auto block = SelectedBlock();
  const CellPlace cell = CurrentCell();
  const bool one = Selection().IsOneCell() && cell.row > 0;
  if (!block && !one) return;
  const std::string text =
      CopyBlock(table_, one ? BufferBlock(cell.row, cell.column) : block.value());
  if (one) CopyIntoBuffer(cell.row, cell.column);
  copied_ = one ? text : std::string();
  if (world().clipboard != nullptr) world().clipboard->SetText(text);
  EditStateChanged.Raise();
}

void TableWindow::Cut() {
  if (!grid().FinishEdit()) return;
  Copy();
  if (!Selection().IsOneCell()) return ClearSelection();
  const CellPlace cell = CurrentCell();
  if (cell.row == 0) return;
  CutIntoBuffer(cell.row, cell.column);
  EditDone();
}

// The newest copy wins: the buffer, unless another text has come to the clipboard since.
void TableWindow::Paste() {
  if (!CanPaste() || !grid().FinishEdit()) return;
  const CellPlace cell = CurrentCell();
  const std::string text = world().clipboard != nullptr ? world().clipboard->Text() : copied_;
  const bool fromBuffer = HoldsBuffer() && (text.empty() || text == copied_);
  if (fromBuffer && Selection().IsOneCell()) {
    PasteFromBuffer(cell.row, cell.column);
    return EditDone();
  }
  const auto block = SelectedBlock();
  if (block && Accepted(PasteBlock(table_, *block, text, Context()))) EditDone();
}

void TableWindow::FillSelection() {
  const auto block = SelectedBlock();
  if (block && Accepted(FillDown(table_, *block, Context()))) EditDone();
}

void TableWindow::ClearSelection() {
  const auto block = SelectedBlock();
  if (block && Accepted(ClearBlock(table_, *block, Context()))) EditDone();
}

// ---- commands

void TableWindow::OnKey(KeyEvent& key) {
  if (key.code != keys::kDelete || key.AnyShift() || IsEditing()) return GridWindow::OnKey(key);
  ClearSelection();
  key.handled = true;
}

void TableWindow::Run(const std::string& command, const std::function<void()>& work) {
  Trapped(FormName() + "." + command + "_Click: ", [&] {
    if (grid().FinishEdit()) work();
    return true;
  });
}

void TableWindow::FindNext() {
  const std::string wanted(Trim(txtFind_->Text()));
  if (wanted.empty()) return txtFind_->SetFocus();
  const CellPlace found =
      FindText(table_, {std::max(grid().Row(), 0), grid().Column() - 1}, wanted);
  lblFound_->SetText(found.row == 0 ? "Not found" : "");
  if (found.row == 0 || !grid().FinishEdit()) return;
  grid().SetCurrent(found.row, found.column + 1);
  grid().SetFocus();
  RowsShown();
  EditStateChanged.Raise();
}

void TableWindow::ImportFile() {
  const auto path =
      world().dialogs->OpenFile({"Import " + info_.caption, kCsvFilter, "csv", "", ""});
  if (path) Import(world().files->ReadAll(*path));
}

void TableWindow::Import(const std::string& text) {
  if (grid().FinishEdit() && Accepted(ImportText(text))) EditDone();
}

void TableWindow::GoToRow(int row) {
  if (!IsOpen() || !grid().FinishEdit()) return;
  grid().SetCurrent(row, 1);
  grid().RowColChange.Raise();
}

void TableWindow::ExportFile() {
  const auto path = world().dialogs->SaveFile(
      {"Export " + info_.caption, kCsvFilter, "csv", "", info_.caption + ".csv"}, true);
  if (path) world().files->WriteDurably(*path, ExportText());
}

}  // namespace velmoor
