// The serial line over termios and poll.
//
// Waiting sleeps in the kernel and serves no events. The port is locked against other programs for
// as long as it is open; a crash frees it. One thread.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>

#include "platform/AnswerLines.h"
#include "platform/AnswerPace.h"
#include "platform/SerialPort.h"
#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// "COM1" to the path of its device. Any path will do, a symbolic link to a pseudo-terminal too.
using DeviceMap = std::map<std::string, std::string, std::less<>>;

class PosixSerialPort final : public SerialPort {
 public:
  // Names without an entry keep their default: "COM1" is /dev/ttyS0, "COM2" /dev/ttyS1, and so on.
  // Takes effect at the next Open.
  void SetDeviceMap(DeviceMap map) { deviceMap_ = std::move(map); }
  // The device that the present port name stands for; empty for a name that is neither in the map
  // nor "COM" and a number from 1.
  [[nodiscard]] std::string DevicePath() const { return DeviceOf(name_); }
  // The same for another name.
  [[nodiscard]] std::string DeviceOf(const std::string& name) const;
  // Whether Open asks a program that lends the port for it, as it does for a person.
  void SetBorrows(bool borrows) { borrows_ = borrows; }

  void SetSettings(const std::string& settings) override;
  [[nodiscard]] std::string Settings() const override { return settings_; }
  void SetPortName(const std::string& name) override { name_ = name; }
  bool Open() override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return device_.IsValid(); }
  [[nodiscard]] std::string LastError() const override { return lastError_; }
  void SetReadTimeOut(int milliseconds) override { timeOut_ = milliseconds; }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut_; }
  [[nodiscard]] int WaitingBytes() override;
  void DiscardInput() override;
  void WriteLine(std::string_view line) override;
  std::string ReadLine() override;

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  // 0, or why not, as errno tells it; EWOULDBLOCK where another program holds it.
  [[nodiscard]] int OpenDevice(const std::string& path);
  [[nodiscard]] Deadline DeadlineFromNow() const;
  // Waits for `events` of poll; false at the deadline. Throws when the port is gone.
  bool WaitFor(short events, Deadline deadline);
  // Sleeps, and serves nothing, but no longer than to the deadline.
  void SleepThrough(std::chrono::nanoseconds quiet, Deadline deadline) const;
  // Reads what is there into received_. Throws when the port is gone.
  void Receive();
  // Sleeps through the time that the line itself takes on the wire.
  void AwaitBeginning(Deadline deadline);
  [[noreturn]] void Lose(int error);

  DeviceMap deviceMap_;
  std::string name_ = "COM1";
  std::string settings_ = "9600,e,7,2";
  std::string lastError_;
  std::chrono::nanoseconds characterTime_{0};
  Deadline written_{};            // when the latest line went out
  bool awaitsBeginning_ = false;  // nothing has come of its answer
  AnswerPace pace_;
  int timeOut_ = 5000;
  FileDescriptor device_;
  bool borrows_ = true;
  FileDescriptor loan_;  // lent by another program for as long as this is open
  AnswerLines received_;
};

}  // namespace velmoor::posix
