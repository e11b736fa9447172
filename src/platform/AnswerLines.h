// Received bytes on their way to lines, as every serial line wants them: seven bits, no empty
// lines, CR, LF and CRLF for an end, and no line longer than bounds::kAnswer.
#pragma once

#include <string>
#include <string_view>

namespace velmoor {

class AnswerLines {
 public:
  // A zero byte is what a character with a wrong parity or frame arrives as.
  void Add(std::string_view bytes);
  // The next whole line, moved out; empty when there is none.
  [[nodiscard]] std::string Take();
  // What came of a line that is not whole; line ends before it are dropped, for the second half of
  // a CRLF may come late, and noise makes bare ones.
  [[nodiscard]] const std::string& Begun();
  [[nodiscard]] std::size_t Size() const { return received_.size(); }
  void Clear();

 private:
  std::string received_;         // bytes behind the last delivered line
  bool skipsToLineEnd_ = false;  // the rest of a line that was too long is thrown away
};

}  // namespace velmoor
