#include "platform/qt/QtMessageBoxes.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/HelpWindow.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

QMessageBox::Icon Icon(BoxKind kind) {
  switch (kind) {
    case BoxKind::plain:
      return QMessageBox::NoIcon;
    case BoxKind::critical:
      return QMessageBox::Critical;
    case BoxKind::exclamation:
      return QMessageBox::Warning;
    case BoxKind::information:
      return QMessageBox::Information;
    case BoxKind::question:
    case BoxKind::graveQuestion:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

struct Choice {
  QMessageBox::StandardButtons buttons;
  QMessageBox::StandardButton escape;  // what closing by the frame means
};

Choice Choices(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok:
      return {QMessageBox::Ok, QMessageBox::Ok};
    case BoxButtons::okCancel:
      return {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel};
    case BoxButtons::yesNo:
      return {QMessageBox::Yes | QMessageBox::No, QMessageBox::No};
    case BoxButtons::yesNoCancel:
      return {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel};
  }
  return {QMessageBox::Ok, QMessageBox::Ok};
}

BoxAnswer Answer(int button) {
  switch (button) {
    case QMessageBox::Ok:
      return BoxAnswer::ok;
    case QMessageBox::Yes:
      return BoxAnswer::yes;
    case QMessageBox::No:
      return BoxAnswer::no;
    default:
      return BoxAnswer::cancel;
  }
}

// The window that a box belongs to. None is active for a moment behind another box, and the guide's
// has nothing to do with any.
QWidget* Owner() {
  QWidget* const active = QApplication::activeWindow();
  if (active != nullptr && !IsHelpWindow(active)) return active;
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->isVisible() && window->inherits("QMainWindow");
  });
  return main == windows.end() ? nullptr : *main;
}

// The words say where their lines end; the box breaks none that the screen has room for.
void FitToLines(QMessageBox& box) {
  constexpr int kLongestLine = 900;
  auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (label == nullptr) return;
  const int longest = label->fontMetrics().size(0, label->text()).width();
  const int room = std::min(kLongestLine, box.screen()->availableGeometry().width() / 2);
  label->setMinimumWidth(std::min(longest, room));
}

QCheckBox* CheckFor(BoxTick& tick, QMessageBox& box) {
  auto* const check = new QCheckBox(ToQt(tick.caption), &box);
  check->setChecked(tick.on);
  QObject::connect(check, &QCheckBox::toggled, &box, [&tick](bool on) { tick.on = on; });
  return check;
}

// The box has a place for one tick: the others come below it, in a column that takes that place.
void ShowBelow(QCheckBox& first, BoxTick& second, QMessageBox& box) {
  auto* const grid = qobject_cast<QGridLayout*>(box.layout());
  const int index = grid == nullptr ? -1 : grid->indexOf(&first);
  if (index < 0) return;
  int row = 0;
  int column = 0;
  int rows = 1;
  int columns = 1;
  grid->getItemPosition(index, &row, &column, &rows, &columns);
  auto* const place = new QWidget(&box);
  auto* const below = new QVBoxLayout(place);
  below->setContentsMargins(0, 0, 0, 0);
  below->addWidget(&first);
  for (BoxTick* tick = &second; tick != nullptr; tick = tick->next) {
    below->addWidget(CheckFor(*tick, box));
  }
  grid->addWidget(place, row, column, rows, columns);
}

}  // namespace

BoxAnswer QtMessageBoxes::Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                               const std::string& title, BoxTick* tick) {
  const Choice choice = Choices(buttons);
  QMessageBox box(Owner());
  box.setIcon(Icon(kind));
  box.setWindowTitle(title.empty() ? QStringLiteral("Velmoor") : ToQt(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text));
  FitToLines(box);
  box.setStandardButtons(choice.buttons);
  box.setEscapeButton(choice.escape);
  // A message can be quoted without typing it.
  auto* const copy = new QShortcut(QKeySequence::Copy, &box);
  QObject::connect(copy, &QShortcut::activated, &box,
                   [&box] { QApplication::clipboard()->setText(box.text()); });
  // A warning is not agreed to by a stray Enter.
  const bool grave = kind == BoxKind::exclamation || kind == BoxKind::graveQuestion;
  if (grave) box.setDefaultButton(choice.escape);
  if (tick != nullptr) box.setCheckBox(CheckFor(*tick, box));
  if (tick != nullptr && tick->next != nullptr) ShowBelow(*box.checkBox(), *tick->next, box);
  // An hourglass of the caller must not lie over the box.
  QApplication::setOverrideCursor(Qt::ArrowCursor);
  const int button = box.exec();
  QApplication::restoreOverrideCursor();
  return Answer(button);
}

}  // namespace velmoor::qt
