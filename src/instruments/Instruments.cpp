#include "instruments/Instruments.h"

#include <algorithm>

#include "link/clsHX7Helix7.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/World.h"

namespace velmoor {
namespace {

double Seconds() {
  return std::chrono::duration<double>(world().clock->Monotonic()).count();
}

std::string Moment() {
  return MomentText(world().clock->Now());
}

ValueKind KindOf(int item) {
  return item < kAlarmItem ? MonitoredItems()[static_cast<std::size_t>(item)].kind
                           : ValueKind::bits;
}

}  // namespace

Instruments::Instruments(SessionState& session, std::function<bool()> mayAsk)
    : session_(session), mayAsk_(std::move(mayAsk)), headings_(session) {
  asked_ = recorder_.Asked.Connect([this] { Toggle(); });
}

Instruments::~Instruments() = default;

void Instruments::Listen() {
  connections_.Clear();
  connections_ += session_.Helix7()->ValueRead.Connect(
      [this](ValueCommand command, std::int32_t raw) { OnValue(command, raw); });
  connections_ += session_.Helix7()->AlarmRead.Connect(
      [this](const std::string& display) { OnAlarm(display); });
}

void Instruments::Forget() {
  recorder_.Stop();
  box_.Clear();
  inAlarm_.reset();
}

std::optional<RecordingFolder> Instruments::Folder() const {
  clsHX7Project* const project = session_.OwnProject();
  if (project == nullptr || project->FileName().empty()) return std::nullopt;
  return RecordingFolder(project->FileName());
}

// ---- what is read

void Instruments::OnValue(ValueCommand command, std::int32_t raw) {
  const auto items = MonitoredItems();
  const auto found = std::ranges::find(items, command, &MonitoredItem::command);
  if (found != items.end()) Take(static_cast<int>(found - items.begin()), raw);
}

void Instruments::Take(int item, double raw) {
  const double now = Seconds();
  box_.Take(item, now, raw);
  if (recorder_.Now() == Recorder::State::idle) return;
  const auto whole = static_cast<std::int32_t>(raw);
  recorder_.Take(item, now, units_.Convert(whole, KindOf(item)), Moment());
}

void Instruments::OnAlarm(const std::string& display) {
  const AlarmReading alarm = DescribeAlarm(display);
  const bool tripped = IsAlarm(alarm) && !IsWarning(alarm);
  Take(kAlarmItem, tripped ? 1 : 0);
  // One that was there before anybody has looked is of another time.
  const bool came = tripped && inAlarm_ == false;
  inAlarm_ = tripped;
  if (!came) return;
  // Whoever has asked goes on first: nothing here may delay what an alarm calls for.
  world().events->Post([this, alarm, read = Seconds(), token = std::weak_ptr<const void>(token_)] {
    if (!token.expired()) KeepAlarm(alarm, read);
  });
}

// ---- an alarm

void Instruments::KeepAlarm(const AlarmReading& alarm, double read) {
  const auto folder = Folder();
  if (!folder) return;
  try {
    RecordingHeading heading = headings_.OfAlarm(alarm, box_, mayAsk_());
    const MonitoredUnits units = headings_.Units();
    const std::string name =
        box_.Keep(*folder, std::move(heading), "alarm " + alarm.display, read,
                  [&units](int item, double raw) {
                    return units.Convert(static_cast<std::int32_t>(raw), KindOf(item));
                  });
    LogInformation("recording", "The minute before alarm " + alarm.display + ": " + name);
    AlarmKept.Raise(name);
  } catch (const FileError& error) {
    LogWarning("recording", error.what());
  }
}

// ---- a recording

void Instruments::Toggle() {
  if (recorder_.Now() != Recorder::State::idle) return recorder_.Stop();
  try {
    Begin(order, "by hand");
  } catch (const FileError& error) {
    ShowExclamation(std::string("Nothing can be recorded!\r") + error.what());
  }
}

void Instruments::Begin(const RecorderOrder& ordered, const std::string& cause) {
  const auto folder = Folder();
  if (!folder) throw FileError("A recording is kept beside its project, and none is open.");
  units_ = headings_.Units();
  RecordingHeading heading =
      headings_.Of(ordered.trigger ? ordered.trigger->words : cause, mayAsk_());
  recorder_.Begin(*folder, std::move(heading), ordered, Seconds());
}

}  // namespace velmoor
