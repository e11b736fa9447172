// A user at the real widgets.
#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace velmoor::qt {

// In a window on show.
template <typename Kind>
Kind& Widget(const char* name) {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;  // left by an earlier form, and gone soon
    if (auto* const found = window->findChild<Kind*>(QString::fromLatin1(name))) return *found;
  }
  throw std::logic_error(std::string("No widget is named ") + name);
}

inline void PressKey(QWidget& widget, Qt::Key key) {
  QTest::keyClick(&widget, key);
}

inline void TypeText(QWidget& widget, const QString& text) {
  QTest::keyClicks(&widget, text);
}

inline void ServeEvents() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

// Acts once a modal widget is up, while the caller waits in it.
inline void WhenModal(std::function<void(QWidget&)> work) {
  QTimer::singleShot(0, qApp, [work = std::move(work)] {
    if (QWidget* const modal = QApplication::activeModalWidget()) {
      work(*modal);
    } else {
      WhenModal(work);
    }
  });
}

}  // namespace velmoor::qt
