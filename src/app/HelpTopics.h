// Which page of the user guide belongs to which window.
#pragma once

#include <span>

namespace velmoor {

class Form;

struct HelpTopic {
  const char* window;    // the name of its form
  const char* leadWord;  // of the caption, where one form serves several tools; otherwise empty
  const char* page;
  const char* anchor;
};

[[nodiscard]] std::span<const HelpTopic> HelpTopics();
// Opens the guide where the window is explained; at its start for a null.
void ShowHelpFor(const Form* form);

}  // namespace velmoor
