// Port: the log, which tells afterwards what the program and the line did.
//
// One line an entry: when, which subject, what. Nothing depends on it: an entry that cannot be
// written is lost without a word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

// Traffic is every line of the serial port; it is written on demand only.
enum class LogLevel { traffic, information, warning };

class Log {
 public:
  virtual ~Log() = default;

  // `subject` is one word: "session", "box", "transfer", "link", "line". Control characters of
  // `text`, which may come from the wire, are made visible.
  virtual void Write(LogLevel level, std::string_view subject, std::string_view text) = 0;

  [[nodiscard]] virtual bool KeepsTraffic() const = 0;
  virtual void SetKeepsTraffic(bool keeps) = 0;

  // The newest entries, oldest first, at most a few hundred.
  [[nodiscard]] virtual std::vector<std::string> Recent() const = 0;
  // The file, empty where there is none; the older ones lie beside it.
  [[nodiscard]] virtual std::string Path() const = 0;
};

// That of the running program; null where it keeps none.
[[nodiscard]] Log* CurrentLog();
// To the log of the running program, where it keeps one.
void LogInformation(std::string_view subject, std::string_view text);
void LogWarning(std::string_view subject, std::string_view text);

}  // namespace velmoor
