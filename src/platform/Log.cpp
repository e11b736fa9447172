#include "platform/Log.h"

namespace velmoor {
namespace {

void Write(LogLevel level, std::string_view subject, std::string_view text) {
  if (Log* const log = CurrentLog()) log->Write(level, subject, text);
}

}  // namespace

void LogInformation(std::string_view subject, std::string_view text) {
  Write(LogLevel::information, subject, text);
}

void LogWarning(std::string_view subject, std::string_view text) {
  Write(LogLevel::warning, subject, text);
}

std::string VisibleText(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string visible;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '\r' || c == '\n') {
      visible += ' ';
    } else if (code < 0x20 || code == 0x7f) {
      visible += {'\\', 'x', kDigits[code >> 4U], kDigits[code & 15U]};
    } else {
      visible += c;
    }
  }
  return visible;
}

}  // namespace velmoor
