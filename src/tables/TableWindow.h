// The base of the windows of the motion tables: editing as users of spreadsheets expect it.
//
// Beside the frame of every grid window: the check of an edit, blocks through the clipboard, fill
// down, clear, undo and redo since the last Apply, find, and CSV files from the window's menu. Grid
// column 0 is the row's number; grid column n + 1 is the table's column n.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/Project.h"
#include "tables/MotionTable.h"
#include "tables/TableBlock.h"
#include "tables/TableGrid.h"
#include "tools/CellCheck.h"
#include "windows/EditHistory.h"
#include "windows/EditTarget.h"
#include "windows/GridWindow.h"

namespace velmoor {

struct TableWindowInfo {
  std::string caption;
  std::string numberHeading;  // of the grid's first column
  int firstNumber;            // that its first row shows
};

class TableWindow : public GridWindow, public EditTarget {
 public:
  bool Show(FormMode mode) { return GridWindow::Show(info_.caption, mode); }
  // The unit's words changed.
  void UpdateUnitsInHeader();
  // The rows came from elsewhere: shows them, and edits beside them; earlier ones can no longer be
  // undone.
  void LoadFlexGrid();
  // What was edited has been stored: undo begins anew.
  void EditsApplied();

  // The row from 1 becomes the current one, where no edit is open that is refused.
  void GoToRow(int row);

  // Takes a text of comma-separated values as an edit of the window, which must be on show.
  void Import(const std::string& text);

  // ---- the Edit menu
  [[nodiscard]] bool CanCopy() const override;
  [[nodiscard]] bool CanCut() const override;
  [[nodiscard]] bool CanPaste() const override;
  [[nodiscard]] bool CanUndo() const override;
  [[nodiscard]] bool CanRedo() const override;
  void Cut() override;
  void Copy() override;
  void Paste() override;
  void Undo() override;
  void Redo() override;

  Event<> EditStateChanged;

 protected:
  TableWindow(const Layout& layout, TableWindowInfo info, MotionTable& table);

  // The layouts have what GridWindow needs, the row to find by, and the menu of tables.
  template <typename Ui>
  void Take(const Ui& ui) {
    GridWindow::Take(ui);
    txtFind_ = &ui.txtFind;
    lblFound_ = &ui.lblFound;
    connections_ += ui.cmdFind.Click.Connect([this] { FindNext(); });
    using Id = typename Ui::Id;
    Connect(ui, Id::mnuTableImport, [this] { ImportFile(); });
    Connect(ui, Id::mnuTableExport, [this] { ExportFile(); });
    Connect(ui, Id::mnuTableFillDown, [this] { FillSelection(); });
    Connect(ui, Id::mnuTableClear, [this] { ClearSelection(); });
    Connect(ui, Id::mnuTableFindNext, [this] { FindNext(); });
    Connect(ui, Id::mnuCellsCut, [this] { Cut(); });
    Connect(ui, Id::mnuCellsCopy, [this] { Copy(); });
    Connect(ui, Id::mnuCellsPaste, [this] { Paste(); });
  }
  // Runs `work` when the user chooses the entry, behind the end of an open edit.
  template <typename Ui>
  void Connect(const Ui& ui, typename Ui::Id entry, std::function<void()> work) {
    connections_ += ui.commands[entry].Chosen.Connect(
        [this, name = ui.commands.NameOf(entry), work = std::move(work)] { Run(name, work); });
  }

  // ---- what a table adds
  [[nodiscard]] virtual CellCheck Check(int row, int column, const std::string& text) const = 0;
  [[nodiscard]] virtual std::string ExportText() const = 0;
  [[nodiscard]] virtual std::vector<std::string> ImportText(const std::string& text) = 0;
  // Cells have changed since `before`: what hangs on them follows.
  virtual void FollowEdits(const MotionTable::Rows& /*before*/) {}
  // What the cell means, in words.
  [[nodiscard]] virtual std::string CellTip(int /*row*/, int /*column*/) const { return {}; }
  // The rows that are shown may be others.
  virtual void RowsShown() {}
  void OnKey(KeyEvent& key) override;
  [[nodiscard]] const GridSource& Cells() const override { return source_; }

  // ---- the buffer of a single selection; true where it did the work
  virtual void CopyIntoBuffer(int row, int column) = 0;
  virtual void CutIntoBuffer(int row, int column) = 0;
  virtual void PasteFromBuffer(int row, int column) = 0;
  [[nodiscard]] virtual bool HoldsBuffer() const = 0;
  // What a copy of that single cell puts on the clipboard for other programs.
  [[nodiscard]] virtual CellBlock BufferBlock(int row, int column) const = 0;

  void FormLoad() override;
  // How wide the columns are; here, lamps are narrow and the others share the rest.
  virtual void LayOutColumns();
  // Ends an edit of any size: what follows it, marks, history, display.
  void EditDone();
  // Shows what was refused, in one box; true where nothing was.
  static bool Accepted(const std::vector<std::string>& faults);
  [[nodiscard]] TableGrid& source() { return source_; }
  [[nodiscard]] const TableGrid& source() const { return source_; }
  // The row and the table's column under the cursor, the first one where it stands at the row's
  // number; row 0: none.
  [[nodiscard]] CellPlace CurrentCell() const;
  [[nodiscard]] CellContext Context() const;

 private:
  void vsFG_ValidateEdit(GridEdit& edit);
  [[nodiscard]] GridBlock Selection() const;
  // The selection as cells of the table, without the number's column; whole rows where it has
  // numbers alone. Nothing where there is no selection.
  [[nodiscard]] std::optional<CellBlock> SelectedBlock() const;
  [[nodiscard]] bool IsEditing() const;
  void PutBack(const std::vector<EditHistory::Assignment>& texts);
  [[nodiscard]] EditHistory::Rows HistoryRows() const;
  void FillSelection();
  void ClearSelection();
  void FindNext();
  void Run(const std::string& command, const std::function<void()>& work);
  void ImportFile();
  void ExportFile();

  TableWindowInfo info_;
  MotionTable& table_;
  TableGrid source_;
  EditHistory history_;
  TextBox* txtFind_ = nullptr;  // as the label, of the open form
  Label* lblFound_ = nullptr;
  std::string copied_;  // what the last copy of the buffer put on the clipboard
};

}  // namespace velmoor
