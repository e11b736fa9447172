#include "plant/WatchReports.h"

#include <utility>

#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kState = "state";
constexpr const char* kAlarm = "alarm";
constexpr const char* kLine = "line";
constexpr const char* kRecording = "recording";
constexpr const char* kValues = "values";
// A publisher that is woken for each message costs more than the messages.
constexpr std::chrono::milliseconds kServe{200};
constexpr std::chrono::milliseconds kFlush{1000};
constexpr std::chrono::milliseconds kDropped{60000};
constexpr std::chrono::milliseconds kLastMessage{2000};
// A broker that takes messages for a moment and hangs up again is no news each time.
constexpr Remark::Patience kPatience{.begins = std::chrono::seconds(2),
                                     .settles = std::chrono::seconds(30)};
constexpr std::size_t kMegabyte = std::size_t{1} << 20U;

std::size_t Bytes(std::int64_t megabytes) {
  return static_cast<std::size_t>(megabytes) * kMegabyte;
}

}  // namespace

WatchReports::WatchReports(WatchHost& host, const WatchSettings& settings,
                           const std::string& folder, const std::string& lineFile,
                           const std::vector<AxisState>& axes, std::vector<int> items)
    : host_(host),
      settings_(settings),
      axes_(axes),
      items_(std::move(items)),
      messages_(settings.topic, NameOfLine(lineFile)),
      valuesDue_(axes.size()),
      tell_([this](const std::string& words) { host_.Tell(words); }),
      publisherRemark_(tell_, "The broker takes messages.", kPatience),
      outboxRemark_(tell_, "Messages are kept on disk again.", kPatience),
      daysRemark_(tell_, "Day files are written again.", kPatience),
      metricsRemark_(tell_, "The file of figures is written again.", kPatience) {
  if (!settings.csv.empty()) {
    days_.emplace(settings.csv, messages_.Line(), lineFile, items_, Bytes(settings.csvLimit));
  }
  if (settings.broker.empty()) return;
  outbox_.emplace(folder, Bytes(settings.spool));
  for (const auto& [axisAndKind, told] : outbox_->Changes().AllLatest()) {
    keys_[axisAndKind] = told.key;
  }
  report_.droppedChanges = outbox_->Changes().Dropped();
  report_.droppedValues = outbox_->Values().Dropped();
  publisher_ = host.Publish(settings, messages_.Watch("on"), messages_.Watch("gone"));
}

std::string WatchReports::NameOf(std::size_t axis) const {
  const LineAxis& named = axes_[axis].axis;
  return "Axis " + named.address + (named.name.empty() ? "" : " " + VisibleText(named.name));
}

bool WatchReports::IsNews(const std::string& axis, const char* kind, const std::string& key) {
  std::string& told = keys_[axis + " " + kind];
  return std::exchange(told, key) != key;
}

template <typename Make>
void WatchReports::Publish(const std::string& axis, const char* kind, Make make) {
  if (outbox_) outbox_->Changes().Add(axis, kind, make(outbox_->Changes().NextSequence(axis)));
}

void WatchReports::Seen(std::size_t axis) {
  const AxisState& state = axes_[axis];
  const std::string& address = state.axis.address;
  if (IsNews(address, kState, StateKey(state))) {
    host_.Tell(NameOf(axis) + ": " + StateWord(state));
    Publish(address, kState,
            [&](std::uint64_t sequence) { return messages_.State(state, sequence); });
  }
  // Of one that is not seen nobody knows.
  if (state.standing != Standing::answers) return;
  if (IsNews(address, kAlarm, AlarmKey(state))) {
    if (IsAlarm(state.reading)) {
      host_.Tell(NameOf(axis) + ": " + VisibleText(state.reading.display) + " " +
                 state.reading.name);
    }
    Publish(address, kAlarm,
            [&](std::uint64_t sequence) { return messages_.Alarm(state, sequence); });
  }
}

