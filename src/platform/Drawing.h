// Port: a line drawing that explains something, such as a machine with its measures.
#pragma once

#include <string>
#include <vector>

#include "platform/Controls.h"

namespace velmoor {

// Coordinates run from (0, 0) at the top left; the adapter scales the whole to its room.
struct DrawingShape {
  enum class Kind { line, rectangle, ellipse, arrow, text };
  Kind kind = Kind::line;
  double x1 = 0, y1 = 0;  // line and arrow: from here; others: top left, a text's centre
  double x2 = 0, y2 = 0;  // line and arrow: to here; others: bottom right
  std::string text;       // of a text
  bool strong = false;    // what the user is asked for
};

class Drawing : public Control {
 public:
  // Shows `shapes` on a sheet of `width` by `height`.
  virtual void SetShapes(double width, double height, std::vector<DrawingShape> shapes) = 0;
  [[nodiscard]] virtual const std::vector<DrawingShape>& Shapes() const = 0;
};

}  // namespace velmoor
