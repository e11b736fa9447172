#include "tools/GridWindow.h"

#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

GridWindow::~GridWindow() {
  connections_.Clear();
}

bool GridWindow::Show(const std::string& caption, FormMode mode) {
  return Trapped(formName_ + ".Show: ", [&] {
    form_ = world().forms->Load(formName_);
    form_->SetCaption(caption);
    connections_ += form_->Activated.Connect([this] {
      SetApplyButton();
      FormActivate();
    });
    connections_ += form_->QueryUnload.Connect([this](bool& cancel) { OnQueryUnload(cancel); });
    connections_ += form_->Unloaded.Connect([this] { OnUnloaded(); });
    connections_ += form_->button("cmdApply").Click.Connect([this] { cmdApply_Click(); });
    connections_ += form_->button("cmdOK").Click.Connect([this] { cmdOK_Click(); });
    connections_ += form_->button("cmdCancel").Click.Connect([this] { form_->Unload(); });
    FormLoad();
    SetApplyButton();
    form_->Show(mode);
    return true;
  });
}

void GridWindow::Unload() {
  if (!form_) return;
  closingWithoutQuestion_ = true;
  form_->Unload();
  closingWithoutQuestion_ = false;
}

void GridWindow::BringToFront() {
  if (form_) form_->Activate();
}

bool GridWindow::IsActive() const {
  return form_ && world().forms->Active() == form_.get();
}

void GridWindow::SetNotCommitted(bool notCommitted) {
  blnNotCommitted_ = notCommitted;
  SetApplyButton();
}

void GridWindow::SetApplyButton() {
  if (!form_) return;
  form_->button("cmdApply").SetEnabled(blnNotCommitted_ && MayApply());
  form_->SetChanged(blnNotCommitted_);
}

void GridWindow::MarkEdited() {
  blnIsDirty_ = true;
  SetNotCommitted(true);
}

void GridWindow::RefreshGrid() {
  if (form_) grid().Refresh();
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

void GridWindow::cmdApply_Click() {
  (void)Commit();
}

void GridWindow::cmdOK_Click() {
  if (Commit()) Unload();
}

// Cancel, Escape and the frame's button leave alike: with edits that were not accepted only after a
// question.
void GridWindow::OnQueryUnload(bool& cancel) {
  if (closingWithoutQuestion_) return;
  if (blnNotCommitted_ && !AskGraveYesNo("Modified values will be lost if changes are cancelled!\r"
                                         "Do you wish to discard changes?")) {
    cancel = true;
    return;
  }
  ChangeCanceled.Raise();
  SetNotCommitted(false);
}

void GridWindow::OnUnloaded() {
  connections_.Clear();
  const std::unique_ptr<Form> closing = std::move(form_);
  Closed.Raise();
}

}  // namespace velmoor
