// Which page of the user guide belongs to which window.
#pragma once

#include <span>
#include <string_view>

namespace velmoor {

class Form;

struct HelpTopic {
  std::string_view window;    // the name of its form
  std::string_view leadWord;  // of the caption, where one form serves several tools; else empty
  std::string_view page;
  std::string_view anchor;
};

[[nodiscard]] std::span<const HelpTopic> HelpTopics();
// Opens the guide where the window is explained; at its start for a null.
void ShowHelpFor(const Form* form);

}  // namespace velmoor
