// Qt's key events in the codes of the window ports.
#pragma once

#include <QKeyEvent>

#include "platform/Keys.h"

namespace velmoor::qt {

[[nodiscard]] KeyEvent ToKeyEvent(const QKeyEvent& event);

}  // namespace velmoor::qt
