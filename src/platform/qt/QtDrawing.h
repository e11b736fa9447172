// The Qt adapter of a drawing.
#pragma once

#include <utility>

#include "platform/Drawing.h"
#include "platform/qt/DrawingWidget.h"
#include "platform/qt/QtControls.h"

namespace velmoor::qt {

class QtDrawing final : public QtControl<Drawing> {
 public:
  explicit QtDrawing(DrawingWidget& widget) : QtControl(widget), drawing_(widget) {}
  void SetShapes(double width, double height, std::vector<DrawingShape> shapes) override {
    drawing_.SetShapes(width, height, std::move(shapes));
  }
  [[nodiscard]] const std::vector<DrawingShape>& Shapes() const override {
    return drawing_.Shapes();
  }

 private:
  DrawingWidget& drawing_;
};

}  // namespace velmoor::qt
