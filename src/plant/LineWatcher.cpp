#include "plant/LineWatcher.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "online/AlarmAdvice.h"
#include "online/MonitoredItems.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kReopen{1000};
constexpr std::chrono::milliseconds kSlow{2000};
constexpr std::chrono::milliseconds kPause{100};
constexpr std::chrono::milliseconds kClockJump{2000};
constexpr std::size_t kMegabyte = std::size_t{1} << 20U;

std::vector<int> ItemsOf(const WatchSettings& settings) {
  std::vector<int> items = AlwaysWatched();
  items.insert(items.end(), settings.items.begin(), settings.items.end());
  return items;
}

std::vector<AxisState> AxesOf(const LineFile& line) {
  std::vector<AxisState> axes;
  for (const LineAxis& axis : line.axes) axes.push_back({.axis = axis});
  return axes;
}

// Makes the folder, and keeps a second watch away from it.
std::unique_ptr<FileLock> HoldFolder(const std::string& folder) {
  world().files->MakeDirectories(folder);
  auto lock = world().files->Lock(JoinPath(folder, "lock"));
  if (!lock) throw std::runtime_error(folder + " is used by another watch.");
  return lock;
}

}  // namespace

std::string WatchFolder(const std::string& lineFile, const WatchSettings& settings) {
  if (!settings.folder.empty()) return settings.folder;
  return JoinPath(GetFileDirectory(lineFile), NameOfLine(lineFile) + ".watch");
}

std::string WatchRecordings(const std::string& watchFolder) {
  return JoinPath(watchFolder, "recordings");
}

LineWatcher::LineWatcher(WatchHost& host, SerialPort& port, const AlarmNames& names,
                         const LineFile& line, const std::string& path)
    : host_(host),
      port_(port),
      names_(names),
      folder_(WatchFolder(path, line.watch)),
      items_(ItemsOf(line.watch)),
      lock_(HoldFolder(folder_)),
      axes_(AxesOf(line)),
      round_(comm_, axes_, items_),
      recordings_(WatchRecordings(folder_), path, NameOfLine(path), items_, axes_.size(),
                  static_cast<std::size_t>(line.watch.recordings) * kMegabyte),
      reports_(host, line.watch, folder_, path, axes_, items_),
      tell_([this](const std::string& words) { host_.Tell(words); }),
      portRemark_(tell_, "The line is watched.", {}),
      recordingsRemark_(tell_, "Recordings are kept again.", {}) {
  comm_.setupClass(port, {}, line.bitsPerSecond, true, 1);
  connections_ += round_.Seen.Connect([this](std::size_t axis) { OnSeen(axis); });
  connections_ += round_.ValueRead.Connect([this](std::size_t axis, int item, std::int32_t raw) {
    recordings_.TakeValue(axis, item, raw);
  });
  connections_ += round_.AxisRead.Connect([this](std::size_t axis) { reports_.Read(axis); });
}

void LineWatcher::Run() {
  while (!host_.Ends() && !host_.Rereads()) Step();
  comm_.disconnect();
  reports_.End();
}

void LineWatcher::Step() {
  if (IsLent()) {
    if (port_.IsOpen()) comm_.disconnect();
    host_.PortIsFree();
    Lose("lent", "Another program uses the port.");
    Pause();
    return;
  }
  if (!IsOpen()) {
    Pause();
    return;
  }
  served_ = false;
  comm_.whileNextIsOnItsWay([this] { Serve(); });
  if (!round_.Ask()) Lose("no port", comm_.LatestFailure().exchange.portWords);
  if (!served_) Serve();
}

bool LineWatcher::IsLent() {
  const Time now = world().clock->Monotonic();
  if (now < nextLook_) return lent_;
  nextLook_ = now + kPause;
  lent_ = host_.IsPortWanted();
  return lent_;
}

void LineWatcher::Pause() {
  Serve();
  world().events->WaitForEvents(kPause);
}

