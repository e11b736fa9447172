#include "platform/Layout.h"

#include <stdexcept>

namespace velmoor {

LayoutAccess::LayoutAccess(LaidOut& window, const Layout& layout) : window_(window) {
  if (&window.GetLayout() == &layout) return;
  throw std::logic_error(std::string(window.GetLayout().name) + " is no window of the layout " +
                         std::string(layout.name));
}

}  // namespace velmoor
