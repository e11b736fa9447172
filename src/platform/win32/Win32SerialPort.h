// The serial line over the system's communications ports.
//
// Waiting sleeps in the system and serves no events. The system gives a port to one program at a
// time. One thread.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>

#include "platform/AnswerLines.h"
#include "platform/SerialPort.h"
#include "platform/win32/Handle.h"

namespace velmoor::win32 {

// "COM1" to the name of its device, "COM7".
using DeviceMap = std::map<std::string, std::string, std::less<>>;

class Win32SerialPort final : public SerialPort {
 public:
  // A name without an entry is its own device. Takes effect at the next Open.
  void SetDeviceMap(DeviceMap map) { deviceMap_ = std::move(map); }
  [[nodiscard]] std::string DeviceOf(const std::string& name) const;

  void SetSettings(const std::string& settings) override;
  [[nodiscard]] std::string Settings() const override { return settings_; }
  void SetPortName(const std::string& name) override { name_ = name; }
  bool Open() override;
  void Close() override { device_.Reset(); }
  [[nodiscard]] bool IsOpen() const override { return device_.IsValid(); }
  [[nodiscard]] std::string LastError() const override { return lastError_; }
  void SetReadTimeOut(int milliseconds) override { timeOut_ = milliseconds; }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut_; }
  [[nodiscard]] int WaitingBytes() override;
  void DiscardInput() override;
  void WriteLine(std::string_view line) override;
  std::string ReadLine() override;

 private:
  // 0, or the system's error.
  [[nodiscard]] DWORD ApplySettings(const Handle& device) const;
  // Bytes that wait in the system. Throws when the port is gone.
  [[nodiscard]] DWORD Waiting();
  // Reads what is there, or waits some milliseconds for the first byte. Throws when the port is
  // gone.
  void Receive();
  [[noreturn]] void Lose(DWORD error);

  DeviceMap deviceMap_;
  std::string name_ = "COM1";
  std::string settings_ = "9600,e,7,2";
  std::string lastError_;
  int timeOut_ = 5000;
  Handle device_;
  AnswerLines received_;
};

}  // namespace velmoor::win32
