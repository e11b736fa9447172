// The look of the program: Fusion in a light and a dark palette, the colours of tones, the icons.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QString>

#include "platform/Controls.h"

class QWidget;

namespace velmoor::qt {

// The setting that keeps the user's choice of colours, and its two values.
inline constexpr char kThemeSetting[] = "Theme";
inline constexpr char kDarkTheme[] = "dark";
inline constexpr char kLightTheme[] = "light";

// Style and palette for the whole program. Call once, before any window.
void SetUpAppearance(bool dark);
void SetDark(bool dark);
[[nodiscard]] bool IsDark();
// Whether the desktop's own palette is a dark one; ask before SetUpAppearance.
[[nodiscard]] bool DesktopIsDark();

// The colour in which a text or lamp of that tone is drawn on the palette in force.
[[nodiscard]] QColor TextColor(Tone tone, const QPalette& palette);
[[nodiscard]] QColor LampColor(Tone tone, const QPalette& palette);

// One of the program's own icons, by its file name without the ending. Drawn in the palette's text
// colour at any size; an unknown name gives an empty icon.
[[nodiscard]] QIcon ProgramIcon(const QString& name);
// Gives each action and button below `root` that has a property "programIcon" the icon of its name.
void ApplyIcons(QWidget& root);

}  // namespace velmoor::qt
