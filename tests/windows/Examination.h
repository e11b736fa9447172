// What a user would miss of a window that is on show, read off its geometry.
#pragma once

#include <QStringList>

class QWidget;

namespace velmoor::qt {

// One line for each control that is cut, lies outside of what holds it, covers another, or has no
// room for its text; and for a window that the screen has no room for. What can be scrolled into
// sight is no fault. `window` is the root of a layout: a window of its own, or the content of a
// child window.
[[nodiscard]] QStringList FaultsOf(const QWidget& window);

}  // namespace velmoor::qt
