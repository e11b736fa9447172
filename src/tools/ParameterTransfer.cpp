// The parameter tool pattern's way to the amplifier and back.

#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/Schema.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

using schema::Parameters;

struct ParameterToolBase::Transfer {
  RowSet& records;
  Database& database;
  bool overRide;
  bool newOptionVersion;
  std::int16_t count = 0;
  std::int16_t total = 0;
};

bool ParameterToolBase::DownloadRows(bool blnOverRide) {
  return Trapped(Prefix("Download"), [&] {
    const std::int16_t dirty = GetNumberOfNewRows();
    if (blnOverRide) MarkAllForDownload();
    const bool newOptionVersion = gMainForm->Helix7()->IsOptionVersionNew();
    const auto database = OpenWorkingFile();
    const auto records = database->OpenTable(Parameters::kTable);
    Transfer transfer{*records, *database, blnOverRide, newOptionVersion};
    transfer.total = blnOverRide ? RowsInArray() : dirty;
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      if (!DownloadRow(transfer, row)) return false;
    }
    RefreshWindow();
    Status.Raise("Download Complete");
    return true;
  });
}

// One row: passed over, or sent and cleared. False ends the download, its status raised.
bool ParameterToolBase::DownloadRow(Transfer& transfer, int row) {
  const std::string strPn = arBlockMatrix_.Text(row, Column::name);
  if (transfer.overRide) Downloading.Raise(Narrow<std::int16_t>(row), transfer.total);
  if (gMainForm->StopProcedure()) {
    Status.Raise("Download Terminated");
    return false;
  }
  if (IsNeverSent(strPn)) return true;
  if (!transfer.records.FindFirst(Parameters::kPn, strPn)) return true;
  if (!GoesOut(row, transfer.records, transfer.overRide)) return true;
  if (NeedsNewOptionVersion(strPn) && !transfer.newOptionVersion) {
    // Counted so that the progress reaches its total; the row stays dirty.
    if (!transfer.overRide) Downloading.Raise(++transfer.count, transfer.total);
    // Marked for this transfer alone.
    if (transfer.overRide) arBlockMatrix_.Mark(row, transfer.records.Text(Parameters::kDirty));
    return true;
  }
  if (transfer.records.Text(Parameters::kValue).empty()) return true;
  if (!transfer.overRide) Downloading.Raise(++transfer.count, transfer.total);
  const std::string value = ValueToSend(strPn, transfer.records.Text(Parameters::kControllerValue));
  BeforeSend(strPn, value);
  if (gMainForm->Helix7()->SetParameter(WireNumber(strPn), value) != 0) {
    SendFailed(strPn);
    Status.Raise("Download Failed");
    return false;
  }
  transfer.records.Edit();
  transfer.records.Set(Parameters::kDirty, "0");
  transfer.records.Update();
  // What the amplifier has acknowledged is never sent again, whatever happens next.
  transfer.database.Commit();
  // A row that the user has edited since it was stored keeps its mark: that value is still to go.
  if (arBlockMatrix_.Text(row, Column::value) == transfer.records.Text(Parameters::kValue)) {
    arBlockMatrix_.Set(row, Column::dirty, "0");
    arBlockMatrix_.ClearTouched(row);
  }
  YieldEvents();
  return true;
}

void ParameterToolBase::SettleSentRows() {
  Trapped(Prefix("ReadToDB"), [this] {
    const auto database = OpenForReading(strSaveDBPath_);
    const auto records = database->OpenTable(Parameters::kTable);
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      if (!arBlockMatrix_.IsDirty(row) || arBlockMatrix_.IsTouched(row)) continue;
      const bool found =
          records->FindFirst(Parameters::kPn, arBlockMatrix_.Text(row, Column::name));
      if (found && records->Text(Parameters::kDirty) == "0") arBlockMatrix_.Mark(row, "0");
    }
    return true;
  });
  if (blnIsDirty_ && !HasMoreToSend()) SetIsDirty(false);
  RefreshWindow();
}

void ParameterToolBase::MarkAllForDownload() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    arBlockMatrix_.Mark(row, "1");
  }
}

bool ParameterToolBase::GoesOut(int row, const RowSet& /*record*/, bool /*blnOverRide*/) const {
  return arBlockMatrix_.IsDirty(row);
}

bool ParameterToolBase::Upload() {
  return Trapped(Prefix("Upload"), [this] {
    const bool newOptionVersion = gMainForm->Helix7()->IsOptionVersionNew();
    for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
      if (gMainForm->StopProcedure()) {
        Status.Raise("Upload Terminated");
        return false;
      }
      Uploading.Raise(Narrow<std::int16_t>(row), RowsInArray());
      const bool absent =
          NeedsNewOptionVersion(arBlockMatrix_.Text(row, Column::name)) && !newOptionVersion;
      if (!absent && !UploadRow(row)) {
        Status.Raise("Upload Failed");
        return false;
      }
      YieldEvents();
    }
    AfterUpload();
    Status.Raise("Upload Complete");
    return true;
  });
}

bool ParameterToolBase::UploadRow(int row) {
  std::string answer;
  const std::string number = WireNumber(arBlockMatrix_.Text(row, Column::name));
  if (gMainForm->Helix7()->GetParameter(number, answer) != 0) return false;
  try {
    arBlockMatrix_.Set(row, Column::value, UploadedValue(row, answer));
  } catch (const NumberError&) {
    return false;  // an answer that is no number fails like one that does not come
  }
  arBlockMatrix_.Set(row, Column::dirty, "0");
  return true;
}

std::string ParameterToolBase::UploadedValue(int row, const std::string& answer) const {
  return GetSelectedComboListItem(row, Int32FromText(answer));
}

}  // namespace velmoor
