// What a window does on a screen that has too little room for it.
#pragma once

#include <QSize>

class QWidget;

namespace velmoor::qt {

// The least that the window needs to show all of itself, `width` wide or wider.
[[nodiscard]] QSize NeededSize(const QWidget& window, int width);

// Puts the content of a window that needs more than `room` on a page that can be scrolled; its row
// of buttons stays in sight below. A window that has the room stays as it is. Returns what the bar
// to scroll by takes of its width.
[[nodiscard]] QSize LetScrollWithin(QWidget& window, QSize room);

}  // namespace velmoor::qt
