// Message boxes that nobody sees: questions are answered by what was agreed to beforehand, and what
// tells of a failure is counted.
#pragma once

#include <string>

#include "platform/MessageBoxes.h"

namespace velmoor {

class AgreedBoxes : public MessageBoxes {
 public:
  // With agreement a question is answered by OK or Yes, without by Cancel or No.
  void Agree(bool agree) { agree_ = agree; }
  // How many critical and exclamation boxes were shown: each tells of something that went wrong.
  [[nodiscard]] int Failures() const { return failures_; }
  // What was shown so far cost nothing that was asked for: it was a remark.
  void TakeAsRemarks() { failures_ = 0; }

  BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                 const std::string& title, BoxTick* tick) final;

 protected:
  // A box as it would be read, a title in front of it.
  virtual void Told(const std::string& text, bool failure) = 0;

 private:
  bool agree_ = false;
  int failures_ = 0;
};

}  // namespace velmoor
