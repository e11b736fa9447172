// The line between the program and the amplifier of a campaign, and the amplifier's console.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/PassingPort.h"

namespace velmoor::campaign {

// Passes everything on, counts the exchanges, and does something before one of them.
class WatchedPort final : public PassingPort {
 public:
  // Time-outs of a real clock are divided by `hurry`.
  WatchedPort(SerialPort& port, int hurry) : PassingPort(port), hurry_(hurry) {}

  // Starts to count; `work` runs before the exchange number `exchange`, counted from 0.
  void Before(int exchange, std::function<void()> work) {
    exchanges_ = 0;
    when_ = exchange;
    work_ = std::move(work);
    lines_.clear();
  }
  // What was sent since.
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  [[nodiscard]] int Exchanges() const { return exchanges_; }

  void SetReadTimeOut(int milliseconds) override {
    timeOut_ = milliseconds;
    PassingPort::SetReadTimeOut(milliseconds / hurry_);
  }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut_; }
  void WriteLine(std::string_view line) override {
    if (exchanges_++ == when_ && work_) work_();
    lines_.emplace_back(line);
    PassingPort::WriteLine(line);
  }

 private:
  int hurry_;
  int timeOut_ = 5000;
  int exchanges_ = 0;
  int when_ = -1;
  std::function<void()> work_;
  std::vector<std::string> lines_;
};

// An amplifier on a line that can be harmed, by the commands of the simulator's console.
class Wiring {
 public:
  virtual ~Wiring() = default;
  [[nodiscard]] virtual WatchedPort& Port() = 0;
  // What the console says to a command; "send" executes a line as if it came over the wire.
  virtual std::string Type(const std::string& command) = 0;
  // Longer than any time-out of the program, in the line's milliseconds.
  [[nodiscard]] virtual int TooLate() const = 0;
  // Lets everything arrive that is too late.
  virtual void WaitForLate() = 0;
  // Lets the time of a restart pass.
  virtual void WaitForRestart() = 0;
  [[nodiscard]] virtual const char* Name() const = 0;
};

// In this process, on a clock that costs nothing.
[[nodiscard]] std::unique_ptr<Wiring> WireInProcess();
// The program `simulator` on a pseudo-terminal, unpaced. Its device is a link below `folder`.
// Throws std::runtime_error.
[[nodiscard]] std::unique_ptr<Wiring> WireTerminal(const std::string& simulator,
                                                   const std::string& folder);

}  // namespace velmoor::campaign
