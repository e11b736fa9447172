#include "platform/headless/HeadlessBoxes.h"

#include <algorithm>
#include <utility>

#include "platform/headless/HeadlessFailure.h"

namespace velmoor::headless {
namespace {

BoxAnswer CarefulAnswer(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok:
      return BoxAnswer::ok;
    case BoxButtons::yesNo:
      return BoxAnswer::no;
    case BoxButtons::okCancel:
    case BoxButtons::yesNoCancel:
      return BoxAnswer::cancel;
  }
  return BoxAnswer::cancel;
}

}  // namespace

BoxAnswer HeadlessBoxes::Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                              const std::string& title, BoxTick* presentTick) {
  tick = presentTick;
  shown.push_back({kind, buttons, text, title});
  ++up_;
  const BoxAnswer answer = Answer(shown.back());
  --up_;
  tick = nullptr;
  return answer;
}

BoxAnswer HeadlessBoxes::Answer(const ShownBox& box) {
  const BoxAnswer careful = CarefulAnswer(box.buttons);
  const bool meets =
      !expected_.empty() && box.text.find(expected_.front().textPart) != std::string::npos;
  if (!meets) {
    if (box.buttons != BoxButtons::ok) Fail("Unexpected question: " + box.text);
    return careful;
  }
  const Expectation expectation = std::move(expected_.front());
  expected_.pop_front();
  if (expectation.during) expectation.during();
  return expectation.answer;
}

void HeadlessBoxes::Expect(std::string textPart, BoxAnswer answer, std::function<void()> during) {
  expected_.push_back({std::move(textPart), answer, std::move(during)});
}

void HeadlessBoxes::Verify() {
  if (!expected_.empty()) Fail("This box was not shown: " + expected_.front().textPart);
  expected_.clear();
}

int HeadlessBoxes::Count(const std::string& text) const {
  return static_cast<int>(std::count_if(shown.begin(), shown.end(),
                                        [&](const ShownBox& box) { return box.text == text; }));
}

std::vector<std::string> HeadlessBoxes::TakeTexts() {
  std::vector<std::string> texts;
  for (ShownBox& box : std::exchange(shown, {})) texts.push_back(std::move(box.text));
  return texts;
}

std::optional<std::string> HeadlessDialogs::OpenFile(const FileDialogRequest& request) {
  shown.push_back({request, false, false});
  return TakeAnswer(request.title);
}

std::optional<std::string> HeadlessDialogs::SaveFile(const FileDialogRequest& request,
                                                     bool askBeforeOverwrite) {
  shown.push_back({request, true, askBeforeOverwrite});
  return TakeAnswer(request.title);
}

std::optional<std::string> HeadlessDialogs::TakeAnswer(const std::string& title) {
  if (answers.empty()) {
    Fail("Unexpected file dialog: " + title);
    return std::nullopt;
  }
  std::optional<std::string> answer = answers.front();
  answers.pop_front();
  return answer;
}

}  // namespace velmoor::headless
