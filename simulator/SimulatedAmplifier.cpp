#include "simulator/SimulatedAmplifier.h"

#include <algorithm>
#include <iterator>

#include "platform/Numbers.h"
#include "simulator/Vocabulary.h"

namespace velmoor {
namespace {

constexpr std::size_t kJournalLength = 10000;
constexpr std::uint32_t kEchoParameter = 0x800;
constexpr std::uint32_t kSpeedParameter = 0x801;
constexpr std::uint32_t kAcknowledgeParameter = 0x802;
constexpr std::int32_t kSpeeds[] = {9600, 19200, 38400};

// The type of an encoder is hexadecimal: its bits in the low byte, bit 8 for an absolute one.
std::uint32_t EncoderCode(const std::string& encoder) {
  return ParseHex(encoder).value_or(0);
}
int EncoderBits(const std::string& encoder) {
  constexpr int kMostBits = 24;
  return std::min(static_cast<int>(EncoderCode(encoder) & 0xFFU), kMostBits);
}
bool IsAbsolute(const std::string& encoder) {
  return (EncoderCode(encoder) & 0x100U) != 0;
}

}  // namespace

AmplifierState::AmplifierState(AmplifierSettings amplifierSettings)
    : settings(std::move(amplifierSettings)), axis(memory, alarm, EncoderBits(settings.encoder)) {}

SimulatedAmplifier::SimulatedAmplifier(AmplifierSettings settings) : state_(std::move(settings)) {
  const auto speed = std::ranges::find(kSpeeds, state_.settings.baud);
  const auto index = speed != std::end(kSpeeds) ? speed - std::begin(kSpeeds) : 0;
  state_.memory.parameters.Write(kSpeedParameter, NumberText(index));
  Restart(Micros(0));
  deafUntil_ = Micros::min();
}

void SimulatedAmplifier::Restart(Micros now) {
  AmplifierMemory& memory = state_.memory;
  memory.index.Load();
  memory.zones.Load();
  memory.jog.Load();
  state_.alarm.Reset();
  state_.axis.PowerOn(IsAbsolute(state_.settings.encoder));
  const std::int64_t line = memory.parameters.Value(kEchoParameter);
  state_.echo = line != 0 && line != 2 && line != 5;
  const auto speed = static_cast<std::size_t>(memory.parameters.Value(kSpeedParameter));
  baudRate_ = speed < std::size(kSpeeds) ? kSpeeds[speed] : kSpeeds[0];
  deafUntil_ = now + state_.settings.restartTime;
}

Reply SimulatedAmplifier::Execute(std::string_view command, Micros now) {
  const bool acknowledged = state_.memory.parameters.Value(kAcknowledgeParameter) != 0;
  AdvanceTo(now);
  Reply reply = ExecuteWord(state_, command);
  Count(command);
  // A write that turns the acknowledge off is still answered.
  if (reply.acknowledges && !acknowledged) reply.text.clear();
  if (!reply.text.empty()) reply.text.insert(0, 1, Axis());
  Keep(command, reply.text, now);
  if (reply.restarts) Restart(now);
  return reply;
}

void SimulatedAmplifier::Pass(std::string_view command, Micros now) {
  AdvanceTo(now);
  Count(command);
  Keep(command, {}, now);
}

void SimulatedAmplifier::Keep(std::string_view command, const std::string& answer, Micros now) {
  journal_.push_back({now, Axis() + std::string(command), answer});
  if (journal_.size() > kJournalLength) journal_.pop_front();
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

bool SimulatedAmplifier::SetValue(std::string_view word, std::int32_t value) {
  if (!IsValueWord(word)) return false;
  if (word == "INERTIA") {
    DrivenLoad load = state_.axis.Load();
    load.inertiaRatio = value / 100.0;
    state_.axis.SetLoad(load);
  } else if (word == "STIFF") {
    state_.rigidity = value;
  } else {
    state_.values[std::string(word)] = value;
  }
  return true;
}

bool SimulatedAmplifier::SetBit(std::string_view word, int bit, bool on) {
  if (bit < 0 || bit >= BitsOf(word)) return false;
  if (state_.axis.SetInput(word, bit, on)) return true;
  std::int32_t& value =
      state_.values.try_emplace(std::string(word), state_.axis.Value(word).value_or(0))
          .first->second;
  const std::int32_t mask = std::int32_t{1} << bit;
  value = on ? value | mask : value & ~mask;
  return true;
}

}  // namespace velmoor
