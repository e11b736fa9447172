// The base of the windows that show a parameter tool's rows: checking of edits, tips, the text
// about the current parameter, and the keys.
#pragma once

#include <string>

#include "tools/GridWindow.h"
#include "tools/ParameterGrid.h"
#include "tools/ParameterRules.h"

namespace velmoor {

class ParameterGridWindow : public GridWindow {
 public:
  // The units' words changed.
  void UpdateUnitsInDescription() { RefreshGrid(); }

 protected:
  // `tool` owns the window. The form has a label lblHelp beside what GridWindow needs.
  ParameterGridWindow(const std::string& formName, ParameterToolBase& tool, ParameterWindow rules);

  void FormLoad() override;
  void FormActivate() override;

  // The current cell moved, or the current row changed.
  virtual void CurrentRowChanged(int row);
  // An edit of the row was written.
  virtual void AfterEdit(int /*row*/) {}

  // Checks the text as an edit of the row's value; a refusal is shown. True: `text` is what the
  // cell takes, and a change was noted.
  bool Accept(int row, std::string& text);
  // Puts a text into the row as the user's edit does. False: refused, of which the user was told.
  bool PutValue(int row, std::string text);
  [[nodiscard]] ParameterToolBase& tool() { return tool_; }
  [[nodiscard]] ParameterGrid& source() { return source_; }

 private:
  void vsFG_ValidateEdit(GridEdit& edit);
  void vsFG_AfterEdit(int row);
  void vsFG_RowColChange();
  void vsFG_KeyDown(KeyEvent& key);
  void GoUp();
  void CopySelection();
  void vsFG_MouseMove(int row, std::string& tip) const;

  ParameterToolBase& tool_;
  ParameterWindow rules_;
  ParameterGrid source_;
  std::string trapPrefix_;
  std::string shownUnits_;
};

}  // namespace velmoor
