// A serial port whose opening, failures and, on demand, lines are written to the log.
#pragma once

#include "platform/SerialPort.h"

namespace velmoor {

class LoggedPort final : public SerialPort {
 public:
  // `port` must outlive the object.
  explicit LoggedPort(SerialPort& port) : port_(port) {}

  void SetSettings(const std::string& settings) override;
  [[nodiscard]] std::string Settings() const override { return port_.Settings(); }
  void SetPortName(const std::string& name) override;
  bool Open() override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return port_.IsOpen(); }
  [[nodiscard]] std::string LastError() const override { return port_.LastError(); }
  void SetReadTimeOut(int milliseconds) override { port_.SetReadTimeOut(milliseconds); }
  [[nodiscard]] int ReadTimeOut() const override { return port_.ReadTimeOut(); }
  [[nodiscard]] int WaitingBytes() override;
  void DiscardInput() override { port_.DiscardInput(); }
  void WriteLine(std::string_view line) override;
  std::string ReadLine() override;

 private:
  SerialPort& port_;
  std::string name_;
};

}  // namespace velmoor
