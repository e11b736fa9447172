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

}  // namespace velmoor
