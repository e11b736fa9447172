#include "platform/qt/TerminalWidget.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace velmoor::qt {
namespace {

constexpr int kMargin = 4;

}  // namespace

TerminalWidget::TerminalWidget(QWidget* parent)
    : QAbstractScrollArea(parent),
      textColor_(0xe4, 0xe7, 0xea),
      boldColor_(0xff, 0xb4, 0x54),
      backgroundColor_(0x1c, 0x1f, 0x23) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  // A bar that comes and goes would change the number of columns in sight.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  Clear();
  SetTextFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

void TerminalWidget::Put(int row, int column, QChar character, bool bold) {
  Line& line = lines_[ScreenTop() + AsIndex(row)];
  line.text[column] = character;
  line.bold[AsIndex(column)] = bold;
  viewport()->update();
}

void TerminalWidget::ScrollUp() {
  const bool atEnd = IsAtEnd();
  lines_.emplace_back();
  if (lines_.size() > kKeptRows + kRows) {
    lines_.pop_front();
    selectionBegin_ = std::max(0, selectionBegin_ - kColumns);
    selectionEnd_ = std::max(0, selectionEnd_ - kColumns);
    // The same lines stay in sight.
    if (!atEnd) verticalScrollBar()->setValue(verticalScrollBar()->value() - 1);
  }
  UpdateScrollBars(atEnd);
}

void TerminalWidget::Clear() {
  lines_.assign(kRows, Line());
  selectionBegin_ = selectionEnd_ = 0;
  UpdateScrollBars(true);
}

void TerminalWidget::SetCursor(int row, int column) {
  cursorRow_ = row;
  cursorColumn_ = column;
  viewport()->update();
}

void TerminalWidget::SetColors(const QColor& text, const QColor& bold, const QColor& background) {
  textColor_ = text;
  boldColor_ = bold;
  backgroundColor_ = background;
  viewport()->update();
}

void TerminalWidget::SetTextFont(const QFont& font) {
  viewport()->setFont(font);
  updateGeometry();
  UpdateScrollBars(true);
}

QSize TerminalWidget::CellSize() const {
  const QFontMetrics metrics(viewport()->font());
  return {metrics.horizontalAdvance(QLatin1Char('M')), metrics.height()};
}

QSize TerminalWidget::SizeOf(int rows, int columns) const {
  const QSize cell = CellSize();
  const int frame = 2 * (frameWidth() + kMargin);
  const int bar = verticalScrollBar()->sizeHint().width() +
                  style()->pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing, nullptr, this);
  return {columns * cell.width() + frame + bar, rows * cell.height() + frame};
}

QSize TerminalWidget::sizeHint() const {
  return SizeOf(kRows, kColumns);
}

QSize TerminalWidget::minimumSizeHint() const {
  return SizeOf(3, kColumns / 4);
}

// ---- scrolling

bool TerminalWidget::IsAtEnd() const {
  return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void TerminalWidget::UpdateScrollBars(bool toEnd) {
  const QSize cell = CellSize();
  const QSize room = viewport()->size() - QSize(2 * kMargin, 2 * kMargin);
  const int rows = std::max(1, room.height() / std::max(1, cell.height()));
  verticalScrollBar()->setPageStep(rows);
  verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(lines_.size()) - rows));
  if (toEnd) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  horizontalScrollBar()->setPageStep(room.width());
  horizontalScrollBar()->setRange(0, std::max(0, kColumns * cell.width() - room.width()));
  viewport()->update();
}

void TerminalWidget::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  UpdateScrollBars(true);
}

bool TerminalWidget::ScrollByKey(const QKeyEvent& event) {
  const int page = verticalScrollBar()->pageStep();
  if (event.key() != Qt::Key_PageUp && event.key() != Qt::Key_PageDown) return false;
  const int step = event.key() == Qt::Key_PageUp ? -page : page;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
  return true;
}

// ---- keys and mouse