void WatchReports::Read(std::size_t axis) {
  const Time now = world().clock->Monotonic();
  if (now < valuesDue_[axis]) return;
  const Time every = std::chrono::seconds(settings_.every);
  // By the clock and not by the reading, so that one a second stays one a second.
  valuesDue_[axis] = valuesDue_[axis] + every < now ? now + every : valuesDue_[axis] + every;
  const AxisState& state = axes_[axis];
  if (days_) days_->Take(state);
  if (!outbox_) return;
  Journal& values = outbox_->Values();
  const std::uint64_t sequence = values.NextSequence(state.axis.address);
  values.Add(state.axis.address, kValues, messages_.Values(state, items_, sequence));
}

void WatchReports::Recorded(std::size_t axis, const std::string& name, std::size_t bytes) {
  host_.Tell(NameOf(axis) + ": recorded as " + name);
  Publish(axes_[axis].axis.address, kRecording, [&](std::uint64_t sequence) {
    return messages_.Recording(axes_[axis], name, bytes, sequence);
  });
}

void WatchReports::Line(const std::string& state, const std::string& reason) {
  report_.state = state;
  report_.reason = reason;
  if (!IsNews(kLine, kLine, LineKey(report_))) return;
  Publish(kLine, kLine,
          [&](std::uint64_t sequence) { return messages_.OfLine(report_, sequence); });
}

// ---- on the way

void WatchReports::Serve() {
  const Time now = world().clock->Monotonic();
  if (outbox_ && publisher_ && now >= nextServe_) {
    nextServe_ = now + kServe;
    outbox_->Serve(*publisher_);
    publisherRemark_.Note(publisher_->Trouble());
    outboxRemark_.Note(outbox_->Trouble());
    if (now >= nextDropped_) TellDropped(now);
  }
  if (days_ && now >= nextFlush_) {
    nextFlush_ = now + kFlush;
    days_->Flush();
    daysRemark_.Note(days_->Trouble());
  }
}

// Once a minute: what is dropped for hours is no news a thousand times.
void WatchReports::TellDropped(Time now) {
  const std::uint64_t changes = outbox_->Changes().Dropped();
  const std::uint64_t values = outbox_->Values().Dropped();
  if (changes == report_.droppedChanges && values == report_.droppedValues) return;
  nextDropped_ = now + kDropped;
  host_.Tell("Dropped so far: " + NumberText(changes) + " changes, " + NumberText(values) +
             " messages of values");
  report_.droppedChanges = changes;
  report_.droppedValues = values;
  if (!report_.state.empty()) Line(report_.state, report_.reason);
}

void WatchReports::Show(LineFigures figures) {
  if (settings_.metrics.empty() && settings_.listen.empty()) return;
  figures.line = messages_.Line();
  if (outbox_ && publisher_) {
    figures.publishes = true;
    figures.connected = publisher_->Trouble().empty();
    figures.delivered = outbox_->Delivered();
    figures.waiting = outbox_->Waiting();
    figures.droppedChanges = outbox_->Changes().Dropped();
    figures.droppedValues = outbox_->Values().Dropped();
  }
  const std::string text = MetricsText(figures, axes_, items_);
  host_.ShowMetrics(text);
  if (settings_.metrics.empty()) return;
  try {
    world().files->WriteWhole(settings_.metrics, text);
    metricsRemark_.Note({});
  } catch (const FileError& error) {
    metricsRemark_.Note(error.what());
  }
}

void WatchReports::End() {
  if (days_) days_->Flush();
  if (!publisher_) return;
  const Time limit = world().clock->Monotonic() + kLastMessage;
  outbox_->Serve(*publisher_);
  while (publisher_->Trouble().empty() && outbox_->Waiting() > 0 &&
         world().clock->Monotonic() < limit) {
    world().events->WaitForEvents(std::chrono::milliseconds(10));
    outbox_->Serve(*publisher_);
  }
  publisher_->End(messages_.Watch("ended"), kLastMessage);
  outbox_->Serve(*publisher_);
}

}  // namespace velmoor
