// A log in memory.
#pragma once

#include "platform/Log.h"
#include "platform/VisibleText.h"

namespace velmoor::headless {

class HeadlessLog final : public Log {
 public:
  void Write(LogLevel level, std::string_view subject, std::string_view text) override {
    if (level == LogLevel::traffic && !keepsTraffic) return;
    entries.push_back(std::string(subject) + ": " + VisibleText(text));
  }
  [[nodiscard]] bool KeepsTraffic() const override { return keepsTraffic; }
  void SetKeepsTraffic(bool keeps) override { keepsTraffic = keeps; }
  [[nodiscard]] std::vector<std::string> Recent() const override { return entries; }
  [[nodiscard]] std::string Path() const override { return path; }

  bool keepsTraffic = false;
  std::string path = "/var/log/velmoor.log";
  std::vector<std::string> entries;
};

}  // namespace velmoor::headless
