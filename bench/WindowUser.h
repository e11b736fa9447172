// A user at the real windows.
#pragma once

#include <QApplication>
#include <QMdiSubWindow>
#include <QTimer>
#include <QWidget>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "layouts/frmMain.h"
#include "platform/Form.h"
#include "platform/MainWindow.h"
#include "platform/World.h"
#include "platform/qt/QtForm.h"

namespace velmoor::bench {

// Windows that do not wait for their end lie in it. It goes with the object.
[[nodiscard]] inline std::unique_ptr<MainWindow> ShowMainWindow() {
  auto window = world().forms->LoadMainWindow(layouts::frmMain::kLayout);
  window->Show();
  return window;
}

// Of the window that has the keyboard. Throws std::runtime_error.
template <typename Kind>
Kind& InWindow(const char* name) {
  auto* const form = dynamic_cast<qt::QtForm*>(world().forms->Active());
  Kind* const found =
      form != nullptr ? form->Root().findChild<Kind*>(QString::fromLatin1(name)) : nullptr;
  if (found == nullptr) throw std::runtime_error(std::string("no window shows ") + name);
  return *found;
}

inline void CloseWindows() {
  for (Form* const form : world().forms->Shown()) form->Unload();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Runs `work` once the window that `show` opens is drawn, whether `show` waits for its end or not;
// the window is closed then. Passes on what `work` throws.
inline void WithinWindow(const std::function<void()>& show, const std::function<void()>& work) {
  std::exception_ptr thrown;
  bool done = false;
  QTimer drawn;  // goes with a `show` that throws
  drawn.setSingleShot(true);
  QObject::connect(&drawn, &QTimer::timeout, [&] {
    QApplication::processEvents();
    try {
      work();
    } catch (...) {
      thrown = std::current_exception();
    }
    done = true;
    CloseWindows();
  });
  drawn.start(0);
  show();
  while (!done) QApplication::processEvents();
  if (thrown) std::rethrow_exception(thrown);
}

}  // namespace velmoor::bench
