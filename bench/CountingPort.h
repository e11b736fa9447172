// A port that counts the bytes that an exchange has to wait for, and tells of each line that has
// gone out.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/PassingPort.h"

namespace velmoor::bench {

// The time that so many bytes take on the line: a start bit, 7 data bits, parity, 2 stop bits each.
[[nodiscard]] inline double WireSeconds(std::size_t bytes, std::int32_t baudRate) {
  constexpr double kBitsPerCharacter = 11;
  return static_cast<double>(bytes) * kBitsPerCharacter / baudRate;
}

class CountingPort final : public PassingPort {
 public:
  using PassingPort::PassingPort;

  void WriteLine(std::string_view line) override {
    bytes += line.size() + 1;
    answered_ = false;
    PassingPort::WriteLine(line);
    if (written) written(line);
  }
  // A line is there at its CR. Its LF delays a line behind it, the answer behind the echo; behind
  // the last it travels beside the next command, which goes the other way.
  std::string ReadLine() override {
    std::string line = PassingPort::ReadLine();
    bytes += line.size() + (std::exchange(answered_, true) ? 2 : 1);
    return line;
  }

  std::size_t bytes = 0;
  std::function<void(std::string_view line)> written;

 private:
  bool answered_ = false;  // since the last line that went out
};

}  // namespace velmoor::bench
