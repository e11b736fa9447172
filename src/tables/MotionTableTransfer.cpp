// The motion tables on their way to the amplifier and back.

#include <exception>
#include <functional>
#include <utility>

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

// Work that is done while the next line is on its way, so that the line never waits for it.
class LaterWork {
 public:
  LaterWork() = default;
  ~LaterWork() { Link().whileNextIsOnItsWay(nullptr); }
  LaterWork(const LaterWork&) = delete;
  LaterWork& operator=(const LaterWork&) = delete;

  void Order(std::function<void()> work) {
    work_ = std::move(work);
    Link().whileNextIsOnItsWay([this] { Run(); });
  }
  // What was ordered is done. Throws what it has thrown.
  void Settle() {
    Run();
    if (failed_) std::rethrow_exception(std::exchange(failed_, nullptr));
  }

 private:
  static ClassSerialComm& Link() { return gMainForm->Helix7()->SerialComm(); }
  void Run() {
    const auto work = std::exchange(work_, nullptr);
    try {
      if (work) work();
    } catch (...) {
      failed_ = std::current_exception();
    }
  }

  std::function<void()> work_;
  std::exception_ptr failed_;
};

}  // namespace

bool MotionTable::Upload() {
  return Trapped(Prefix("Upload"), [this] {
    const auto total = Narrow<std::int16_t>(layout_.rows);
    Rows read;
    for (int row = 1; row <= layout_.rows; ++row) {
      if (gMainForm->StopProcedure()) {
        Status.Raise("Upload Terminated");
        return false;
      }
      Uploading.Raise(Narrow<std::int16_t>(row), total);
      std::vector<std::string> controller(layout_.columns.size());
      const ResultCode result = UploadRowSafely(row, controller);
      YieldEvents();
      if (result != kSuccess) {
        Status.Raise("Upload Failed");
        return false;
      }
      read.push_back(std::move(controller));
    }
    uploaded_ = std::move(read);
    Status.Raise("Upload Complete");
    return true;
  });
}

// An answer that is no number fails like one that does not come.
ResultCode MotionTable::UploadRowSafely(int row, std::vector<std::string>& controller) {
  try {
    return UploadRow(row, controller);
  } catch (const NumberError&) {
    return kValueNotFound;
  }
}

bool MotionTable::Download(bool blnOverRide) {
  const bool downloaded = Trapped(Prefix("Download"), [&] {
    if (!MayDownload()) return false;
    if (blnOverRide) {
      std::vector<int> all;
      for (int row = 1; row <= layout_.rows; ++row) all.push_back(row);
      Mark(all);
    }
    const std::int16_t total = GetNumberOfNewRows();
    const auto database = OpenForWriting(strDatabasePath_);
    const auto records = database->OpenTable(layout_.table, layout_.order);
    return DownloadRecords(*database, *records, total);
  });
  frm_->RefreshGrid();
  if (downloaded) Status.Raise("Download Complete");
  return downloaded;
}

// That a row was acknowledged is committed while the line of the next one is on its way: a program
// that is killed before that offers the one row again.
bool MotionTable::DownloadRecords(Database& database, RowSet& records, std::int16_t total) {
  records.MoveFirst();
  int at = 1;
  const auto clear = [&](int row) {
    // It may have been stored anew meanwhile.
    if (stored_[Index(row)].marked) return;
    for (; at < row; ++at) records.MoveNext();
    records.Edit();
    records.Set(kDirty, "0");
    records.Update();
    // What the amplifier has acknowledged is not sent again, whatever happens next.
    database.Commit();
  };
  LaterWork later;
  const bool done = SendRows(total, [&](int row) {
    later.Settle();
    later.Order([&clear, row] { clear(row); });
  });
  later.Settle();
  return done;
}

bool MotionTable::SendRows(std::int16_t total, const std::function<void(int row)>& acknowledged) {
  std::int16_t count = 0;
  for (int row = 1; row <= layout_.rows; ++row) {
    if (!stored_[Index(row)].marked) continue;
    if (gMainForm->StopProcedure()) {
      Status.Raise("Download Terminated");
      return false;
    }
    Downloading.Raise(++count, total);
    YieldEvents();
    const std::vector<std::string> controller = stored_[Index(row)].controller;
    copies_[Index(row)] = {true, std::nullopt};
    if (SendRow(row, controller) != kSuccess) {
      Status.Raise("Download Failed");
      return false;
    }
    acknowledged_[row] = controller;
    StoredRow& stored = stored_[Index(row)];
    // A row that was stored anew while its line was under way keeps its mark.
    if (stored.controller != controller) continue;
    stored.marked = false;
    if (cells_[Index(row)] == stored.cells) marks_[Index(row)] = false;
    acknowledged(row);
  }
  return true;
}

void MotionTable::AboutToSendMarked() {
  for (std::size_t i = 0; i < stored_.size(); ++i) {
    if (stored_[i].marked) copies_[i] = {true, std::nullopt};
  }
}

void MotionTable::ConfirmStored() {
  for (const auto& [row, controller] : acknowledged_) copies_[Index(row)] = {true, controller};
  acknowledged_.clear();
}

}  // namespace velmoor
