#include "operations/AgreedBoxes.h"

namespace velmoor {

BoxAnswer AgreedBoxes::Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                            const std::string& title, BoxTick* /*tick*/) {
  const bool failure = TellsOfFailure(kind, buttons);
  if (failure) ++failures_;
  Told(title.empty() ? text : title + ": " + text, failure);
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
