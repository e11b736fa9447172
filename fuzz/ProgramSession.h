// The desktop program's session on a new project, for targets that need one. Made at the first
// input and kept for all; its folder goes with the process.
#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "Folder.h"
#include "fault_campaign/Program.h"
#include "platform/SerialPort.h"

namespace velmoor::fuzz {

// Answers with the lines that it was given; each question takes the next ones.
class LinePort final : public SerialPort {
 public:
  void Answer(std::string_view text) {
    lines_.clear();
    while (!text.empty()) {
      const std::size_t end = text.find('\n');
      lines_.emplace_back(text.substr(0, end));
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
  }
  // "@" in a line stands for the question, as in an echo.
  std::string ReadLine() override {
    if (lines_.empty()) return {};
    std::string line = lines_.front();
    lines_.pop_front();
    const std::size_t at = line.find('@');
    if (at != std::string::npos) line.replace(at, 1, question_);
    return line;
  }
  void WriteLine(std::string_view line) override { question_ = line; }
  void SetSettings(const std::string& settings) override { settings_ = settings; }
  [[nodiscard]] std::string Settings() const override { return settings_; }
  void SetPortName(const std::string& /*name*/) override {}
  bool Open() override { return open_ = true; }
  void Close() override { open_ = false; }
  [[nodiscard]] bool IsOpen() const override { return open_; }
  [[nodiscard]] std::string LastError() const override { return {}; }
  void SetReadTimeOut(int milliseconds) override { timeOut_ = milliseconds; }
  [[nodiscard]] int ReadTimeOut() const override { return timeOut_; }
  [[nodiscard]] int WaitingBytes() override { return 0; }
  void DiscardInput() override {}

 private:
  std::deque<std::string> lines_;
  std::string question_;
  std::string settings_;
  int timeOut_ = 5000;
  bool open_ = false;
};

struct ProgramSession {
  explicit ProgramSession(const char* name) : folder(name) {}

  // The line is open and gives these answers; what was shown before is forgotten.
  void TakeAnswers(std::string_view text) {
    port.Open();
    port.Answer(text);
    program.user.texts.clear();
  }

  Folder folder;
  LinePort port;
  campaign::Program program{port, folder.path};
};

}  // namespace velmoor::fuzz
