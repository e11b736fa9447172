// Settings in memory.
#pragma once

#include <map>
#include <stdexcept>

#include "platform/Settings.h"

namespace velmoor::headless {

class HeadlessSettings final : public Settings {
 public:
  [[nodiscard]] std::optional<std::string> Read(std::string_view name) const override {
    const auto at = values.find(name);
    return at == values.end() ? std::nullopt : std::optional(at->second);
  }
  void Write(std::string_view name, std::string_view value) override {
    if (refuseWrites) throw std::runtime_error("The settings cannot be written");
    values.insert_or_assign(std::string(name), std::string(value));
  }

  std::map<std::string, std::string, std::less<>> values;
  bool refuseWrites = false;
};

}  // namespace velmoor::headless
