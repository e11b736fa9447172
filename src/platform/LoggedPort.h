// A serial port whose opening, failures and, on demand, lines are written to the log.
#pragma once

#include "platform/PassingPort.h"

namespace velmoor {

class LoggedPort final : public PassingPort {
 public:
  using PassingPort::PassingPort;

  void SetSettings(const std::string& settings) override;
  void SetPortName(const std::string& name) override;
  bool Open() override;
  void Close() override;
  [[nodiscard]] int WaitingBytes() override;
  void WriteLine(std::string_view line) override;
  std::string ReadLine() override;

 private:
  std::string name_;
};

}  // namespace velmoor
