#include "plant/Messages.h"

#include <algorithm>
#include <chrono>

#include "online/AlarmAdvice.h"
#include "online/MonitoredItems.h"
#include "platform/Events.h"
#include "platform/JsonTexts.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

using Kind = JsonField::Kind;
using Fields = std::vector<JsonField>;

std::string Padded(std::int64_t number, std::size_t digits) {
  return PadToDigits(NumberText(number), digits);
}

std::string Json(const Fields& fields) {
  return world().jsonTexts->Object(fields);
}

Fields Numbered(std::uint64_t sequence) {
  return {{"seq", NumberText(sequence), Kind::number}, {"time", UtcNow()}};
}

Fields OfAxis(const AxisState& axis, std::uint64_t sequence) {
  Fields fields = Numbered(sequence);
  fields.push_back({"axis", axis.axis.address});
  fields.push_back({"name", VisibleText(axis.axis.name)});
  return fields;
}

bool IsPresent(const AxisState& axis) {
  return axis.standing == Standing::answers && IsAlarm(axis.reading);
}

}  // namespace

std::string UtcNow() {
  using namespace std::chrono;
  const sys_time<milliseconds> now{world().clock->SinceEpoch()};
  const auto day = floor<days>(now);
  const year_month_day date{day};
  const hh_mm_ss time{now - day};
  return Padded(static_cast<int>(date.year()), 4) + "-" +
         Padded(static_cast<unsigned>(date.month()), 2) + "-" +
         Padded(static_cast<unsigned>(date.day()), 2) + "T" + Padded(time.hours().count(), 2) +
         ":" + Padded(time.minutes().count(), 2) + ":" + Padded(time.seconds().count(), 2) + "." +
         Padded(time.subseconds().count(), 3) + "Z";
}

std::string TopicLevel(std::string_view name) {
  std::string level(name);
  std::ranges::replace_if(
      level, [](char c) { return c <= 0x20 || c >= 0x7F || c == '/' || c == '+' || c == '#'; },
      '_');
  // A topic that begins with "$" is a broker's own.
  if (level.empty() || level.front() == '$') level.insert(0, "_");
  return level;
}

std::string FieldOf(int item) {
  std::string field = NameOf(MonitoredItems()[static_cast<std::size_t>(item)]);
  std::ranges::transform(field, field.begin(), [](char c) {
    if (c >= 'A' && c <= 'Z') return static_cast<char>(c - 'A' + 'a');
    return c == ' ' ? '_' : c;
  });
  return field;
}

Messages::Messages(const std::string& prefix, const std::string& line) : line_(line) {
  std::string_view rest = prefix;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('/'), rest.size());
    root_ += TopicLevel(rest.substr(0, end)) + "/";
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  root_ += TopicLevel(line);
}

std::string Messages::Topic(const std::string& axis, const char* kind) const {
  return root_ + "/" + axis + "/" + kind;
}

Publication Messages::Watch(const std::string& state) const {
  return {root_ + "/watch", Json({{"state", state}, {"time", UtcNow()}}), true};
}

Told Messages::OfLine(const LineReport& report, std::uint64_t sequence) const {
  Fields fields = Numbered(sequence);
  fields.push_back({"state", report.state});
  fields.push_back({"reason", VisibleText(report.reason)});
  fields.push_back({"dropped_changes", NumberText(report.droppedChanges), Kind::number});
  fields.push_back({"dropped_values", NumberText(report.droppedValues), Kind::number});
  return {sequence, LineKey(report), {root_ + "/line", Json(fields), true}};
}

Told Messages::State(const AxisState& axis, std::uint64_t sequence) const {
  Fields fields = OfAxis(axis, sequence);
  fields.push_back({"state", StateWord(axis)});
  const bool answers = axis.standing == Standing::answers;
  fields.push_back({"display", answers ? VisibleText(axis.reading.display) : std::string()});
  return {sequence, StateKey(axis), {Topic(axis.axis.address, "state"), Json(fields), true}};
}

Told Messages::Alarm(const AxisState& axis, std::uint64_t sequence) const {
  Fields fields = OfAxis(axis, sequence);
  const bool present = IsPresent(axis);
  const AlarmAdvice* const advice = present ? AdviceOn(axis.reading.display) : nullptr;
  fields.push_back({"present", present ? "1" : "0", Kind::flag});
  fields.push_back({"warning", present && IsWarning(axis.reading) ? "1" : "0", Kind::flag});
  fields.push_back({"display", present ? VisibleText(axis.reading.display) : std::string()});
  fields.push_back({"alarm", present ? axis.reading.name : std::string()});
  fields.push_back({"cause", advice != nullptr ? std::string(advice->cause) : std::string()});
  fields.push_back({"remedy", advice != nullptr ? std::string(advice->remedy) : std::string()});
  return {sequence, AlarmKey(axis), {Topic(axis.axis.address, "alarm"), Json(fields), true}};
}

Told Messages::Values(const AxisState& axis, const std::vector<int>& items,
                      std::uint64_t sequence) const {
  Fields fields = OfAxis(axis, sequence);
  fields.push_back({"display", VisibleText(axis.reading.display)});
  for (const int item : items) {
    const auto value = axis.values.find(item);
    const bool known = value != axis.values.end();
    fields.push_back(
        {FieldOf(item), known ? NumberText(value->second) : std::string(), Kind::number});
    if (item == kStatusItem) {
      fields.push_back({"status", known ? BitWords(item, value->second) : std::string()});
    }
  }
  return {sequence, {}, {Topic(axis.axis.address, "values"), Json(fields), false}};
}

Told Messages::Recording(const AxisState& axis, const std::string& name, std::size_t bytes,
                         std::uint64_t sequence) const {
  Fields fields = OfAxis(axis, sequence);
  fields.push_back({"recording", name});
  fields.push_back({"bytes", NumberText(bytes), Kind::number});
  return {sequence, name, {Topic(axis.axis.address, "recording"), Json(fields), true}};
}

std::string StateKey(const AxisState& axis) {
  return StateWord(axis) + " " +
         (StateWord(axis) == "servo on" || axis.standing != Standing::answers
              ? std::string()
              : axis.reading.display);
}

// An axis that is not seen has the alarm that it had.
std::string AlarmKey(const AxisState& axis) {
  return IsPresent(axis) ? axis.reading.display : "none";
}

std::string LineKey(const LineReport& report) {
  return report.state + " " + NumberText(report.droppedChanges) + " " +
         NumberText(report.droppedValues);
}

}  // namespace velmoor
