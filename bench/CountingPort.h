// A port that counts the bytes of its line, line ends included, and tells when a line goes out.
#pragma once

#include <chrono>
#include <functional>
#include <iostream>
#include <string>

#include "SimulatorChild.h"
#include "platform/Numbers.h"
#include "platform/PassingPort.h"

namespace velmoor::bench {

class CountingPort final : public PassingPort {
 public:
  using PassingPort::PassingPort;

  void WriteLine(std::string_view line) override {
    ++lines;
    bytes += line.size() + 1;
    lastLine = line;
    PassingPort::WriteLine(line);
    lastWrite = std::chrono::steady_clock::now();
  }
  std::string ReadLine() override {
    std::string line = PassingPort::ReadLine();
    bytes += line.size() + 2;
    return line;
  }

  std::size_t bytes = 0;
  std::size_t lines = 0;  // that went out
  std::string lastLine;
  std::chrono::steady_clock::time_point lastWrite;
};

// Runs `transfer` over `port` and prints its time beside that of its bytes on the line.
inline void MeasureTransfer(const std::string& what, CountingPort& port, std::int32_t baudRate,
                            const std::function<bool()>& transfer) {
  port.bytes = port.lines = 0;
  const auto start = std::chrono::steady_clock::now();
  const bool done = transfer();
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  const double wire = WireSeconds(port.bytes, baudRate);
  std::cout << what << (done ? "" : " FAILED") << ": " << port.lines << " exchanges, wire time "
            << FixedText(wire, 3) << " s, wall time " << FixedText(wall.count(), 3) << " s, "
            << FixedText((wall.count() / wire - 1) * 100, 2) << " % above (goal 3)\n";
}

}  // namespace velmoor::bench
