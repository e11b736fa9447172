#include "windows/GridWindow.h"

#include "platform/MessageBoxes.h"

namespace velmoor {

bool GridWindow::Show(const std::string& caption, FormMode mode) {
  caption_ = caption;
  return Window::Show(mode);
}

void GridWindow::FormLoad() {
  form().SetCaption(caption_);
  connections_ += cmdApply_->Click.Connect([this] { (void)Commit(); });
  connections_ += cmdOK_->Click.Connect([this] { cmdOK_Click(); });
  connections_ += cmdCancel_->Click.Connect([this] { form().Unload(); });
  connections_ += grid().KeyDown.Connect([this](KeyEvent& key) { OnKey(key); });
}

void GridWindow::Unload() {
  closingWithoutQuestion_ = true;
  Window::Unload();
  closingWithoutQuestion_ = false;
}

void GridWindow::SetNotCommitted(bool notCommitted) {
  blnNotCommitted_ = notCommitted;
  SetApplyButton();
}

void GridWindow::SetApplyButton() {
  if (!IsOpen()) return;
  cmdApply_->SetEnabled(blnNotCommitted_ && MayApply());
  form().SetChanged(blnNotCommitted_);
}

void GridWindow::MarkEdited() {
  blnIsDirty_ = true;
  SetNotCommitted(true);
}

void GridWindow::RefreshGrid() {
  if (IsOpen()) grid().Refresh();
}

// ---- keys

void GridWindow::OnKey(KeyEvent& key) {
  if (key.code == 'S' && key.ctrl && !key.shift && !key.alt) {
    key.handled = true;
    Requested.Raise(WindowRequest::save);
    return;
  }
  if ((key.code != keys::kEnter && key.code != keys::kTab) || key.ctrl || key.alt) return;
  key.handled = true;
  if (!grid().FinishEdit()) return;
  const int by = key.shift ? -1 : 1;
  if (key.code == keys::kEnter) {
    GoDown(by);
  } else {
    GoOn(by);
  }
}

void GridWindow::GoTo(int row, int column) {
  grid().SetCurrent(row, column);
  grid().RowColChange.Raise();
}

void GridWindow::GoDown(int by) {
  int row = grid().Row() + by;
  while (row >= 1 && row < Cells().Rows() && grid().RowHidden(row)) row += by;
  if (row >= 1 && row < Cells().Rows()) GoTo(row, grid().Column());
}

// To the end of the row, and on in the next one. A locked cell is passed as little as an open one:
// the user shall see it.
void GridWindow::GoOn(int by) {
  const int columns = Cells().Columns();
  int place = grid().Row() * columns + grid().Column() + by;
  for (; place >= columns && place < Cells().Rows() * columns; place += by) {
    const int row = place / columns;
    const int column = place % columns;
    if (grid().RowHidden(row) || grid().ColumnHidden(column)) continue;
    const CellTraits traits = Cells().Traits(row, column);
    if (traits.editable || traits.locked) return GoTo(row, column);
  }
}

// ---- leaving

bool GridWindow::CommitPending() {
  if (!IsOpen()) return true;
  // An access key presses a button while a cell is still under edit.
  return grid().FinishEdit() && (NotCommitted() ? Commit() : MayCommit());
}

bool GridWindow::Commit() {
  // An open edit is part of what is committed; a refused one keeps the window as it is.
  if (!grid().FinishEdit() || !MayCommit()) return false;
  commitFailed_ = false;
  ChangeAccepted.Raise();
  if (commitFailed_) return false;
  SetNotCommitted(false);
  return true;
}

void GridWindow::cmdOK_Click() {
  if (Commit()) Unload();
}

// Cancel, Escape and the frame's button leave alike: with edits that were not accepted only after a
// question.
void GridWindow::FormQueryUnload(bool& cancel) {
  if (closingWithoutQuestion_) return;
  if (blnNotCommitted_ && !AskGraveYesNo("Modified values will be lost if changes are cancelled!\r"
                                         "Do you wish to discard changes?")) {
    cancel = true;
    return;
  }
  ChangeCanceled.Raise();
  SetNotCommitted(false);
}

}  // namespace velmoor
