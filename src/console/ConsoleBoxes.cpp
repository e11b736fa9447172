#include "console/ConsoleBoxes.h"

#include <ostream>

#include "platform/VisibleText.h"

namespace velmoor {

BoxAnswer ConsoleBoxes::Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                             const std::string& title, BoxTick* /*tick*/) {
  const std::string lines = VisibleLines(title.empty() ? text : title + ": " + text);
  if (TellsOfFailure(kind, buttons)) ++failures_;
  out_ << lines << '\n';
  switch (buttons) {
    case BoxButtons::ok:
      return BoxAnswer::ok;
    case BoxButtons::okCancel:
      return agree_ ? BoxAnswer::ok : BoxAnswer::cancel;
    case BoxButtons::yesNo:
      return agree_ ? BoxAnswer::yes : BoxAnswer::no;
    case BoxButtons::yesNoCancel:
      return agree_ ? BoxAnswer::yes : BoxAnswer::cancel;
  }
  return BoxAnswer::cancel;
}

}  // namespace velmoor
