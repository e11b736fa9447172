// Draws a screen of fixed rows and columns and lets the user select text on it.
#pragma once

#include <QColor>
#include <QPoint>
#include <QStringList>
#include <QWidget>
#include <functional>

namespace velmoor::qt {

class TerminalWidget final : public QWidget {
 public:
  static constexpr int kRows = 24;
  static constexpr int kColumns = 80;

  explicit TerminalWidget(QWidget* parent = nullptr);

  // Rows and columns from 0.
  void Put(int row, int column, QChar character);
  void ScrollUp();
  void Clear();
  void SetCursor(int row, int column);
  [[nodiscard]] QString Row(int row) const { return rows_[row]; }
  [[nodiscard]] QString SelectedText() const;
  void SetColors(const QColor& text, const QColor& background);

  // Gets every key press; what it returns tells whether the widget is done with it.
  std::function<bool(const QKeyEvent&)> onKey;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] QSize CellSize() const;
  [[nodiscard]] int PlaceAt(const QPoint& point) const;  // row * columns + column
  [[nodiscard]] bool IsSelected(int place) const;

  QStringList rows_;
  int cursorRow_ = 0;
  int cursorColumn_ = 0;
  int selectionBegin_ = 0;
  int selectionEnd_ = 0;  // behind the last place; equal: nothing is selected
  QColor textColor_;
  QColor backgroundColor_;
};

}  // namespace velmoor::qt
