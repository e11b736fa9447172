#include "Examination.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSizeGrip>
#include <QStyleOptionComboBox>
#include <QTableView>
#include <QToolButton>

namespace velmoor::qt {
namespace {

// What a desktop's title bar and edges take.
constexpr QSize kFrame(4, 40);
// So little of something that scrolls is no view of it.
constexpr QSize kLeastView(60, 40);

QString Told(const QRect& place) {
  return QStringLiteral("%1x%2 at %3,%4")
      .arg(place.width())
      .arg(place.height())
      .arg(place.x())
      .arg(place.y());
}

QString NameOf(const QWidget& widget) {
  return widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                       : widget.objectName();
}

// ---- the window

// The page behind the windows scrolls as a whole where it has no room.
bool Scrolls(const QWidget& page) {
  const QWidget* const view = page.parentWidget();
  return view != nullptr && qobject_cast<const QScrollArea*>(view->parentWidget()) != nullptr;
}

QString ScreenFault(const QWidget& window) {
  if (Scrolls(window)) return {};
  const QRect room = window.screen()->availableGeometry();
  const QSize needed = window.size() + kFrame;
  if (needed.width() > room.width() || needed.height() > room.height()) {
    return QStringLiteral("needs %1x%2 with its frame, and the screen has %3x%4")
        .arg(needed.width())
        .arg(needed.height())
        .arg(room.width())
        .arg(room.height());
  }
  if (room.contains(window.geometry())) return {};
  return QStringLiteral("lies outside of the screen: ") + Told(window.geometry());
}

// A child window goes as far as the area of the main window can be scrolled.
QString AreaFault(const QMdiSubWindow& child) {
  const QMdiArea& area = *child.mdiArea();
  const QRect room = area.viewport()->rect();
  const QRect place = child.geometry();
  const bool across = place.left() >= 0 && place.right() <= room.right();
  const bool down = place.top() >= 0 && place.bottom() <= room.bottom();
  const auto scrolls = [](const QScrollBar* bar) { return bar->maximum() > bar->minimum(); };
  if ((across || scrolls(area.horizontalScrollBar())) &&
      (down || scrolls(area.verticalScrollBar()))) {
    return {};
  }
  return QStringLiteral("lies outside of the main window: ") + Told(place);
}

// ---- the place of a control

const QAbstractScrollArea* AreaOfViewport(const QWidget& widget) {
  const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
  return area != nullptr && area->viewport() == &widget ? area : nullptr;
}

// Where a control leaves one of those that hold it, up to the window; empty: nowhere.
QString PlaceFault(const QWidget& control, const QWidget& window) {
  QRect seen = control.rect();
  for (const QWidget* at = &control; at != &window; at = at->parentWidget()) {
    const QWidget& holder = *at->parentWidget();
    seen.translate(at->pos());
    const QRect room = holder.rect();
    if (const QAbstractScrollArea* const area = AreaOfViewport(holder)) {
      const bool cutAcross = seen.width() > room.width() &&
                             area->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff;
      const bool cutDown = seen.height() > room.height() &&
                           area->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff;
      if (cutAcross || cutDown)
        return NameOf(*area) + QStringLiteral(" cannot scroll from ") + Told(room) +
               QStringLiteral(" to ") + Told(seen);
      seen = room;  // scrolled to
    } else if (!room.contains(seen)) {
      return QStringLiteral("%1 in %2 of %3").arg(Told(seen), NameOf(holder), Told(room));
    }
  }
  return {};
}

// ---- the room of its text

QSize TextRoom(const QAbstractButton& button) {
  const auto* const tool = qobject_cast<const QToolButton*>(&button);
  if (tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly) return tool->iconSize();
  QStyleOption option;
  option.initFrom(&button);
  QSize least = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
  const bool marked = qobject_cast<const QCheckBox*>(&button) != nullptr ||
                      qobject_cast<const QRadioButton*>(&button) != nullptr;
  if (marked) {
    least.rwidth() += button.style()->pixelMetric(QStyle::PM_IndicatorWidth, &option) + 4;
  }
  if (!button.icon().isNull()) least.rwidth() += button.iconSize().width();
  return least;
}

QSize TextRoom(const QLabel& label) {
  if (label.wordWrap()) return {0, label.heightForWidth(label.width())};
  // A text that gives way says so by its policy, and by a tip.
  const bool givesWay = label.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
  return givesWay ? QSize(0, label.sizeHint().height()) : label.sizeHint();
}

QSize TextRoom(const QComboBox& box) {
  QStyleOptionComboBox option;
  option.initFrom(&box);
  const QRect field =
      box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
  const int frame = box.width() - field.width();
  return {box.fontMetrics().horizontalAdvance(box.currentText()) + frame, 0};
}

QString TextFault(const QWidget& control) {
  QSize needed(0, 0);
  if (const auto* const button = qobject_cast<const QAbstractButton*>(&control)) {
    needed = TextRoom(*button);
  } else if (const auto* const label = qobject_cast<const QLabel*>(&control)) {
    if (!label->text().isEmpty()) needed = TextRoom(*label);
  } else if (const auto* const box = qobject_cast<const QComboBox*>(&control)) {
    needed = TextRoom(*box);
  } else if (const auto* const group = qobject_cast<const QGroupBox*>(&control)) {
    needed.rwidth() = group->fontMetrics().horizontalAdvance(group->title());
  }
  const QSize has = control.size();
  if (needed.width() <= has.width() && needed.height() <= has.height()) return {};
  return QStringLiteral("its text needs %1x%2 and has %3x%4")
      .arg(needed.width())
      .arg(needed.height())
      .arg(has.width())
      .arg(has.height());
}

// The headings of a grid, of which none is cut.
QStringList HeadingFaults(const QTableView& grid) {
  QStringList faults;
  const QHeaderView& header = *grid.horizontalHeader();
  if (header.isHidden()) return faults;
  for (int column = 0; column < header.count(); ++column) {
    if (header.isSectionHidden(column)) continue;
    const int needed = header.sectionSizeHint(column);
    if (needed <= header.sectionSize(column)) continue;
    faults += QStringLiteral("%1: the heading \"%2\" needs %3 and has %4")
                  .arg(NameOf(grid), grid.model()->headerData(column, Qt::Horizontal).toString())
                  .arg(needed)
                  .arg(header.sectionSize(column));
  }
  return faults;
}

// ---- all controls of a window

// Parts of a control, which answers for them, and what no layout has placed.
bool IsExamined(const QWidget& widget, const QWidget& window) {
  if (!widget.isVisibleTo(&window) || widget.isWindow()) return false;
  if (qobject_cast<const QMdiSubWindow*>(&widget) != nullptr) return false;
  for (const QWidget* holder = widget.parentWidget(); holder != &window;
       holder = holder->parentWidget()) {
    const bool part = qobject_cast<const QComboBox*>(holder) != nullptr ||
                      qobject_cast<const QTableView*>(holder) != nullptr ||
                      qobject_cast<const QMdiSubWindow*>(holder) != nullptr ||
                      qobject_cast<const QScrollBar*>(holder) != nullptr;
    if (part) return false;
  }
  // The label of a box is all that it has to say.
  return (!widget.objectName().startsWith(QLatin1String("qt_")) ||
          qobject_cast<const QLabel*>(&widget) != nullptr) &&
         qobject_cast<const QSizeGrip*>(&widget) == nullptr;
}

bool CoverEachOther(const QWidget& one, const QWidget& other) {
  return one.parentWidget() == other.parentWidget() && one.geometry().intersects(other.geometry());
}

}  // namespace

QStringList FaultsOf(const QWidget& window) {
  QStringList faults;
  const auto note = [&faults](const QString& name, const QString& fault) {
    if (!fault.isEmpty()) faults += name + QStringLiteral(": ") + fault;
  };
  const auto* const child = qobject_cast<const QMdiSubWindow*>(window.parentWidget());
  note(NameOf(window), child != nullptr ? AreaFault(*child) : ScreenFault(window));
  QList<const QWidget*> controls;
  for (const QWidget* const widget : window.findChildren<QWidget*>()) {
    if (IsExamined(*widget, window)) controls += widget;
  }
  for (const QWidget* const control : controls) {
    const QString name = NameOf(*control);
    note(name, PlaceFault(*control, window));
    note(name, TextFault(*control));
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(control);
    if (area != nullptr &&
        (area->width() < kLeastView.width() || area->height() < kLeastView.height())) {
      note(name, QStringLiteral("shows next to nothing: ") + Told(area->geometry()));
    }
    if (const auto* const grid = qobject_cast<const QTableView*>(control)) {
      faults += HeadingFaults(*grid);
    }
    for (const QWidget* const other : controls) {
      if (other > control && CoverEachOther(*control, *other)) {
        note(name, QStringLiteral("and %1 cover each other").arg(NameOf(*other)));
      }
    }
  }
  return faults;
}

}  // namespace velmoor::qt
