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
  const bool downloaded = Trapped(Prefix("Download"), [&] {
    const bool newOptionVersion = gMainForm->Helix7()->IsOptionVersionNew();
    const auto database = OpenForWriting(store_.WorkingFile());
    const auto records = database->OpenTable(Parameters::kTable);
    Transfer transfer{*records, *database, blnOverRide, newOptionVersion};
    transfer.total = blnOverRide ? RowsInArray() : GetNumberOfNewRows();
    for (int row = 1; row <= RowsInArray(); ++row) {
      if (!DownloadRow(transfer, row)) return false;
    }
    return true;
  });
  RefreshWindow();
  if (downloaded) Status.Raise("Download Complete");
  return downloaded;
}

// One row: passed over, or sent and cleared. False ends the download, its status raised.
bool ParameterToolBase::DownloadRow(Transfer& transfer, int row) {
  const Parameter& parameter = ParameterOf(row);
  if (transfer.overRide) Downloading.Raise(Narrow<std::int16_t>(row), transfer.total);
  if (gMainForm->StopProcedure()) {
    Status.Raise("Download Terminated");
    return false;
  }
  if (IsNeverSent(parameter.Pn()) || !parameter.recorded) return true;
  if (!transfer.overRide && !parameter.IsMarked()) return true;
  if (NeedsNewOptionVersion(parameter.Pn()) && !transfer.newOptionVersion) {
    // Counted so that the progress reaches its total; the row stays marked.
    if (!transfer.overRide) Downloading.Raise(++transfer.count, transfer.total);
    if (parameter.IsMarked()) store_.PassOver(parameter.Pn());
    return true;
  }
  if (parameter.blank) return true;
  if (!transfer.overRide) Downloading.Raise(++transfer.count, transfer.total);
  return SendRow(transfer, parameter);
}

bool ParameterToolBase::SendRow(Transfer& transfer, const Parameter& parameter) {
  const std::string strPn = parameter.Pn();
  const std::string controller = parameter.controller;
  const std::string value = ValueToSend(strPn, controller);
  BeforeSend(strPn, value);
  store_.AboutToSend(strPn);
  if (gMainForm->Helix7()->SetParameter(WireNumber(strPn), value) != kSuccess) {
    SendFailed(strPn);
    Status.Raise("Download Failed");
    return false;
  }
  store_.Acknowledge(transfer.database, transfer.records, strPn, controller);
  YieldEvents();
  return true;
}

bool ParameterToolBase::Upload() {
  return Trapped(Prefix("Upload"), [this] {
    const bool newOptionVersion = gMainForm->Helix7()->IsOptionVersionNew();
    for (int row = 1; row <= RowsInArray(); ++row) {
      if (gMainForm->StopProcedure()) {
        Status.Raise("Upload Terminated");
        return false;
      }
      Uploading.Raise(Narrow<std::int16_t>(row), RowsInArray());
      const bool absent = NeedsNewOptionVersion(ParameterOf(row).Pn()) && !newOptionVersion;
      if (!absent && !UploadRow(row)) {
        Status.Raise("Upload Failed");
        return false;
      }
      YieldEvents();
    }
    Status.Raise("Upload Complete");
    return true;
  });
}

bool ParameterToolBase::UploadRow(int row) {
  std::string answer;
  const std::string strPn = ParameterOf(row).Pn();
  if (gMainForm->Helix7()->GetParameter(WireNumber(strPn), answer) != kSuccess) return false;
  try {
    store_.Stage(strPn, answer);
  } catch (const NumberError&) {
    return false;  // an answer that is no value fails like one that does not come
  }
  return true;
}

}  // namespace velmoor
