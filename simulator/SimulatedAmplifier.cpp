#include "simulator/SimulatedAmplifier.h"

#include <algorithm>
#include <iterator>

#include "platform/Numbers.h"
#include "simulator/Vocabulary.h"

namespace velmoor {
namespace {

constexpr std::size_t kHistoryLength = 10;
constexpr std::size_t kJournalLength = 10000;
constexpr std::uint32_t kEchoParameter = 0x800;
constexpr std::uint32_t kSpeedParameter = 0x801;
constexpr std::uint32_t kAcknowledgeParameter = 0x802;
constexpr std::int32_t kSpeeds[] = {9600, 19200, 38400};

}  // namespace

SimulatedAmplifier::SimulatedAmplifier(AmplifierSettings settings) {
  const auto speed = std::ranges::find(kSpeeds, settings.baud);
  const auto index = speed != std::end(kSpeeds) ? speed - std::begin(kSpeeds) : 0;
  state_.settings = std::move(settings);
  state_.memory.parameters.Write(kSpeedParameter, NumberText(index));
  state_.values["STIFF"] = 4;
  state_.values["INERTIA"] = 300;
  state_.values["STS"] = 0b1000001;  // in position, main power on
  Restart(Micros(0));
  deafUntil_ = Micros::min();
}

void SimulatedAmplifier::Restart(Micros now) {
  AmplifierMemory& memory = state_.memory;
  memory.index.Load();
  memory.zones.Load();
  memory.jog.Load();
  state_.motion = {};
  state_.alarm.current.clear();
  state_.alarm.error = "0000";
  const std::int64_t line = memory.parameters.Value(kEchoParameter);
  state_.echo = line != 0 && line != 2 && line != 5;
  const auto speed = static_cast<std::size_t>(memory.parameters.Value(kSpeedParameter));
  baudRate_ = speed < std::size(kSpeeds) ? kSpeeds[speed] : kSpeeds[0];
  deafUntil_ = now + state_.settings.restartTime;
}

Reply SimulatedAmplifier::Execute(std::string_view command, Micros now) {
  const bool acknowledged = state_.memory.parameters.Value(kAcknowledgeParameter) != 0;
  Reply reply = ExecuteWord(state_, command);
  Count(command);
  // A write that turns the acknowledge off is still answered.
  if (reply.acknowledges && !acknowledged) reply.text.clear();
  if (!reply.text.empty()) reply.text.insert(0, 1, Axis());
  journal_.push_back({now, Axis() + std::string(command), reply.text});
  if (journal_.size() > kJournalLength) journal_.pop_front();
  if (reply.restarts) Restart(now);
  return reply;
}

void SimulatedAmplifier::Count(std::string_view command) {
  std::string word(WordOf(command));
  if (word.empty()) word = "?";
  if (command.find('=') != std::string_view::npos) word += "=";
  ++counts_[word];
}

int SimulatedAmplifier::Asked(std::string_view word) const {
  const auto count = counts_.find(word);
  return count != counts_.end() ? count->second : 0;
}

void SimulatedAmplifier::ForgetWhatWasAsked() {
  counts_.clear();
  journal_.clear();
}

void SimulatedAmplifier::RaiseAlarm(const std::string& display) {
  state_.alarm.current = display;
  state_.alarm.history.push_front(display);
  if (state_.alarm.history.size() > kHistoryLength) state_.alarm.history.pop_back();
  state_.motion = {};
}

bool SimulatedAmplifier::SetValue(std::string_view word, std::int32_t value) {
  if (!IsValueWord(word)) return false;
  state_.values[std::string(word)] = value;
  return true;
}

bool SimulatedAmplifier::SetBit(std::string_view word, int bit, bool on) {
  if (bit < 0 || bit >= BitsOf(word)) return false;
  std::int32_t& value = state_.values[std::string(word)];
  const std::int32_t mask = std::int32_t{1} << bit;
  value = on ? value | mask : value & ~mask;
  return true;
}

}  // namespace velmoor
