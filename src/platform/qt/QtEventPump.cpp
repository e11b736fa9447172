#include "platform/qt/QtEventPump.h"

#include <QApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <utility>

namespace velmoor::qt {

void QtEventPump::Yield() {
  QCoreApplication::processEvents();
}

void QtEventPump::WaitForEvents(std::chrono::milliseconds limit) {
  QTimer timer;
  timer.setSingleShot(true);
  timer.setTimerType(Qt::PreciseTimer);
  timer.start(limit);
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtEventPump::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(qApp, std::move(work), Qt::QueuedConnection);
}

void QtEventPump::SetBusyPointer(bool busy) {
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

std::shared_ptr<void> WatchDescriptor(int descriptor, std::function<void()> onReadable) {
  auto notifier = std::make_shared<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                   [work = std::move(onReadable)] { work(); });
  return notifier;
}

}  // namespace velmoor::qt
