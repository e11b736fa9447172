// Port: the built-in user guide in a window of its own.
#pragma once

#include <string>
#include <string_view>

namespace velmoor {

class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  // Brings the guide to the front at a page, "tables.md", and below the heading that HelpAnchor
  // turns into `anchor`; without one, or where the page has none like it, at the page's top.
  // Returns at once. Can be used while a modal form is up.
  virtual void ShowPage(const std::string& page, const std::string& anchor) = 0;
};

// A heading as the last part of a link: "Serial ports on Linux" is "serial-ports-on-linux". Letters
// and digits stay, in lower case, blanks and hyphens become hyphens, all else is left out.
[[nodiscard]] std::string HelpAnchor(std::string_view heading);

}  // namespace velmoor
