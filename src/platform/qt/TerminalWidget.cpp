#include "platform/qt/TerminalWidget.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace velmoor::qt {
namespace {

constexpr int kMargin = 4;

}  // namespace

TerminalWidget::TerminalWidget(QWidget* parent)
    : QWidget(parent), textColor_(0xe4, 0xe7, 0xea), backgroundColor_(0x1c, 0x1f, 0x23) {
  setFocusPolicy(Qt::StrongFocus);
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  Clear();
}

void TerminalWidget::Put(int row, int column, QChar character) {
  rows_[row][column] = character;
  update();
}

void TerminalWidget::ScrollUp() {
  rows_.removeFirst();
  rows_.append(QString(kColumns, QLatin1Char(' ')));
  update();
}

void TerminalWidget::Clear() {
  rows_ = QStringList(kRows, QString(kColumns, QLatin1Char(' ')));
  selectionBegin_ = selectionEnd_ = 0;
  update();
}

void TerminalWidget::SetCursor(int row, int column) {
  cursorRow_ = row;
  cursorColumn_ = column;
  update();
}

void TerminalWidget::SetColors(const QColor& text, const QColor& background) {
  textColor_ = text;
  backgroundColor_ = background;
  update();
}

QSize TerminalWidget::CellSize() const {
  const QFontMetrics metrics(font());
  return {metrics.horizontalAdvance(QLatin1Char('M')), metrics.height()};
}

QSize TerminalWidget::sizeHint() const {
  const QSize cell = CellSize();
  return {kColumns * cell.width() + 2 * kMargin, kRows * cell.height() + 2 * kMargin};
}

int TerminalWidget::PlaceAt(const QPoint& point) const {
  const QSize cell = CellSize();
  const int row = std::clamp((point.y() - kMargin) / cell.height(), 0, kRows - 1);
  const int column = std::clamp((point.x() - kMargin) / cell.width(), 0, kColumns);
  return row * kColumns + column;
}

bool TerminalWidget::IsSelected(int place) const {
  const auto [first, last] = std::minmax(selectionBegin_, selectionEnd_);
  return place >= first && place < last;
}

QString TerminalWidget::SelectedText() const {
  QStringList lines;
  for (int row = 0; row < kRows; ++row) {
    QString line;
    for (int column = 0; column < kColumns; ++column) {
      if (IsSelected(row * kColumns + column)) line += rows_[row][column];
    }
    while (line.endsWith(QLatin1Char(' '))) line.chop(1);
    if (!line.isEmpty()) lines.append(line);
  }
  return lines.join(QLatin1Char('\n'));
}

bool TerminalWidget::event(QEvent* event) {
  // Tab would move the focus; every key goes to the terminal instead.
  if (event->type() == QEvent::KeyPress && onKey && onKey(static_cast<const QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void TerminalWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), backgroundColor_);
  const QSize cell = CellSize();
  const int ascent = QFontMetrics(font()).ascent();
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      const QRect place(kMargin + column * cell.width(), kMargin + row * cell.height(),
                        cell.width(), cell.height());
      const bool cursor = hasFocus() && row == cursorRow_ && column == cursorColumn_;
      const bool inverse = cursor || IsSelected(row * kColumns + column);
      if (inverse) painter.fillRect(place, textColor_);
      painter.setPen(inverse ? backgroundColor_ : textColor_);
      const QChar character = rows_[row][column];
      if (character != QLatin1Char(' ')) {
        painter.drawText(place.left(), place.top() + ascent, QString(character));
      }
    }
  }
}

void TerminalWidget::mousePressEvent(QMouseEvent* event) {
  selectionBegin_ = selectionEnd_ = PlaceAt(event->pos());
  update();
}

void TerminalWidget::mouseMoveEvent(QMouseEvent* event) {
  selectionEnd_ = PlaceAt(event->pos());
  update();
}

}  // namespace velmoor::qt
