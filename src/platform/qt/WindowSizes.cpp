#include "platform/qt/WindowSizes.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <algorithm>

#include "platform/Settings.h"
#include "platform/World.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// "Size_frmZone=640x480"
std::string SettingOf(const std::string& layout) {
  return "Size_" + layout;
}

constexpr QSize kFrame(4, 40);  // what the desktop's title bar and edges may take

}  // namespace

std::optional<QSize> StoredWindowSize(const std::string& layout) {
  const QStringList parts =
      ToQt(world().settings->ReadText(SettingOf(layout), "")).split(QLatin1Char('x'));
  if (parts.size() != 2) return std::nullopt;
  const QSize size(parts[0].toInt(), parts[1].toInt());  // 0 for what is no number
  return size.isEmpty() ? std::nullopt : std::optional(size);
}

void KeepComfort(std::string_view setting, std::string_view value) {
  try {
    world().settings->Write(setting, value);
  } catch (const std::exception&) {
    // The next session has it as it was designed.
  }
}

void StoreWindowSize(const std::string& layout, QSize size) {
  KeepComfort(SettingOf(layout),
              std::to_string(size.width()) + "x" + std::to_string(size.height()));
}

QSize FittingScreen(QSize size) {
  return size.boundedTo(QGuiApplication::primaryScreen()->availableGeometry().size() - kFrame);
}

QPoint OntoScreen(const QRect& window) {
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  const auto within = [](int place, int length, int from, int to) {
    return std::max(from, std::min(place, to - length));
  };
  return {within(window.x(), window.width(), room.left(), room.left() + room.width()),
          within(window.y(), window.height(), room.top(), room.top() + room.height())};
}

}  // namespace velmoor::qt
