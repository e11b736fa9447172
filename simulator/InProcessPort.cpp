#include "simulator/InProcessPort.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {

void InProcessPort::Advance(Micros time) {
  AdvanceTo(now_ + time);
}

void InProcessPort::AdvanceTo(Micros when) {
  if (when <= now_) return;
  const Micros passed = when - now_;
  now_ = when;
  if (listener_) listener_(passed);
}

void InProcessPort::SetSettings(const std::string& settings) {
  settings_ = settings;
  const auto rate = ParseWhole(settings.substr(0, settings.find(',')));
  if (rate == 9600 || rate == 19200 || rate == 38400) baudRate_ = static_cast<std::int32_t>(*rate);
  DiscardInput();
}

bool InProcessPort::Open() {
  Close();
  open_ = plugged_;
  lastError_ = plugged_ ? "" : name_ + " does not exist.";
  line_.DropInput();
  return open_;
}

void InProcessPort::Close() {
  open_ = false;
  coming_.clear();
  partial_.clear();
}

void InProcessPort::Lose() {
  Close();
  plugged_ = false;
  throw SerialPortError(name_ + " is gone.");
}

int InProcessPort::WaitingBytes() {
  if (open_ && !plugged_) Lose();
  const auto arrived = std::ranges::count_if(
      coming_, [this](const Arrival& arrival) { return arrival.when <= now_; });
  return static_cast<int>(arrived) + static_cast<int>(partial_.size());
}

void InProcessPort::DiscardInput() {
  partial_.clear();
  std::erase_if(coming_, [this](const Arrival& arrival) { return arrival.when <= now_; });
}

void InProcessPort::WriteLine(std::string_view line) {
  if (!open_) return;
  if (!plugged_) Lose();
  const std::string bytes = std::string(line) + "\r";
  const Micros received = now_ + (paced_ ? WireTime(bytes.size(), baudRate_) : Micros(0));
  for (const Transmission& transmission : line_.Receive(bytes, received, baudRate_)) {
    Schedule(transmission);
  }
}

void InProcessPort::Schedule(const Transmission& transmission) {
  lineFree_ = std::max(lineFree_, transmission.start);
  if (transmission.hangsUp) coming_.push_back({lineFree_, '\0', true});
  const Micros start = lineFree_;
  for (std::size_t i = 0; i < transmission.bytes.size(); ++i) {
    if (paced_) lineFree_ = start + WireTime(i + 1, transmission.baudRate);
    const char seven = static_cast<char>(transmission.bytes[i] & 0x7F);
    coming_.push_back({lineFree_, seven == kDamagedOnWire ? kDamagedCharacter : seven, false});
  }
}

std::string InProcessPort::ReadLine() {
  if (!open_) return {};
  if (!plugged_) Lose();
  const Micros deadline = now_ + std::chrono::milliseconds(timeOut_);
  while (!coming_.empty() && coming_.front().when <= deadline) {
    const Arrival arrival = coming_.front();
    coming_.pop_front();
    AdvanceTo(arrival.when);
    if (arrival.hangsUp) Lose();
    const bool endsLine = arrival.byte == '\r' || arrival.byte == '\n';
    if (!endsLine) {
      partial_ += arrival.byte;
    } else if (!partial_.empty()) {
      return std::exchange(partial_, {});
    }
  }
  AdvanceTo(deadline);
  return {};
}

}  // namespace velmoor
