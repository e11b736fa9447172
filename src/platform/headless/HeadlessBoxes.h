// Message boxes and file dialogs that a script answers.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"

namespace velmoor::headless {

struct ShownBox {
  BoxKind kind;
  BoxButtons buttons;
  std::string text;
  std::string title;
};

// Answers a question by the oldest expectation that waits; its text must be part of the question.
// A question without one, or with another text, is a failure and gets its most careful answer:
// cancel, or no. Boxes with OK alone need no expectation.
class HeadlessBoxes final : public MessageBoxes {
 public:
  BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                 const std::string& title, BoxTick* presentTick) override;

  // `during` runs while the box is up.
  void Expect(std::string textPart, BoxAnswer answer, std::function<void()> during = {});
  // Every expectation met; otherwise a failure that names the first that was not.
  void Verify();

  // How many boxes with exactly that text were shown.
  [[nodiscard]] int Count(const std::string& text) const;
  // The texts, oldest first; and forgets them.
  std::vector<std::string> TakeTexts();
  [[nodiscard]] bool IsUp() const { return up_ > 0; }

  std::vector<ShownBox> shown;
  BoxTick* tick = nullptr;  // of the box that is up

 private:
  struct Expectation {
    std::string textPart;
    BoxAnswer answer;
    std::function<void()> during;
  };
  BoxAnswer Answer(const ShownBox& box);

  std::deque<Expectation> expected_;
  int up_ = 0;
};

// Answers from a queue; nothing in the queue is a failure and cancels.
class HeadlessDialogs final : public FileDialogs {
 public:
  std::optional<std::string> OpenFile(const FileDialogRequest& request) override;
  std::optional<std::string> SaveFile(const FileDialogRequest& request,
                                      bool askBeforeOverwrite) override;

  struct Shown {
    FileDialogRequest request;
    bool save;
    bool askBeforeOverwrite;
  };
  std::vector<Shown> shown;
  std::deque<std::optional<std::string>> answers;  // nothing: Cancel

 private:
  std::optional<std::string> TakeAnswer(const std::string& title);
};

}  // namespace velmoor::headless
