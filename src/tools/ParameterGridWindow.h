// The base of the windows that show a parameter tool's rows: checking of edits, tips, the text
// about the current parameter, undo and redo since the last Apply, the keys, and the buttons of the
// transfers.
//
// Rows are the tool's rows throughout; the grid may show them in another order.
#pragma once

#include <optional>
#include <string>

#include "tools/ParameterGrid.h"
#include "tools/ParameterRules.h"
#include "windows/EditHistory.h"
#include "windows/EditTarget.h"
#include "windows/GridWindow.h"

namespace velmoor {

class ParameterGridWindow : public GridWindow, public EditTarget {
 public:
  // Values, marks or units of the project changed: shows them, beside the edits.
  virtual void StoreChanged();
  // Edits came into the tool's rows from elsewhere, or went.
  void EditsChanged();

  // ---- the Edit menu: values are copied and put back, and never emptied
  [[nodiscard]] bool CanCopy() const override;
  [[nodiscard]] bool CanCut() const override { return false; }
  [[nodiscard]] bool CanPaste() const override { return false; }
  [[nodiscard]] bool CanUndo() const override;
  [[nodiscard]] bool CanRedo() const override;
  void Cut() override {}
  void Copy() override;
  void Paste() override {}
  void Undo() override;
  void Redo() override;

  Event<> EditStateChanged;

 protected:
  // `tool` owns the window.
  ParameterGridWindow(const Layout& layout, ParameterToolBase& tool, ParameterWindow rules);

  // The layouts have the texts about the current row beside what GridWindow needs.
  template <typename Ui>
  void Take(const Ui& ui) {
    GridWindow::Take(ui);
    lblHelp_ = &ui.lblHelp;
    lblLimits_ = &ui.lblLimits;
  }

  void FormLoad() override;

  // The current cell moved, or the current row changed.
  virtual void CurrentRowChanged(int row);
  // An edit of the row was written.
  virtual void AfterEdit(int /*row*/) {}
  // The window holds changes beside its rows that were not accepted yet.
  [[nodiscard]] virtual bool HoldsMore() const { return false; }
  // Brings a row that was changed into sight.
  virtual void ShowRow(int row);

  // The row under the cursor; below 1: none.
  [[nodiscard]] int CurrentRow() { return source_.ToolRow(grid().Row()); }
  [[nodiscard]] const GridSource& Cells() const override { return source_; }
  void OnKey(KeyEvent& key) override;
  void RefreshRow(int row) { grid().RefreshRow(source_.GridRow(row)); }
  // Before and after an edit of a row: what lies between is one step that can be undone.
  void BeforeEdit();
  void EditDone();

  // Checks the text as an edit of the row's value; a refusal is shown. True: `text` is what the
  // cell takes, and a change was noted.
  bool Accept(int row, std::string& text);
  // Puts a text into the row as the user's edit does. False: refused, of which the user was told.
  bool PutValue(int row, std::string text);
  // The same for several rows, as one step that can be undone. The refused ones stay as they are
  // and are told in one box.
  void PutValues(const std::vector<std::pair<int, std::string>>& values);
  [[nodiscard]] ParameterToolBase& tool() { return tool_; }
  [[nodiscard]] ParameterGrid& source() { return source_; }

 private:
  void vsFG_ValidateEdit(GridEdit& edit);
  void vsFG_AfterEdit(int row);
  void vsFG_RowColChange();
  bool RunKey(const KeyEvent& key);
  void ShowColumns();
  [[nodiscard]] CellCheck Check(int row, const std::string& text) const;
  void TellWhyLocked(int row) const;
  [[nodiscard]] EditHistory::Rows HistoryRows() const;
  [[nodiscard]] std::optional<std::string> RememberedEdit(std::size_t place) const;
  void PutBack(const std::vector<EditHistory::Assignment>& cells);
  void vsFG_MouseMove(int row, std::string& tip) const;

  ParameterToolBase& tool_;
  ParameterWindow rules_;
  ParameterGrid source_;
  EditHistory history_;       // of each row: whether it is edited, and the edit
  Label* lblHelp_ = nullptr;  // as the other, of the open form
  Label* lblLimits_ = nullptr;
};

}  // namespace velmoor
