#include "platform/qt/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "platform/qt/QtText.h"

namespace velmoor::qt {

void QtClipboard::SetText(const std::string& text) {
  QGuiApplication::clipboard()->setText(ToQt(text));
}

std::string QtClipboard::Text() const {
  return FromQt(QGuiApplication::clipboard()->text());
}

}  // namespace velmoor::qt
