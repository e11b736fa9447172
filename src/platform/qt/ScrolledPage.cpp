#include "platform/qt/ScrolledPage.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace velmoor::qt {
namespace {

class Page final : public QScrollArea {
 public:
  Page() {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    // The controls on it take the keyboard, and are scrolled to.
    setFocusPolicy(Qt::NoFocus);
  }
  [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
  [[nodiscard]] QSize minimumSizeHint() const override { return {120, 80}; }
};

// The row of buttons, taken out of the layout; null where it has none.
QLayout* TakeButtons(QLayout& rows) {
  for (int i = 0; i < rows.count(); ++i) {
    QLayout* const row = rows.itemAt(i)->layout();
    if (row == nullptr || row->objectName() != QLatin1String("buttons")) continue;
    rows.takeAt(i);
    return row;
  }
  return nullptr;
}

}  // namespace

QSize NeededSize(const QWidget& window, int width) {
  // Areas within the layout hear of what their content needs by such events.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize());
  const QLayout* const rows = window.layout();
  if (rows == nullptr || !rows->hasHeightForWidth()) return least;
  const int wide = std::max(width, least.width());
  return {least.width(), std::max(least.height(), rows->totalMinimumHeightForWidth(wide))};
}

QSize LetScrollWithin(QWidget& window, QSize room) {
  QLayout* const rows = window.layout();
  const QSize needed = NeededSize(window, room.width());
  if (rows == nullptr || needed.boundedTo(room) == needed) return {0, 0};
  const QMargins margins = rows->contentsMargins();
  QLayout* const buttons = TakeButtons(*rows);
  auto* const content = new QWidget;
  content->setLayout(rows);
  auto* const page = new Page;
  page->setWidget(content);
  auto* const outer = new QVBoxLayout(&window);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->addWidget(page);
  if (buttons != nullptr) {
    buttons->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    outer->addLayout(buttons);
  }
  // The least size of the window follows now, before anybody gives it another.
  outer->activate();
  return {page->verticalScrollBar()->sizeHint().width(), 0};
}

}  // namespace velmoor::qt
