#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QColorDialog>
#include <QFontDialog>
#include <QProcess>
#include <QStandardPaths>

#include "platform/qt/QtTerminalScreen.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// Knows which program the user prefers for a kind of file.
QString DesktopOpener() {
  return QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
}

}  // namespace

bool QtTextViewer::IsAvailable() const {
  return !DesktopOpener().isEmpty();
}

bool QtTextViewer::Open(const std::string& path) {
  return QProcess::startDetached(DesktopOpener(), {ToQt(path)});
}

std::optional<FontChoice> QtAppearanceDialogs::ChooseFont(const FontChoice& present) {
  bool accepted = false;
  const QFont font =
      QFontDialog::getFont(&accepted, FixedFont(present.name, present.points),
                           QApplication::activeWindow(), QStringLiteral("Terminal Font"),
                           QFontDialog::MonospacedFonts | QFontDialog::DontUseNativeDialog);
  if (!accepted) return std::nullopt;
  return FontChoice{FromQt(font.family()), font.pointSize()};
}

std::optional<std::uint32_t> QtAppearanceDialogs::ChooseColor(const std::string& title,
                                                              std::uint32_t present) {
  const QColor color =
      QColorDialog::getColor(QColor::fromRgb(present), QApplication::activeWindow(), ToQt(title),
                             QColorDialog::DontUseNativeDialog);
  if (!color.isValid()) return std::nullopt;
  return color.rgb() & 0xffffffU;
}

}  // namespace velmoor::qt
