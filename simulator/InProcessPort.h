// The serial port of a simulated line in the same process: no device, no thread, no real time.
//
// Time stands still but for what the line and the time-outs take, and that passes at once: a read
// that times out after 15 s returns immediately with the clock 15 s later.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/SerialPort.h"
#include "simulator/SimulatedLine.h"

namespace velmoor {

class InProcessPort final : public SerialPort {
 public:
  // The line must outlive the port.
  explicit InProcessPort(SimulatedLine& line) : line_(line) {}

  // With pacing every character takes its time on the wire; without, none does.
  void SetPaced(bool paced) { paced_ = paced; }
  [[nodiscard]] Micros Now() const { return now_; }
  // Lets time pass between exchanges, as for a restart.
  void Advance(Micros time);
  // Called with every stretch of time that passes, to keep another clock beside this one.
  void OnTimePassing(std::function<void(Micros)> listener) { listener_ = std::move(listener); }

  // Pulls the plug: an exchange fails, and opening too, until it is plugged in again.
  void Unplug() { plugged_ = false; }
  void Plug() { plugged_ = true; }
  // The "COM1" of the last SetPortName.
  [[nodiscard]] const std::string& PortName() const { return name_; }

  void SetSettings(const std::string& settings) override;
  [[nodiscard]] std::string Settings() const override { return settings_; }
  void SetPortName(const std::string& name) override { name_ = name; }
  bool Open() override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::string LastError() const override { return lastError_; }
  void SetReadTimeOut(int milliseconds) override { timeOut_ = milliseconds; }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut_; }
  [[nodiscard]] int WaitingBytes() override;
  void DiscardInput() override;
  void WriteLine(std::string_view line) override;
  std::string ReadLine() override;

 private:
  struct Arrival {
    Micros when;
    char byte;
    bool hangsUp;
  };
  void Schedule(const Transmission& transmission);
  void AdvanceTo(Micros when);
  [[noreturn]] void Lose();

  SimulatedLine& line_;
  std::function<void(Micros)> listener_;
  Micros now_{0};
  Micros lineFree_{0};  // when the last character planned so far has gone out
  std::deque<Arrival> coming_;
  std::string partial_;
  std::string name_ = "COM1";
  std::string settings_ = "9600,e,7,2";
  std::string lastError_;
  std::int32_t baudRate_ = 9600;
  int timeOut_ = 5000;
  bool open_ = false;
  bool plugged_ = true;
  bool paced_ = false;
};

}  // namespace velmoor
