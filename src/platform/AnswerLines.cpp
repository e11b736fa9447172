#include "platform/AnswerLines.h"

#include <algorithm>

#include "platform/Bounds.h"
#include "platform/SerialPort.h"

namespace velmoor {
namespace {

constexpr std::string_view kLineEnds = "\r\n";

}  // namespace

void AnswerLines::Add(std::string_view bytes) {
  for (const char byte : bytes) {
    const char seven = static_cast<char>(byte & 0x7F);
    const char c = seven == '\0' ? kDamagedCharacter : seven;
    if (kLineEnds.find(c) != std::string_view::npos) skipsToLineEnd_ = false;
    if (!skipsToLineEnd_) received_ += c;
  }
}

const std::string& AnswerLines::Begun() {
  received_.erase(0, received_.find_first_not_of(kLineEnds));
  return received_;
}

std::string AnswerLines::Take() {
  std::size_t end = Begun().find_first_of(kLineEnds);
  if (end == std::string::npos) {
    if (received_.size() <= bounds::kAnswer) return {};
    end = received_.size();
    skipsToLineEnd_ = true;
  }
  std::string line = received_.substr(0, std::min(end, bounds::kAnswer));
  received_.erase(0, received_.find_first_not_of(kLineEnds, end));
  return line;
}

void AnswerLines::Clear() {
  received_.clear();
  skipsToLineEnd_ = false;
}

}  // namespace velmoor
