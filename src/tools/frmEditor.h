// The window of the direct parameter editor: every parameter, with a filter and the digits of the
// current one.
#pragma once

#include <string>

#include "layouts/frmEditor.h"
#include "tools/DigitPanel.h"
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
  void FillCategories();
  void ApplyFilter();
  void LeaveHiddenRow();
  void SortBy(int column);
  [[nodiscard]] bool IsWanted(int row, const std::string& filter, const std::string& category);
  void TellWhyLocked();

  DigitPanel digits_;
  int sortedBy_ = -1;  // the column; -1: as the catalogue has the rows
  bool descending_ = false;
};

}  // namespace velmoor
