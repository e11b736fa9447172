// The parameter tool pattern's window: opening, commits, and what uploads show in it.

#include "platform/Trapped.h"
#include "project/data/Schema.h"
#include "tools/ParameterGridWindow.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

void ParameterToolBase::AttachWindow(ParameterGridWindow& frm) {
  frm_ = &frm;
  connections_ += frm.ChangeAccepted.Connect([this] {
    if (!frm_PropertiesChangeAccepted()) frm_->CommitFailed();
  });
  connections_ += frm.ChangeCanceled.Connect([this] { frm_PropertiesChangeCanceled(); });
  connections_ += frm.Closed.Connect([this] { frm_PropertiesClosed(); });
  connections_ += frm.EditStateChanged.Connect([this] { EditStateChanged.Raise(); });
  connections_ += frm.UploadRequested.Connect([this] { UploadRequested.Raise(); });
  connections_ += frm.DownloadRequested.Connect([this] { DownloadRequested.Raise(); });
}

bool ParameterToolBase::ShowWindow(const std::string& caption, FormMode mode) {
  ReadUntouchedRows();
  frm_->SetIsDirty(blnIsDirty_);
  return frm_->Show(caption, mode);
}

void ParameterToolBase::SetIsDirty(bool dirty) {
  blnIsDirty_ = dirty;
  if (!dirty && frm_ != nullptr && !frm_->NotCommitted()) frm_->SetIsDirty(false);
}

void ParameterToolBase::BringToFront() {
  if (frm_ != nullptr) frm_->BringToFront();
}

void ParameterToolBase::UnloadWindow() {
  if (frm_ != nullptr) frm_->Unload();
}

void ParameterToolBase::UpdateUnitsDisplayed() {
  RefreshWindow();
}

void ParameterToolBase::RefreshWindow() {
  if (frm_ != nullptr) frm_->RefreshGrid();
}

// ---- commits

void ParameterToolBase::EditValue(int row, const std::string& text) {
  if (arBlockMatrix_.Text(row, Column::value) == text) return;
  arBlockMatrix_.Set(row, Column::value, text);
  arBlockMatrix_.Set(row, Column::dirty, "1");
}

bool ParameterToolBase::HoldsEdits() const {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (arBlockMatrix_.IsTouched(row) && arBlockMatrix_.IsDirty(row)) return true;
  }
  return false;
}

bool ParameterToolBase::AcceptEdits() {
  MarkDirty();
  const bool stored = SaveAndHandToEditor();
  Applied.Raise();
  // A limit may have replaced a value.
  RefreshWindow();
  return stored;
}

bool ParameterToolBase::frm_PropertiesChangeAccepted() {
  if (!arBlockMatrix_.IsAnyTouched()) return true;
  if (HoldsEdits()) return AcceptEdits();
  // Values from the amplifier: they are stored, and none has to go back.
  blnNeedsSaving_ = true;
  frm_->SetIsDirty(blnIsDirty_);
  const bool stored = SaveAndHandToEditor();
  Applied.Raise();
  return stored;
}

void ParameterToolBase::frm_PropertiesChangeCanceled() {
  ReadFromDB();
  SetComboLists(gMainForm->ComboList());
}

void ParameterToolBase::frm_PropertiesClosed() {
  Closed.Raise();
  blnIsDirty_ = frm_->IsDirty();
}

// ---- uploads

void ParameterToolBase::PostUpload() {
  if (frm_ != nullptr) frm_->PostUpload();
}

void ParameterToolBase::CommitUploadedData(bool bState) {
  if (frm_ != nullptr) frm_->PostUploadCommitted();
  if (!bState) return;
  blnNeedsSaving_ = true;
  blnIsDirty_ = false;
  if (frm_ != nullptr) frm_->SetIsDirty(false);
  SaveAndHandToEditor();
}

void ParameterToolBase::SettleStoredRows() {
  Trapped(Prefix("ReadToDB"), [&] {
    const auto database = OpenForReading(strSaveDBPath_);
    const auto records = database->OpenTable(schema::Parameters::kTable);
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      if (!arBlockMatrix_.IsTouched(row)) continue;
      if (StoredValue(*records, row) == arBlockMatrix_.Text(row, Column::value)) {
        arBlockMatrix_.ClearTouched(row);
      }
    }
    if (frm_ != nullptr && !arBlockMatrix_.IsAnyTouched()) frm_->SetNotCommitted(false);
    return true;
  });
}

ParameterToolBase::Snapshot ParameterToolBase::TakeSnapshot() const {
  Snapshot snapshot{arBlockMatrix_, blnIsDirty_, blnNeedsSaving_};
  if (frm_ != nullptr) {
    snapshot.windowIsDirty = frm_->IsDirty();
    snapshot.notCommitted = frm_->NotCommitted();
  }
  return snapshot;
}

void ParameterToolBase::RestoreSnapshot(const Snapshot& snapshot) {
  arBlockMatrix_ = snapshot.rows;
  blnIsDirty_ = snapshot.isDirty;
  blnNeedsSaving_ = snapshot.needsSaving;
  if (frm_ == nullptr) return;
  frm_->SetIsDirty(snapshot.windowIsDirty);
  frm_->SetNotCommitted(snapshot.notCommitted);
  RefreshWindow();
}

}  // namespace velmoor
