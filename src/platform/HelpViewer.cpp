#include "platform/HelpViewer.h"

#include "platform/Numbers.h"

namespace velmoor {

std::string HelpAnchor(std::string_view heading) {
  std::string anchor;
  for (const char c : LowerCase(heading)) {
    const bool kept = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    if (kept) anchor += c;
    if (c == ' ' || c == '-') anchor += '-';
  }
  return anchor;
}

}  // namespace velmoor