bool TerminalWidget::event(QEvent* event) {
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!isKey || !onKey) return QAbstractScrollArea::event(event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (event->type() == QEvent::ShortcutOverride) {
    // Copy and paste concern the terminal here, whatever else in the program listens to these keys.
    if (!key.matches(QKeySequence::Copy) && !key.matches(QKeySequence::Paste)) {
      return QAbstractScrollArea::event(event);
    }
    event->accept();
    return true;
  }
  // Tab would move the focus; every other key goes to the terminal instead.
  event->accept();
  if (ScrollByKey(key)) return true;
  const bool copies = key.matches(QKeySequence::Copy);
  const bool types = !key.text().isEmpty() && !copies;
  if (types) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  // The line that a key ends may close the window, and take the function away meanwhile.
  const auto handler = onKey;
  return handler(key);
}

int TerminalWidget::PlaceAt(const QPoint& point) const {
  const QSize cell = CellSize();
  const int last = static_cast<int>(lines_.size()) - 1;
  const int row = (point.y() - kMargin) / cell.height() + verticalScrollBar()->value();
  const int column = (point.x() - kMargin + horizontalScrollBar()->value()) / cell.width();
  return std::clamp(row, 0, last) * kColumns + std::clamp(column, 0, kColumns);
}

bool TerminalWidget::IsSelected(int place) const {
  const auto [first, last] = std::minmax(selectionBegin_, selectionEnd_);
  return place >= first && place < last;
}

QString TerminalWidget::SelectedText() const {
  const auto [first, last] = std::minmax(selectionBegin_, selectionEnd_);
  if (first == last) return {};
  QStringList lines;
  for (int line = first / kColumns; line <= (last - 1) / kColumns; ++line) {
    const int begin = std::max(first - line * kColumns, 0);
    const int end = std::min(last - line * kColumns, kColumns);
    QString text = lines_[AsIndex(line)].text.mid(begin, end - begin);
    while (text.endsWith(QLatin1Char(' '))) text.chop(1);
    lines.append(text);
  }
  return lines.join(QLatin1Char('\n'));
}

void TerminalWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  selectionBegin_ = selectionEnd_ = PlaceAt(event->position().toPoint());
  viewport()->update();
}

void TerminalWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const QPoint point = event->position().toPoint();
  const int beyond = point.y() < 0 ? -1 : point.y() >= viewport()->height() ? 1 : 0;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
  selectionEnd_ = PlaceAt(point);
  viewport()->update();
}

// The word under the pointer.
void TerminalWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  const int place = PlaceAt(event->position().toPoint());
  const int line = std::min(place / kColumns, static_cast<int>(lines_.size()) - 1);
  const QString& text = lines_[AsIndex(line)].text;
  const int column = std::min(place - line * kColumns, kColumns - 1);
  if (text[column] == QLatin1Char(' ')) return;
  const auto end = text.indexOf(QLatin1Char(' '), column);
  selectionBegin_ =
      line * kColumns + static_cast<int>(text.lastIndexOf(QLatin1Char(' '), column)) + 1;
  selectionEnd_ = line * kColumns + (end < 0 ? kColumns : static_cast<int>(end));
  viewport()->update();
}

// ---- drawing

void TerminalWidget::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.setFont(viewport()->font());
  painter.fillRect(viewport()->rect(), backgroundColor_);
  const int top = verticalScrollBar()->value();
  const int bottom =
      std::min(top + verticalScrollBar()->pageStep(), static_cast<int>(lines_.size()));
  for (int line = top; line < bottom; ++line) {
    PaintLine(
        painter, line,
        {kMargin - horizontalScrollBar()->value(), kMargin + (line - top) * CellSize().height()});
  }
}

void TerminalWidget::PaintLine(QPainter& painter, int line, const QPoint& origin) const {
  const QSize cell = CellSize();
  const int ascent = QFontMetrics(viewport()->font()).ascent();
  const Line& shown = lines_[AsIndex(line)];
  const bool hasCursor = hasFocus() && line == static_cast<int>(ScreenTop()) + cursorRow_;
  for (int column = 0; column < kColumns; ++column) {
    const QRect place(origin + QPoint(column * cell.width(), 0), cell);
    const QColor& color = shown.bold[AsIndex(column)] ? boldColor_ : textColor_;
    const bool inverse =
        (hasCursor && column == cursorColumn_) || IsSelected(line * kColumns + column);
    if (inverse) painter.fillRect(place, color);
    painter.setPen(inverse ? backgroundColor_ : color);
    const QChar character = shown.text[column];
    if (character != QLatin1Char(' ')) {
      painter.drawText(place.left(), place.top() + ascent, QString(character));
    }
  }
}

}  // namespace velmoor::qt
