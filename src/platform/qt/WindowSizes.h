// What the windows keep of their look from one session to the next: above all their sizes.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <string>
#include <string_view>

namespace velmoor::qt {

// In device-independent pixels, without the frame. Nothing for a window that was never resized, or
// where the settings hold something else.
[[nodiscard]] std::optional<QSize> StoredWindowSize(const std::string& layout);

// For a comfort of a window. A setting that cannot be written is no failure: the choice holds for
// this session all the same.
void KeepComfort(std::string_view setting, std::string_view value);

void StoreWindowSize(const std::string& layout, QSize size);

// As much of `size` as the screen has room for, with the desktop's frame around it.
[[nodiscard]] QSize FittingScreen(QSize size);

// The place for a window of that geometry which fits the screen: its own, or the nearest from where
// nothing of it is cut.
[[nodiscard]] QPoint OntoScreen(const QRect& window);

}  // namespace velmoor::qt
