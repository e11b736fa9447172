#include "platform/qt/DrawingWidget.h"

#include <QLineF>
#include <QPainter>
#include <algorithm>

#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

constexpr double kHead = 7;  // length of an arrow's head, in units of the sheet

void PaintArrow(QPainter& painter, const QLineF& line) {
  painter.drawLine(line);
  QLineF head(line.p2(), line.p1());
  head.setLength(kHead);
  for (const double angle : {20.0, -20.0}) {
    QLineF side = head;
    side.setAngle(head.angle() + angle);
    painter.drawLine(side);
  }
}

}  // namespace

DrawingWidget::DrawingWidget(QWidget* parent) : QWidget(parent) {
  setMinimumSize(240, 130);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void DrawingWidget::SetShapes(double width, double height, std::vector<DrawingShape> shapes) {
  width_ = std::max(width, 1.0);
  height_ = std::max(height, 1.0);
  shapes_ = std::move(shapes);
  QStringList texts;
  for (const DrawingShape& shape : shapes_) {
    if (!shape.text.empty()) texts << ToQt(shape.text);
  }
  setAccessibleDescription(texts.join(QStringLiteral(", ")));
  update();
}

void DrawingWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().base());
  const double scale = std::min(width() / width_, height() / height_);
  painter.translate((width() - width_ * scale) / 2, (height() - height_ * scale) / 2);
  painter.scale(scale, scale);
  QFont font = painter.font();
  font.setPixelSize(11);
  painter.setFont(font);
  for (const DrawingShape& shape : shapes_) Paint(painter, shape);
}

void DrawingWidget::Paint(QPainter& painter, const DrawingShape& shape) const {
  const QColor color =
      shape.strong ? palette().color(QPalette::Link) : palette().color(QPalette::Text);
  painter.setPen(QPen(color, shape.strong ? 1.6 : 1.1));
  const QRectF box(QPointF(shape.x1, shape.y1), QPointF(shape.x2, shape.y2));
  switch (shape.kind) {
    case DrawingShape::Kind::line:
      painter.drawLine(QLineF(box.topLeft(), box.bottomRight()));
      break;
    case DrawingShape::Kind::arrow:
      PaintArrow(painter, QLineF(box.topLeft(), box.bottomRight()));
      break;
    case DrawingShape::Kind::rectangle:
      painter.drawRect(box);
      break;
    case DrawingShape::Kind::ellipse:
      painter.drawEllipse(box);
      break;
    case DrawingShape::Kind::text:
      painter.drawText(QRectF(shape.x1 - 150, shape.y1 - 10, 300, 20), Qt::AlignCenter,
                       ToQt(shape.text));
      break;
  }
}

}  // namespace velmoor::qt
