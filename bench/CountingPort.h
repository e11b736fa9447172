// A port that counts the bytes of its line, line ends included, and tells when a line goes out.
#pragma once

#include <chrono>
#include <string>

#include "platform/SerialPort.h"

namespace velmoor::bench {

class CountingPort final : public SerialPort {
 public:
  explicit CountingPort(SerialPort& port) : port_(port) {}
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
  void WriteLine(std::string_view line) override {
    ++lines;
    bytes += line.size() + 1;
    lastLine = line;
    port_.WriteLine(line);
    lastWrite = std::chrono::steady_clock::now();
  }
  std::string ReadLine() override {
    std::string line = port_.ReadLine();
    bytes += line.size() + 2;
    return line;
  }

  std::size_t bytes = 0;
  std::size_t lines = 0;  // that went out
  std::string lastLine;
  std::chrono::steady_clock::time_point lastWrite;

 private:
  SerialPort& port_;
};

}  // namespace velmoor::bench
