#include "platform/Grid.h"

namespace velmoor {

void SetComboList(CellTraits& traits, const std::string& list) {
  traits.comboItems.clear();
  traits.comboOpen = list.starts_with('|');
  if (list.empty()) return;
  std::size_t begin = traits.comboOpen ? 1 : 0;
  for (;;) {
    const std::size_t end = list.find('|', begin);
    traits.comboItems.push_back(list.substr(begin, end - begin));
    if (end == std::string::npos) return;
    begin = end + 1;
  }
}

}  // namespace velmoor
