#include "platform/posix/AnswerPace.h"

#include <algorithm>

namespace velmoor::posix {
namespace {

constexpr std::size_t kShortestAnswer = 3;  // an acknowledge
constexpr std::size_t kMostKinds = 256;
// Between two looks at an answer that is longer than expected.
constexpr std::size_t kPause = 2;

}  // namespace

std::string AnswerPace::KindOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  std::string kind(line.substr(0, equals == std::string_view::npos ? equals : equals + 1));
  std::erase_if(kind, [](char c) { return c >= '0' && c <= '9'; });
  return kind;
}

void AnswerPace::LineWritten(std::string_view line) {
  written_ = line;
  awaitsEcho_ = true;
  const auto known = shortestAnswers_.find(KindOf(line));
  shortest_ = known != shortestAnswers_.end() ? known->second : kShortestAnswer;
}

void AnswerPace::LineReceived(std::string_view line) {
  if (written_.empty()) return;
  if (awaitsEcho_) {
    awaitsEcho_ = false;
    echoes_ = line == written_;
    if (echoes_) return;
  }
  if (shortestAnswers_.size() >= kMostKinds) shortestAnswers_.clear();
  const auto [entry, isNew] = shortestAnswers_.try_emplace(KindOf(written_), line.size());
  if (!isNew) entry->second = std::min(entry->second, line.size());
  written_.clear();
}

std::size_t AnswerPace::QuietCharacters(std::string_view received) const {
  if (received.empty()) return 0;
  // Line ends counted: CR LF behind the echo, CR behind the answer.
  std::size_t expected = shortest_ + 1;
  if (awaitsEcho_ && echoes_ && written_.starts_with(received)) expected += written_.size() + 2;
  if (written_.empty() || received.size() >= expected) return kPause;
  return expected - received.size() - 1;
}

}  // namespace velmoor::posix
