#include "platform/qt/QtTerminalScreen.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <algorithm>

#include "platform/qt/QtKeys.h"

namespace velmoor::qt {

QFont FixedFont(const std::string& name, int points) {
  QFont font(ToQt(name), points);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  // The nearest to a font that is not there may be a slanted one.
  if (QFontDatabase::hasFamily(font.family()) && QFontInfo(font).fixedPitch()) return font;
  font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSize(points);
  return font;
}

QtTerminalScreen::QtTerminalScreen(TerminalWidget& widget) : QtControl(widget), widget_(widget) {
  widget.onKey = [this](const QKeyEvent& event) { return LookAtKey(event); };
}

QtTerminalScreen::~QtTerminalScreen() {
  widget_.onKey = nullptr;
}

bool QtTerminalScreen::LookAtKey(const QKeyEvent& event) {
  const QPointer<QObject> alive(&context_);
  const QString typed = event.text();
  KeyEvent key = ToKeyEvent(event);
  KeyDown.Raise(key);
  if (!alive || key.handled || typed.isEmpty()) return true;
  const char16_t character = typed[0].unicode();
  if (character < 128) KeyPress.Raise(static_cast<char>(character));
  return true;
}

void QtTerminalScreen::MoveCursor(int row, int column) {
  row_ = std::clamp(row, 1, Rows());
  column_ = std::clamp(column, 1, Columns());
  widget_.SetCursor(row_ - 1, column_ - 1);
}

void QtTerminalScreen::Write(const std::string& text) {
  for (const QChar character : ToQt(text)) {
    if (column_ > Columns()) {
      column_ = 1;
      if (row_ == Rows()) {
        ScrollUp();
      } else {
        ++row_;
      }
    }
    widget_.Put(row_ - 1, column_ - 1, character, bold_);
    ++column_;
  }
  widget_.SetCursor(row_ - 1, column_ - 1);
}

void QtTerminalScreen::Clear() {
  widget_.Clear();
  MoveCursor(1, 1);
}

std::string QtTerminalScreen::RowText(int row) const {
  QString text = widget_.Row(row - 1);
  while (text.endsWith(QLatin1Char(' '))) text.chop(1);
  return FromQt(text);
}

std::string QtTerminalScreen::SelectedText() const {
  return FromQt(widget_.SelectedText());
}

void QtTerminalScreen::SetFont(const std::string& name, int points) {
  widget_.SetTextFont(FixedFont(name, points));
}

void QtTerminalScreen::SetColors(std::uint32_t text, std::uint32_t bold, std::uint32_t background) {
  widget_.SetColors(QColor::fromRgb(text), QColor::fromRgb(bold), QColor::fromRgb(background));
}

void QtTerminalScreen::FitWindow() {
  QWidget* window = widget_.window();
  for (QWidget* parent = &widget_; parent != nullptr; parent = parent->parentWidget()) {
    if (qobject_cast<QMdiSubWindow*>(parent) == nullptr) continue;
    window = parent;
    break;
  }
  if (!widget_.isVisible() || window->isMaximized()) return;
  const QSize wanted = window->size() + widget_.sizeHint() - widget_.size();
  const QWidget* const area = window->parentWidget();
  window->resize(area == nullptr ? wanted : wanted.boundedTo(area->size()));
}

}  // namespace velmoor::qt
