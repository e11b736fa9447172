// The sizes that the user gave the windows, kept in the settings from one session to the next.
#pragma once

#include <QSize>
#include <optional>
#include <string>

namespace velmoor::qt {

// In device-independent pixels, without the frame. Nothing for a window that was never resized, or
// where the settings hold something else.
[[nodiscard]] std::optional<QSize> StoredWindowSize(const std::string& layout);

// A setting that cannot be written is no failure: the size holds as long as the window.
void StoreWindowSize(const std::string& layout, QSize size);

// As much of `size` as the screen has room for, with the desktop's frame around it.
[[nodiscard]] QSize FittingScreen(QSize size);

}  // namespace velmoor::qt
