// Draws a screen of fixed rows and columns over the rows that have scrolled away, and lets the user
// scroll back and select text.
#pragma once

#include <QAbstractScrollArea>
#include <QColor>
#include <QString>
#include <bitset>
#include <deque>
#include <functional>

namespace velmoor::qt {

class TerminalWidget final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  static constexpr int kRows = 24;
  static constexpr int kColumns = 80;
  static constexpr int kKeptRows = 5000;  // of those that have scrolled away

  explicit TerminalWidget(QWidget* parent = nullptr);

  // Rows and columns of the screen, from 0.
  void Put(int row, int column, QChar character, bool bold);
  void ScrollUp();
  void Clear();
  void SetCursor(int row, int column);
  [[nodiscard]] QString Row(int row) const { return lines_[ScreenTop() + AsIndex(row)].text; }
  // Lines without trailing blanks, joined by line feeds; also of rows that are out of sight.
  [[nodiscard]] QString SelectedText() const;
  void SetColors(const QColor& text, const QColor& bold, const QColor& background);
  void SetTextFont(const QFont& font);

  // Gets every key press; what it returns tells whether the widget is done with it.
  std::function<bool(const QKeyEvent&)> onKey;

  // Holds the whole screen.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  struct Line {
    QString text = QString(kColumns, QLatin1Char(' '));
    std::bitset<kColumns> bold;
  };

  static std::size_t AsIndex(int value) { return static_cast<std::size_t>(value); }
  [[nodiscard]] std::size_t ScreenTop() const { return lines_.size() - kRows; }
  [[nodiscard]] QSize CellSize() const;
  [[nodiscard]] QSize SizeOf(int rows, int columns) const;
  // Line * columns + column, of all lines that are kept.
  [[nodiscard]] int PlaceAt(const QPoint& point) const;
  [[nodiscard]] bool IsSelected(int place) const;
  void PaintLine(QPainter& painter, int line, const QPoint& origin) const;
  // Follows the number of lines and the size; a view that stood at the end stays there.
  void UpdateScrollBars(bool toEnd);
  [[nodiscard]] bool IsAtEnd() const;
  bool ScrollByKey(const QKeyEvent& event);

  std::deque<Line> lines_;  // the last kRows are the screen
  int cursorRow_ = 0;
  int cursorColumn_ = 0;
  int selectionBegin_ = 0;
  int selectionEnd_ = 0;  // behind the last place; equal: nothing is selected
  QColor textColor_;
  QColor boldColor_;
  QColor backgroundColor_;
};

}  // namespace velmoor::qt
