// Port: the persistent per-user settings, one flat set of names and text values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmoor {

class Settings {
 public:
  virtual ~Settings() = default;
  // The stored text, or nothing where the name is absent or the store cannot be read. Never throws.
  [[nodiscard]] virtual std::optional<std::string> Read(std::string_view name) const = 0;
  // Stores at once. Throws std::runtime_error with the system's words when it cannot.
  virtual void Write(std::string_view name, std::string_view value) = 0;

  [[nodiscard]] std::string ReadText(std::string_view name, std::string_view fallback) const {
    return Read(name).value_or(std::string(fallback));
  }
  // A text that is no whole number within 32 bits counts as absent.
  [[nodiscard]] int ReadNumber(std::string_view name, int fallback) const;
};

}  // namespace velmoor
