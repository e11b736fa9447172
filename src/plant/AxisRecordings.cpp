#include "plant/AxisRecordings.h"

#include <algorithm>
#include <utility>

#include "instruments/AlarmRecordings.h"
#include "online/MonitoredItems.h"
#include "platform/Events.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

double Seconds() {
  return std::chrono::duration<double>(world().clock->Monotonic()).count();
}

}  // namespace

AxisRecordings::AxisRecordings(const std::string& folder, const std::string& like, std::string line,
                               std::vector<int> items, std::size_t axes, std::size_t mostBytes)
    : folder_(folder, like),
      line_(std::move(line)),
      items_(std::move(items)),
      mostBytes_(mostBytes),
      boxes_(axes),
      inAlarm_(axes) {}

void AxisRecordings::TakeValue(std::size_t axis, int item, std::int32_t raw) {
  const auto place = std::ranges::find(items_, item) - items_.begin();
  boxes_[axis].Take(static_cast<int>(place), Seconds(), raw);
}

bool AxisRecordings::TakeDisplay(std::size_t axis, const AxisState& state) {
  const bool tripped = IsAlarm(state.reading) && !IsWarning(state.reading);
  boxes_[axis].Take(static_cast<int>(items_.size()), Seconds(), tripped ? 1 : 0);
  const bool came = tripped && inAlarm_[axis] == false;
  inAlarm_[axis] = tripped;
  return came;
}

void AxisRecordings::Forget(std::size_t axis) {
  inAlarm_[axis].reset();
}

AxisRecordings::Kept AxisRecordings::Keep(std::size_t axis, const AxisState& state,
                                          const std::vector<std::string>& remarks) {
  RecordingHeading heading;
  heading.begun = MomentText(world().clock->Now());
  heading.project = line_;
  heading.axis = state.axis.address;
  const AlarmReading& alarm = state.reading;
  heading.cause =
      kAlarmCause + VisibleText(alarm.display) + (alarm.name.empty() ? "" : ": " + alarm.name);
  heading.note = VisibleText(state.axis.name);
  heading.remarks = remarks;
  const MonitoredUnits raw;
  for (const int item : items_) {
    const MonitoredItem& info = MonitoredItems()[static_cast<std::size_t>(item)];
    heading.items.push_back({NameOf(info), raw.UnitOf(info.kind), 0});
  }
  heading.items.push_back({recorded::kAlarm, "", 0});
  // The display may be anything that the wire brings; a name may not.
  std::string word = "axis " + state.axis.address + " alarm " + alarm.display;
  std::ranges::replace_if(
      word, [](char c) { return c < 0x20 || c >= 0x7F || c == '/' || c == '\\'; }, '_');
  const std::string name = boxes_[axis].Keep(folder_, std::move(heading), word, Seconds(),
                                             [](int /*item*/, double value) { return value; });
  KeepBound();
  return {name, world().files->SizeOf(folder_.PathOf(name))};
}

// The latest one stays.
void AxisRecordings::KeepBound() const {
  const std::vector<std::string> names = folder_.Names();
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < names.size(); ++i) {
    bytes += world().files->SizeOf(folder_.PathOf(names[i]));
    if (i > 0 && bytes > mostBytes_) folder_.Remove(names[i]);
  }
}

}  // namespace velmoor
