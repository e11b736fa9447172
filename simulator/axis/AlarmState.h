// What an amplifier tells of its faults.
#pragma once

#include <deque>
#include <string>

namespace velmoor {

struct AlarmState {
  std::string current;              // panel display such as "A.9F"; empty in the normal state
  std::string warning;              // likewise, of what stops nothing
  std::string error = "0000";       // four characters
  std::deque<std::string> history;  // newest first, ten at most

  void Raise(const std::string& display) {
    constexpr std::size_t kHistoryLength = 10;
    current = display;
    history.push_front(display);
    if (history.size() > kHistoryLength) history.pop_back();
  }
  void Reset() {
    current.clear();
    error = "0000";
  }
};

}  // namespace velmoor
