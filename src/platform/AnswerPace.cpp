#include "platform/AnswerPace.h"

#include <algorithm>

namespace velmoor {
namespace {

constexpr std::size_t kShortestAnswer = 3;  // an acknowledge
constexpr std::size_t kMostKinds = 256;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// How much of an answer is the row or number that was asked for: a read repeats it, an acknowledge
// does not.
std::size_t DigitsRepeated(std::string_view line) {
  if (line.find('=') != std::string_view::npos) return 0;
  return static_cast<std::size_t>(std::ranges::count_if(line, IsDigit));
}

}  // namespace

std::string AnswerPace::KindOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  std::string kind(line.substr(0, equals == std::string_view::npos ? equals : equals + 1));
  std::erase_if(kind, IsDigit);
  return kind;
}

void AnswerPace::LineWritten(std::string_view line) {
  written_ = line;
  awaitsEcho_ = true;
  const auto known = shortestAnswers_.find(KindOf(line));
  shortest_ =
      known != shortestAnswers_.end() ? known->second + DigitsRepeated(line) : kShortestAnswer;
}

void AnswerPace::LineReceived(std::string_view line) {
  if (written_.empty()) return;
  if (awaitsEcho_) {
    awaitsEcho_ = false;
    echoes_ = line == written_;
    if (echoes_) return;
  }
  if (shortestAnswers_.size() >= kMostKinds) shortestAnswers_.clear();
  const std::size_t length = line.size() - std::min(line.size(), DigitsRepeated(written_));
  const auto [entry, isNew] = shortestAnswers_.try_emplace(KindOf(written_), length);
  if (!isNew) entry->second = std::min(entry->second, length);
  written_.clear();
}

std::size_t AnswerPace::OwnCharacters() const {
  return hasAWire_ && awaitsEcho_ ? written_.size() + 1 : 0;
}

void AnswerPace::AnswerBegan(double characters) {
  hasAWire_ = characters >= static_cast<double>(written_.size() + 1);
}

std::size_t AnswerPace::QuietCharacters(std::string_view received) const {
  if (received.empty()) return 0;
  // Line ends counted: CR LF behind the echo, CR behind the answer.
  std::size_t expected = shortest_ + 1;
  if (awaitsEcho_ && echoes_ && written_.starts_with(received)) expected += written_.size() + 2;
  // Longer than any before: each character may be the last.
  if (written_.empty() || received.size() >= expected) return 0;
  return expected - received.size() - 1;
}

}  // namespace velmoor
