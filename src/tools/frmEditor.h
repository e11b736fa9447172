// The window of the direct parameter editor: every parameter, with the tree of its groups, filters
// and the digits of the current one.
#pragma once

#include <optional>
#include <string>

#include "layouts/frmEditor.h"
#include "tools/DigitPanel.h"
#include "tools/GroupTree.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {

class frmEditor final : public WindowOf<layouts::frmEditor, ParameterGridWindow> {
 public:
  explicit frmEditor(ParameterToolBase& tool) : WindowOf(tool, ParameterWindow::editor) {}

  void StoreChanged() override;

 protected:
  void FormLoad() override;
  void CurrentRowChanged(int row) override;
  void AfterEdit(int row) override;
  void ShowRow(int row) override;

 private:
  void DisableCells();
  void MakeTree();
  void ApplyFilter();
  void LeaveHiddenRow();
  void SortBy(int column);
  [[nodiscard]] bool IsWanted(int row);
  [[nodiscard]] bool IsFound(int row, const std::string& filter);
  void ResetRow();
  void ResetGroup();
  // What the amplifier was seen to hold, and how to see it.
  void TellCompared();

  DigitPanel digits_;
  std::optional<GroupTree> groups_;  // while the window is open
  int sortedBy_ = -1;                // the column; -1: as the catalogue has the rows
  bool descending_ = false;
};

}  // namespace velmoor
