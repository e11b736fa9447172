// Port: message boxes. Modal; the caller waits for the answer while events are served.
#pragma once

#include <string>

namespace velmoor {

enum class BoxKind {
  plain,
  critical,
  exclamation,
  information,
  question,
  graveQuestion  // looks like a question, but Enter does not agree: work or a position is lost by
                 // Yes
};
enum class BoxButtons { ok, okCancel, yesNo, yesNoCancel };
enum class BoxAnswer { ok, cancel, yes, no };

// A choice that a question offers beside its buttons, and the one below it.
struct BoxTick {
  std::string caption;
  bool on = false;
  BoxTick* next = nullptr;
};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;

  // Shows `text`, in which "\r" separates lines, and returns the button that was pressed. Closing
  // the box by its frame answers cancel, or no where there is no cancel, or ok where there is only
  // ok. An empty `title` means the program's own. `tick` is shown where there is one, and set as
  // the user leaves it; boxes that nobody sees leave it as it is.
  virtual BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                         const std::string& title, BoxTick* tick) = 0;
};

// A box's text on one line, for logs and lists: its line breaks become blanks.
[[nodiscard]] std::string OneLine(std::string text);

// A box tells of a failure: a question under the sign of a warning does not.
[[nodiscard]] constexpr bool TellsOfFailure(BoxKind kind, BoxButtons buttons) {
  return buttons == BoxButtons::ok && (kind == BoxKind::critical || kind == BoxKind::exclamation);
}

// The boxes of the running program, in the four kinds that the logic uses.
void ShowCritical(const std::string& text);
void ShowExclamation(const std::string& text);
void ShowInformation(const std::string& text);
// The plain box with a title of its own, as the catalogue calls use it.
void ShowPlain(const std::string& text, const std::string& title);

// Questions; each returns true for the first button (OK or Yes).
[[nodiscard]] bool AskOkCancel(const std::string& text);
[[nodiscard]] bool AskOkCancel(const std::string& text, BoxTick& tick);
[[nodiscard]] bool AskYesNo(const std::string& text);
// Before work or a position is lost by a Yes: a stray Enter keeps it.
[[nodiscard]] bool AskGraveYesNo(const std::string& text);
// The same under the sign of a warning.
[[nodiscard]] bool AskExclamationYesNo(const std::string& text);
[[nodiscard]] BoxAnswer AskYesNoCancel(const std::string& text);

}  // namespace velmoor
