#include "plant/LineRound.h"

#include <algorithm>
#include <utility>

#include "online/MonitoredItems.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr LineWait kSearch{};
// Half a second, as everything that must not hold the others up.
constexpr LineWait kAnswer{.first = 500, .behindEcho = 500};
constexpr int kSilencesOfALostAxis = 2;
// A search takes a tenth of the time at most.
constexpr int kSearchShare = 10;
constexpr std::chrono::milliseconds kNobodyThere{100};
constexpr double kBitsPerByte = 11;  // start, seven data bits, parity, two stop bits

ValueCommand CommandOf(int item) {
  return MonitoredItems()[static_cast<std::size_t>(item)].command;
}

std::optional<LineAnswer> AskItemOf(ClassSerialComm& comm, const std::string& axis, int item) {
  return AskOnLine(comm, axis, WordOf(CommandOf(item)), '=', kAnswer);
}

std::optional<std::int32_t> ValueIn(const LineAnswer& answer, int item) {
  if (!answer.value || Trim(*answer.value).empty()) return std::nullopt;
  try {
    return ClassSerialComm::ValueOf(static_cast<std::int32_t>(CommandOf(item)), *answer.value);
  } catch (const NumberError&) {
    return std::nullopt;
  }
}

double Seconds() {
  return std::chrono::duration<double>(world().clock->Monotonic()).count();
}

}  // namespace

std::optional<std::int32_t> AskValue(ClassSerialComm& comm, const std::string& axis, int item) {
  const auto answer = AskItemOf(comm, axis, item);
  return answer ? ValueIn(*answer, item) : std::nullopt;
}

LineRound::LineRound(ClassSerialComm& comm, std::vector<AxisState>& axes, std::vector<int> items)
    : comm_(comm), axes_(axes), items_(std::move(items)) {
  began_ = Seconds();
}

bool LineRound::Ask() {
  if (axis_ >= axes_.size()) {
    EndRound();
    if (!Probe()) return false;
    const bool anyone = std::ranges::any_of(
        axes_, [](const AxisState& each) { return each.standing != Standing::silent; });
    if (!anyone) world().events->WaitForEvents(kNobodyThere);
    began_ = Seconds();
    bytes_ = 0;
    TurnTo(0);
    return true;
  }
  if (question_ > 0) return AskItem(axis_);
  return AskDisplay(axis_, axes_[axis_].standing == Standing::unseen ? kSearch : kAnswer);
}

bool LineRound::AskDisplay(std::size_t axis, const LineWait& wait) {
  AxisState& state = axes_[axis];
  const auto answer = AskOnLine(comm_, state.axis.address, "ALM", ' ', wait);
  if (!answer) return false;
  if (!IsAnswered(axis, *answer)) return true;
  const bool isNew = state.standing != Standing::answers;
  if (answer->value) {
    state.reading.display = std::string(Trim(*answer->value));
  } else {
    ++state.failures;
    // Nothing is known of its state yet; it is asked again in the next round.
    if (isNew) state.reading.display = "unreadable";
  }
  state.standing = Standing::answers;
  Seen.Raise(axis);
  if (axis == axis_) NextQuestion();
  return true;
}

bool LineRound::AskItem(std::size_t axis) {
  AxisState& state = axes_[axis];
  const int item = items_[question_ - 1];
  const auto answer = AskItemOf(comm_, state.axis.address, item);
  if (!answer) return false;
  if (!IsAnswered(axis, *answer)) return true;
  if (const auto raw = ValueIn(*answer, item)) {
    state.values[item] = *raw;
    ValueRead.Raise(axis, item, *raw);
  } else {
    ++state.failures;
    state.values.erase(item);
  }
  NextQuestion();
  return true;
}

bool LineRound::IsAnswered(std::size_t axis, const LineAnswer& answer) {
  ++axes_[axis].questions;
  bytes_ += answer.bytes;
  if (answer.answered) {
    silences_ = 0;
  } else {
    Silence(axis);
  }
  return answer.answered;
}

void LineRound::Silence(std::size_t axis) {
  AxisState& state = axes_[axis];
  ++state.failures;
  const bool searched = state.standing != Standing::answers;
  if (!searched && ++silences_ < kSilencesOfALostAxis) return;
  silences_ = 0;
  const bool isNew = state.standing != Standing::silent;
  state.standing = Standing::silent;
  state.values.clear();
  if (isNew) Seen.Raise(axis);
  if (axis == axis_) TurnTo(axis_ + 1);
}

void LineRound::NextQuestion() {
  if (++question_ <= items_.size()) return;
  AxisRead.Raise(axis_);
  TurnTo(axis_ + 1);
}

void LineRound::TurnTo(std::size_t axis) {
  question_ = 0;
  axis_ = axis;
  while (axis_ < axes_.size() && axes_[axis_].standing == Standing::silent) ++axis_;
}

void LineRound::EndRound() {
  if (bytes_ == 0) return;
  roundSeconds_ = Seconds() - began_;
  wireSeconds_ = static_cast<double>(bytes_) * kBitsPerByte / static_cast<double>(comm_.baudRate());
  ++rounds_;
  RoundDone.Raise();
}

// ---- those that are silent

std::size_t LineRound::FirstSilentBehind(std::size_t axis) const {
  for (std::size_t step = 1; step <= axes_.size(); ++step) {
    const std::size_t each = (axis + step) % axes_.size();
    if (axes_[each].standing == Standing::silent) return each;
  }
  return axes_.size();
}

bool LineRound::Probe() {
  const Time now = world().clock->Monotonic();
  const std::size_t axis = FirstSilentBehind(probed_);
  if (axis == axes_.size() || now < nextProbe_) return true;
  probed_ = axis;
  if (!AskDisplay(axis, kSearch)) return false;
  nextProbe_ = now + kSearchShare * (world().clock->Monotonic() - now);
  return true;
}

}  // namespace velmoor
