// How long nothing can happen that ends an answer: what a waiting host may sleep through.
//
// Waking for every character is most of the cost of an exchange. This class knows the line that was
// written, whether lines are echoed, and the shortest answer that each kind of command ever got,
// the repeated row apart, and so how many characters must still come. It judges only; a wrong guess
// delays one answer by a few characters and harms nothing.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace velmoor {

class AnswerPace {
 public:
  void LineWritten(std::string_view line);
  void LineReceived(std::string_view line);
  // How many character times to sleep before looking again, with `received` having come of the line
  // in progress; 0 when the next character may be the last, or nothing has come.
  [[nodiscard]] std::size_t QuietCharacters(std::string_view received) const;
  // How many character times the line that was written takes on the wire, while nothing can come
  // back; 0 behind an amplifier that was heard earlier than that, as one without a wire is.
  [[nodiscard]] std::size_t OwnCharacters() const;
  // The answer of the line that was written began behind so many character times.
  void AnswerBegan(double characters);

 private:
  // The command without axis, digits and value: what decides the form of its answer.
  static std::string KindOf(std::string_view line);

  std::map<std::string, std::size_t, std::less<>> shortestAnswers_;  // without the repeated digits
  std::string written_;                                              // until its answer is in
  std::size_t shortest_ = 0;                                         // expected of that answer
  bool awaitsEcho_ = false;
  bool echoes_ = false;    // the last line was echoed
  bool hasAWire_ = false;  // the last answer began behind the line's own time
};

}  // namespace velmoor
