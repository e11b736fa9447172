// The motion tables on their way to the amplifier and back.

#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tables/MotionTable.h"
#include "tables/TableWindow.h"

namespace velmoor {
namespace {

constexpr std::string_view kDirty = schema::Position::kDirty;

}  // namespace

bool MotionTable::Upload() {
  const bool uploaded = Trapped(Prefix("Upload"), [this] {
    const auto total = Narrow<std::int16_t>(layout_.rows);
    for (int row = 1; row <= layout_.rows; ++row) {
      if (gMainForm->StopProcedure()) {
        Status.Raise("Upload Terminated");
        return false;
      }
      Uploading.Raise(Narrow<std::int16_t>(row), total);
      const ResultCode result = UploadRowSafely(row);
      YieldEvents();
      if (result != kSuccess) {
        Status.Raise("Upload Failed");
        return false;
      }
      SetDirtyCell(row, false);
    }
    frm_->PostUpload();
    Status.Raise("Upload Complete");
    return true;
  });
  // Rows that were read before a failure stay, and are shown.
  if (!uploaded) frm_->PostUpload();
  return uploaded;
}

// An answer that is no number fails like one that does not come.
ResultCode MotionTable::UploadRowSafely(int row) {
  try {
    return UploadRow(row);
  } catch (const NumberError&) {
    return kValueNotFound;
  }
}

bool MotionTable::Download(bool blnOverRide) {
  const bool downloaded = Trapped(Prefix("Download"), [&] {
    if (!MayDownload()) return false;
    if (blnOverRide) {
      ForEachRecord(
          [this](int row, RowSet& record) {
            record.Edit();
            record.Set(kDirty, "1");
            record.Update();
            dirty_[Index(row)] = "1";
          },
          true);
    }
    const std::int16_t total = GetNumberOfNewRows();
    const auto database = OpenForWriting(strDatabasePath_);
    const auto records = database->OpenTable(layout_.table, layout_.order);
    if (!DownloadRecords(*database, *records, total)) return false;
    Status.Raise("Download Complete");
    return true;
  });
  frm_->RefreshGrid();
  return downloaded;
}

bool MotionTable::DownloadRecords(Database& database, RowSet& records, std::int16_t total) {
  std::int16_t count = 0;
  int row = 0;
  for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
    ++row;
    if (records.Text(kDirty) != "1") continue;
    if (gMainForm->StopProcedure()) {
      Status.Raise("Download Terminated");
      return false;
    }
    Downloading.Raise(++count, total);
    YieldEvents();
    if (SendRecord(records) != kSuccess) {
      Status.Raise("Download Failed");
      return false;
    }
    records.Edit();
    records.Set(kDirty, "0");
    records.Update();
    // What the amplifier has acknowledged is never sent again, whatever happens next.
    database.Commit();
    dirty_[Index(row)] = "0";
  }
  return true;
}

}  // namespace velmoor
