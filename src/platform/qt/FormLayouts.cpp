#include "platform/qt/FormLayouts.h"

#include <map>
#include <stdexcept>

#include "FormLayouts.inc"

namespace velmoor::qt {
namespace {

template <typename Layout, typename Window>
QWidget* Make(void (Layout::*setup)(Window*)) {
  auto* const window = new Window;
  Layout layout;
  (layout.*setup)(window);
  return window;
}

using Maker = QWidget* (*)();

const std::map<std::string, Maker>& Makers() {
#define VELMOOR_LAYOUT(name) {#name, [] { return Make(&Ui::name::setupUi); }},
  static const std::map<std::string, Maker> makers{VELMOOR_LAYOUTS};
#undef VELMOOR_LAYOUT
  return makers;
}

}  // namespace

QWidget* MakeLayout(const std::string& name) {
  const auto maker = Makers().find(name);
  if (maker == Makers().end()) throw std::logic_error("No layout is named " + name);
  return maker->second();
}

}  // namespace velmoor::qt
