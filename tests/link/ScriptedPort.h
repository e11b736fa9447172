// A serial port that answers from a script of literal lines and remembers what it was asked.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/SerialPort.h"

namespace velmoor {

class ScriptedPort final : public SerialPort {
 public:
  // The lines that `command` is answered with, the same each time; an empty one is a time-out.
  void Answer(const std::string& command, std::vector<std::string> lines) {
    answers_[command] = std::move(lines);
  }
  // The same with the echo in front.
  void Echoed(const std::string& command, const std::string& answer) {
    Answer(command, {command, answer});
  }
  // Bytes that lie in the buffer before the next command.
  void LeaveStale(const std::string& line) { waiting_.push_back(line); }
  // Lines of a former exchange that come once the next command is out.
  void ComeLate(const std::vector<std::string>& lines) { late_.assign(lines.begin(), lines.end()); }

  void SetSettings(const std::string& settings) override {
    settingsSeen.push_back(settings);
    waiting_.clear();
  }
  [[nodiscard]] std::string Settings() const override {
    return settingsSeen.empty() ? std::string() : settingsSeen.back();
  }
  void SetPortName(const std::string& name) override { portName = name; }
  bool Open() override { return open = opens; }
  void Close() override { open = false; }
  [[nodiscard]] bool IsOpen() const override { return open; }
  [[nodiscard]] std::string LastError() const override { return {}; }
  void SetReadTimeOut(int milliseconds) override { timeOut = milliseconds; }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut; }
  [[nodiscard]] int WaitingBytes() override { return static_cast<int>(waiting_.size()); }
  void DiscardInput() override { waiting_.clear(); }

  void WriteLine(std::string_view line) override {
    if (!open) return;
    sent.emplace_back(line);
    if (vanishesOn == line) {
      open = false;
      throw SerialPortError("gone");
    }
    waiting_.insert(waiting_.end(), late_.begin(), late_.end());
    late_.clear();
    if (const auto entry = answers_.find(std::string(line)); entry != answers_.end()) {
      waiting_.insert(waiting_.end(), entry->second.begin(), entry->second.end());
    }
  }
  std::string ReadLine() override {
    timeOutsInExchange.push_back(timeOut);
    if (const auto hook = std::exchange(onRead, nullptr)) hook();
    if (!open || waiting_.empty()) return {};
    std::string line = waiting_.front();
    waiting_.pop_front();
    return line;
  }

  bool opens = true;
  bool open = true;
  int timeOut = 5000;
  std::string portName;
  std::string vanishesOn;
  std::function<void()> onRead;  // runs once, inside the next read
  std::vector<std::string> sent;
  std::vector<std::string> settingsSeen;
  std::vector<int> timeOutsInExchange;

 private:
  std::map<std::string, std::vector<std::string>> answers_;
  std::deque<std::string> waiting_;
  std::deque<std::string> late_;
};

}  // namespace velmoor
