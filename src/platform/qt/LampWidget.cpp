#include "platform/qt/LampWidget.h"

#include <QPainter>

#include "platform/qt/QtAppearance.h"

namespace velmoor::qt {

LampWidget::LampWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LampWidget::SetTone(Tone tone) {
  tone_ = tone;
  update();
}

QSize LampWidget::sizeHint() const {
  return {14, 14};
}

void LampWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = LampColor(tone_, palette());
  painter.setPen(QPen(color.darker(140), 1));
  painter.setBrush(color);
  const double side = std::min(width(), height()) - 3.0;
  painter.drawEllipse(QRectF((width() - side) / 2, (height() - side) / 2, side, side));
}

}  // namespace velmoor::qt
