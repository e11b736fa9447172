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

// ---- leaving

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
