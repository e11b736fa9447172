// A port that counts the bytes of its line, line ends included, and tells of each line that has
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

struct LineBytes {
  std::size_t all = 0;
  // Those that the exchanges have to wait for. A line is there at its CR: the LF behind an echo
  // delays the answer, but that behind an answer travels beside the next command, which goes the
  // other way.
  std::size_t awaited = 0;
};

class CountingPort final : public PassingPort {
 public:
  using PassingPort::PassingPort;

  void WriteLine(std::string_view line) override {
    Count(line.size() + 1);
    lineFeeds_ = 0;
    PassingPort::WriteLine(line);
    if (written) written(line);
  }
  std::string ReadLine() override {
    std::string line = PassingPort::ReadLine();
    Count(line.size() + 1);
    bytes.all += 1;
    bytes.awaited += std::exchange(lineFeeds_, 1);
    return line;
  }

  LineBytes bytes;
  std::function<void(std::string_view line)> written;

 private:
  void Count(std::size_t count) {
    bytes.all += count;
    bytes.awaited += count;
  }

  std::size_t lineFeeds_ = 0;  // on their way behind the line that was read last
};

}  // namespace velmoor::bench
