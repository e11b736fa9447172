#include "app/LineStates.h"

#include <algorithm>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

using Presence = LineAxisState::Presence;

constexpr int kSilencesOfAnAbsentAxis = 2;

}  // namespace

// ---- one axis

std::string LineAxisState::AlarmText() const {
  if (presence != Presence::present || !alarm) return {};
  const bool usual = alarm->display == "RUN" || alarm->display == "BB" || alarm->display == "INPOS";
  if (usual) return "none";
  if (!IsAlarm(*alarm)) return alarm->display;
  return alarm->display + (alarm->name.empty() ? "" : ": " + alarm->name);
}

Tone LineAxisState::AlarmTone() const {
  const bool shown = presence == Presence::present && alarm && IsAlarm(*alarm);
  return shown ? Tone::alarm : Tone::normal;
}

std::string LineAxisState::StateText() const {
  if (presence == Presence::absent) return "absent";
  if (seen && glance.state == ProjectGlance::State::missing) return "no project file";
  if (seen && glance.state == ProjectGlance::State::unreadable) return "project unreadable";
  if (differences) return *differences == 0 ? "equal" : NumberText(*differences) + " differ";
  if (seen && glance.marked > 0) return NumberText(glance.marked) + " to download";
  return "unknown";
}

Tone LineAxisState::StateTone() const {
  if (presence == Presence::absent) return Tone::faint;
  if (seen && glance.state != ProjectGlance::State::project) return Tone::alarm;
  if (differences) return *differences == 0 ? Tone::good : Tone::busy;
  return seen && glance.marked > 0 ? Tone::busy : Tone::faint;
}

// ---- all axes

void LineStates::Take(const LineFile& line) {
  axes_.clear();
  for (const LineAxis& axis : line.axes) axes_.push_back({.axis = axis});
}

std::vector<LineAxis> LineStates::Chosen() const {
  std::vector<LineAxis> chosen;
  for (const LineAxisState& state : axes_) {
    if (state.chosen) chosen.push_back(state.axis);
  }
  return chosen;
}

void LineStates::ChooseAll(bool chosen) {
  for (LineAxisState& state : axes_) state.chosen = chosen;
}

LineAxisState* LineStates::Find(const std::string& address) {
  const auto found = std::ranges::find_if(
      axes_, [&address](const LineAxisState& state) { return state.axis.address == address; });
  return found == axes_.end() ? nullptr : &*found;
}

void LineStates::Note(std::size_t place, const LineWatch::Look& look) {
  LineAxisState& state = axes_.at(place);
  if (look.answered) {
    state.silences = 0;
    state.presence = Presence::present;
    if (look.state) state.alarm = look.state;
    return;
  }
  ++state.silences;
  if (state.presence == Presence::present && state.silences < kSilencesOfAnAbsentAxis) return;
  // Another amplifier may come back in its place.
  if (state.presence == Presence::present) state.differences.reset();
  state.presence = Presence::absent;
}

void LineStates::NotePresence(const LineTable& table) {
  for (const auto& [axis, result] : table.rows) {
    LineAxisState* const state = Find(axis.address);
    if (state == nullptr || result.word == "stopped") continue;
    const bool absent = result.word == "absent";
    if (absent || result.done) state->presence = absent ? Presence::absent : Presence::present;
    state->silences = 0;
  }
}

void LineStates::NoteInfo(const LineTable& table) {
  NotePresence(table);
  for (const auto& [axis, result] : table.rows) {
    LineAxisState* const state = Find(axis.address);
    if (state == nullptr || !result.done || result.more.size() < 6) continue;
    state->amplifier = result.more[0];
    state->motor = result.more[1];
    state->encoder = result.more[2];
    state->firmware = result.more[3] + " / " + result.more[4];
    state->alarm = DescribeAlarm(result.more[5]);
  }
}

void LineStates::NoteCompared(const LineTable& table) {
  NotePresence(table);
  for (const auto& [axis, result] : table.rows) {
    LineAxisState* const state = Find(axis.address);
    if (state == nullptr) continue;
    state->differences.reset();
    const auto count = result.more.empty() ? std::nullopt : ParseWhole(result.more.front());
    if (result.done && count) state->differences = static_cast<std::size_t>(*count);
  }
}

void LineStates::NoteMoved(const LineTable& table, bool whole) {
  NotePresence(table);
  for (const auto& [axis, result] : table.rows) {
    LineAxisState* const state = Find(axis.address);
    if (state == nullptr || result.word == "stopped" || result.word == "absent") continue;
    state->differences.reset();
    if (result.done && whole) state->differences = 0;
  }
  LookAgain();
}

void LineStates::NoteChanged(const LineTable& table) {
  for (const auto& [axis, result] : table.rows) {
    LineAxisState* const state = Find(axis.address);
    if (state != nullptr && result.done) state->differences.reset();
  }
  LookAgain();
}

void LineStates::LookAgain() {
  for (LineAxisState& state : axes_) state.seen = false;
}

std::optional<std::size_t> LineStates::LookAtNext() {
  const auto next = std::ranges::find(axes_, false, &LineAxisState::seen);
  if (next == axes_.end()) return std::nullopt;
  next->glance = next->axis.project.empty() ? ProjectGlance{} : GlanceAt(next->axis.project);
  next->seen = true;
  return static_cast<std::size_t>(next - axes_.begin());
}

std::string LineStates::Summary() const {
  const auto count = [this](const auto& test) { return std::ranges::count_if(axes_, test); };
  const auto present =
      count([](const LineAxisState& state) { return state.presence == Presence::present; });
  const auto absent =
      count([](const LineAxisState& state) { return state.presence == Presence::absent; });
  const auto alarms =
      count([](const LineAxisState& state) { return state.AlarmTone() == Tone::alarm; });
  std::string text = NumberText(axes_.size()) + (axes_.size() == 1 ? " axis" : " axes");
  if (present > 0) text += ", " + NumberText(present) + " present";
  if (absent > 0) text += ", " + NumberText(absent) + " absent";
  if (alarms > 0) text += ", " + NumberText(alarms) + " in alarm";
  return text;
}

}  // namespace velmoor
