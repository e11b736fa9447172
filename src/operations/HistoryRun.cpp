#include "operations/HistoryRun.h"

#include "platform/Database.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

HistoryRun::HistoryRun(const std::string& project, const std::string& axis, const std::string& name,
                       bool upload, const std::vector<Tool>& parts)
    : entry_{.moment = MomentText(world().clock->Now()),
             .axis = axis,
             .name = name,
             .upload = upload,
             .parts = parts,
             .result = kUnderWay,
             .cause = {},
             .before = {},
             .after = {}} {
  Guarded([&] {
    history_.emplace(project);
    entry_.number = history_->NextNumber();
  });
}

HistoryRun::~HistoryRun() {
  if (begun_) End("failed");
}

bool HistoryRun::Guarded(const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const FileError& error) {
    failure_ = error.what();
  } catch (const DatabaseError& error) {
    failure_ = error.what();
  }
  LogWarning("history", failure_);
  return false;
}

bool HistoryRun::IsContentKnown() const {
  return history_ && history_->IsContentKnown(entry_.axis);
}

void HistoryRun::TakeKnownBefore() {
  if (history_ && entry_.before.empty()) entry_.before = history_->KnownState(entry_.axis);
}

std::optional<std::string> HistoryRun::NoteBefore(const std::string& source, bool read) {
  if (!history_ ||
      !Guarded([&] { entry_.before = history_->Keep(entry_.number, "before", source); })) {
    return std::nullopt;
  }
  entry_.read = read;
  return history_->PathOf(entry_.before);
}

std::optional<std::string> HistoryRun::NoteAfter(const std::string& source) {
  if (!history_ ||
      !Guarded([&] { entry_.after = history_->Keep(entry_.number, "after", source); })) {
    return std::nullopt;
  }
  return history_->PathOf(entry_.after);
}

void HistoryRun::ForgetBefore() {
  if (history_ && !entry_.before.empty()) {
    Guarded([this] { world().files->Remove(history_->PathOf(entry_.before)); });
  }
  entry_.before.clear();
  entry_.read = false;
}

void HistoryRun::Begin() {
  begun_ = true;
  if (history_) Guarded([this] { history_->Put(entry_); });
}

void HistoryRun::End(const std::string& result, const std::string& cause) {
  begun_ = false;
  entry_.result = result;
  entry_.cause = OneLine(cause);
  if (history_) Guarded([this] { history_->Put(entry_); });
}

std::string HistoryRun::Remark() const {
  return failure_.empty() ? std::string() : "\rThe history could not be written: " + failure_;
}

}  // namespace velmoor
