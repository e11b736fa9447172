#include "tables/LimitWindow.h"

#include <stdexcept>

#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "session/Session.h"
#include "tables/CellRules.h"

namespace velmoor {

LimitWindow::LimitWindow(std::string formName, MotionTable& table, UnitKind kind,
                         std::string numberHeading)
    : GridWindow(std::move(formName)),
      table_(table),
      kind_(kind),
      source_(table, std::move(numberHeading), 0) {}

Project& LimitWindow::project() {
  Project* const current = gMainForm->CurrentProject();
  if (current == nullptr) throw std::logic_error("No project is open");
  return *current;
}

void LimitWindow::FormLoad() {
  source_.SetHeadings(Headings(project()));
  grid().Bind(&source_);
  connections_ += grid().ValidateEdit.Connect([this](GridEdit& edit) { vsFG_ValidateEdit(edit); });
  connections_ += grid().AfterEdit.Connect([this](int row, int) { vsFG_AfterEdit(row); });
}

void LimitWindow::UpdateUnitsInHeader() {
  source_.SetHeadings(Headings(project()));
  RefreshGrid();
}

void LimitWindow::vsFG_ValidateEdit(GridEdit& edit) {
  const bool checked = Trapped("frmZone.vsFG_ValidateEdit: ", [&] {
    const CellCheck check = CheckLimit(project(), kind_, edit.text);
    if (!check.accepted) {
      ShowExclamation(check.words);
      edit.cancel = true;
      return true;
    }
    edit.text = check.text;
    // Leaving a cell as it is changes nothing.
    if (edit.text == table_.Text(edit.row, edit.column - 1)) edit.cancel = true;
    return true;
  });
  if (!checked) edit.cancel = true;
}

void LimitWindow::vsFG_AfterEdit(int row) {
  table_.SetDirtyCell(row, true);
  grid().RefreshRow(row);
  MarkEdited();
}

// ---- the cell buffer
// --------------------------------------------------------------------------------

int LimitWindow::CurrentColumn() const {
  if (!IsOpen()) return -1;
  Grid& cells = const_cast<LimitWindow*>(this)->grid();
  const int row = cells.Row();
  const int column = cells.Column();
  return row > 0 && column >= 0 && source_.Traits(row, column).editable ? column - 1 : -1;
}

bool LimitWindow::CanCopyCell() const {
  return CurrentColumn() >= 0;
}

bool LimitWindow::CanPasteCell() const {
  return CurrentColumn() >= 0 && strTempBuffer_;
}

void LimitWindow::CopyCellContentsIntoBuffer() {
  const int column = CurrentColumn();
  if (column >= 0) strTempBuffer_ = table_.Text(grid().Row(), column);
}

void LimitWindow::CutCellContentsIntoBuffer() {
  if (!CanCopyCell()) return;
  CopyCellContentsIntoBuffer();
  PutIntoCurrentCell("");
}

void LimitWindow::PasteCellContentsFromBuffer() {
  if (CanPasteCell()) PutIntoCurrentCell(*strTempBuffer_);
}

void LimitWindow::PutIntoCurrentCell(const std::string& text) {
  const int row = grid().Row();
  table_.SetText(row, CurrentColumn(), text);
  vsFG_AfterEdit(row);
}

}  // namespace velmoor
