// Paints a line drawing in the palette's colours, scaled to its room.
#pragma once

#include <QWidget>
#include <vector>

#include "platform/Drawing.h"

class QPainter;

namespace velmoor::qt {

class DrawingWidget final : public QWidget {
  Q_OBJECT

 public:
  explicit DrawingWidget(QWidget* parent = nullptr);
  void SetShapes(double width, double height, std::vector<DrawingShape> shapes);
  [[nodiscard]] const std::vector<DrawingShape>& Shapes() const { return shapes_; }
  [[nodiscard]] QSize sizeHint() const override { return {360, 190}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Paint(QPainter& painter, const DrawingShape& shape) const;

  double width_ = 1, height_ = 1;
  std::vector<DrawingShape> shapes_;
};

}  // namespace velmoor::qt
