// A serial port that passes everything on to another: the base of those that watch or change a
// part of the traffic.
#pragma once

#include "platform/SerialPort.h"

namespace velmoor {

class PassingPort : public SerialPort {
 public:
  // `port` must outlive the object.
  explicit PassingPort(SerialPort& port) : port_(port) {}

  void SetSettings(const std::string& settings) override { port_.SetSettings(settings); }
  [[nodiscard]] std::string Settings() const override { return port_.Settings(); }
  void SetPortName(const std::string& name) override { port_.SetPortName(name); }
  bool Open() override { return port_.Open(); }
  void Close() override { port_.Close(); }
  [[nodiscard]] bool IsOpen() const override { return port_.IsOpen(); }
  [[nodiscard]] std::string LastError() const override { return port_.LastError(); }
  void SetReadTimeOut(int milliseconds) override { port_.SetReadTimeOut(milliseconds); }
  [[nodiscard]] int ReadTimeOut() const override { return port_.ReadTimeOut(); }
  [[nodiscard]] int WaitingBytes() override { return port_.WaitingBytes(); }
  void DiscardInput() override { port_.DiscardInput(); }
  void WriteLine(std::string_view line) override { port_.WriteLine(line); }
  std::string ReadLine() override { return port_.ReadLine(); }

 private:
  SerialPort& port_;
};

}  // namespace velmoor