bool LineWatcher::IsOpen() {
  if (port_.IsOpen()) return true;
  const Time now = world().clock->Monotonic();
  if (now < nextOpen_) return false;
  nextOpen_ = now + kReopen;
  if (!comm_.manualConnect()) {
    Lose("no port", port_.LastError());
    return false;
  }
  portRemark_.Note({});
  reports_.Line("watched", {});
  return true;
}

void LineWatcher::Lose(const std::string& state, const std::string& reason) {
  portRemark_.Note(reason.empty() ? "The port is gone." : reason);
  reports_.Line(state, reason);
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    if (axes_[i].standing == Standing::unseen) continue;
    axes_[i].standing = Standing::unseen;
    axes_[i].values.clear();
    OnSeen(i);
  }
}

// ---- what is read

void LineWatcher::OnSeen(std::size_t axis) {
  AxisState& state = axes_[axis];
  const bool answers = state.standing == Standing::answers;
  if (answers) state.reading = DescribeAlarm(names_, state.reading.display);
  reports_.Seen(axis);
  if (!answers) {
    recordings_.Forget(axis);
  } else if (recordings_.TakeDisplay(axis, state)) {
    KeepAlarm(axis);
  }
}

void LineWatcher::KeepAlarm(std::size_t axis) {
  try {
    const auto kept = recordings_.Keep(axis, axes_[axis], AlarmRemarks(axes_[axis]));
    recordingsRemark_.Note({});
    reports_.Recorded(axis, kept.name, kept.bytes);
  } catch (const FileError& error) {
    recordingsRemark_.Note(error.what());
  }
}

std::vector<std::string> LineWatcher::AlarmRemarks(const AxisState& axis) {
  std::vector<std::string> remarks;
  if (const AlarmAdvice* const advice = AdviceOn(axis.reading.display)) {
    remarks.push_back("Cause: " + std::string(advice->cause));
    remarks.push_back("Remedy: " + std::string(advice->remedy));
  }
  for (int item = kStatusItem; item < kAlarmItem; ++item) {
    const auto raw = AskValue(comm_, axis.axis.address, item);
    const std::string name = NameOf(MonitoredItems()[static_cast<std::size_t>(item)]);
    const std::string words = raw ? BitWords(item, *raw) : "not read";
    remarks.push_back(name + ": " + (words.empty() ? "none" : words));
  }
  return remarks;
}

// ---- beside it

void LineWatcher::Serve() {
  served_ = true;
  reports_.Serve();
  const Time now = world().clock->Monotonic();
  if (now < nextSlow_) return;
  nextSlow_ = now + kSlow;
  WatchClock(now);
  reports_.Show(Figures());
  host_.Alive(StatusWords());
}

void LineWatcher::WatchClock(Time now) {
  const Time ahead = world().clock->SinceEpoch() - now;
  const Time jump = clockAhead_ ? ahead - *clockAhead_ : Time(0);
  clockAhead_ = ahead;
  if (std::abs(jump.count()) < kClockJump.count()) return;
  host_.Tell("The clock was set " + std::string(jump.count() < 0 ? "back" : "forward") + " by " +
             NumberText(std::abs(jump.count()) / 1000) + " s.");
}

LineFigures LineWatcher::Figures() const {
  return {.line = {},
          .watched = port_.IsOpen(),
          .roundSeconds = round_.RoundSeconds(),
          .wireSeconds = round_.WireSeconds(),
          .rounds = round_.Rounds()};
}

std::string LineWatcher::StatusWords() const {
  const auto answering = std::ranges::count(axes_, Standing::answers, &AxisState::standing);
  return NumberText(answering) + " of " + NumberText(axes_.size()) + " axes answer, round " +
         FixedText(round_.RoundSeconds(), 2) + " s, its bytes " +
         FixedText(round_.WireSeconds(), 2) + " s";
}

}  // namespace velmoor
