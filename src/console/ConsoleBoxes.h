// Message boxes as lines on a stream, and questions answered by what the command line agreed to.
#pragma once

#include <iosfwd>
#include <string>

#include "platform/MessageBoxes.h"

namespace velmoor {

class ConsoleBoxes final : public MessageBoxes {
 public:
  explicit ConsoleBoxes(std::ostream& out) : out_(out) {}

  // With agreement a question is answered by OK or Yes, without by Cancel or No.
  void Agree(bool agree) { agree_ = agree; }
  // How many critical and exclamation boxes were shown: each tells of something that went wrong.
  [[nodiscard]] int Failures() const { return failures_; }
  // What was shown so far cost nothing that was asked for: it was a remark.
  void TakeAsRemarks() { failures_ = 0; }

  BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                 const std::string& title, BoxTick* tick) override;

 private:
  std::ostream& out_;
  bool agree_ = false;
  int failures_ = 0;
};

}  // namespace velmoor
