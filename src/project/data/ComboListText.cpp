#include "project/data/ComboListText.h"

namespace velmoor {
namespace {

// Cuts the first item off `rest`; false when nothing is left.
bool NextItem(std::string_view& rest, bool& more, std::string_view& item) {
  if (!more) return false;
  const std::size_t at = rest.find('|');
  item = rest.substr(0, at);
  more = at != std::string_view::npos;
  rest = more ? rest.substr(at + 1) : std::string_view();
  return true;
}

}  // namespace

std::int32_t ComboListIndex(std::string_view list, std::string_view item) {
  bool more = true;
  std::string_view current;
  for (std::int32_t index = 0; NextItem(list, more, current); ++index) {
    if (current == item) return index;
  }
  return 0;
}

std::string ComboListItem(std::string_view list, std::int32_t index) {
  bool more = true;
  std::string_view current;
  for (std::int32_t i = 0; NextItem(list, more, current); ++i) {
    if (i >= index) break;
  }
  return std::string(current);
}

}  // namespace velmoor
