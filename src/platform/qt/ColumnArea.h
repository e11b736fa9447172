// Columns that may be taller than their window: scrolled up and down, never sideways.
#pragma once

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace velmoor::qt {

class ColumnArea final : public QScrollArea {
 public:
  explicit ColumnArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Its own room does not take the keyboard: the controls on it do.
    setFocusPolicy(Qt::NoFocus);
  }
  [[nodiscard]] QSize sizeHint() const override {
    return {Room(widget()->sizeHint().width()), widget()->sizeHint().height()};
  }
  [[nodiscard]] QSize minimumSizeHint() const override {
    return {Room(widget()->minimumSizeHint().width()), kLeastHeight};
  }

 protected:
  // What the columns need changes with their texts, of which the area itself is not told.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool changed = watched == widget() && event->type() == QEvent::LayoutRequest;
    const bool taken = QScrollArea::eventFilter(watched, event);
    if (changed) updateGeometry();
    return taken;
  }

 private:
  static constexpr int kLeastHeight = 160;

  // The bar has its room from the start: nothing moves when it comes.
  [[nodiscard]] int Room(int width) const {
    return width + verticalScrollBar()->sizeHint().width();
  }
};

}  // namespace velmoor::qt
