// A user who agrees to every question.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/MessageBoxes.h"

namespace velmoor::bench {

class AgreeingUser final : public MessageBoxes {
 public:
  BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                 const std::string& /*title*/, BoxTick* /*tick*/) override {
    texts.push_back(OneLine(text));
    if (TellsOfFailure(kind, buttons)) ++failures;
    const bool agrees = !refuses || !refuses(text);
    switch (buttons) {
      case BoxButtons::yesNo:
      case BoxButtons::yesNoCancel:
        return agrees ? BoxAnswer::yes : BoxAnswer::no;
      case BoxButtons::okCancel:
        return agrees ? BoxAnswer::ok : BoxAnswer::cancel;
      case BoxButtons::ok:
        break;
    }
    return BoxAnswer::ok;
  }

  std::vector<std::string> texts;
  int failures = 0;  // boxes that told of one
  std::function<bool(const std::string& text)> refuses;
};

}  // namespace velmoor::bench
