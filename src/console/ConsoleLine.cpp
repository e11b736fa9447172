#include "console/ConsoleLine.h"

#include <algorithm>
#include <ostream>

#include "console/ConsoleBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"

namespace velmoor {

std::vector<LineAxis> AxesNamed(const LineFile& line, const std::string& list) {
  std::vector<LineAxis> axes;
  for (const std::string& item : SplitAtCommas(list)) {
    const std::string address = UpperCase(Trim(item));
    const auto axis = std::ranges::find(line.axes, address, &LineAxis::address);
    if (axis == line.axes.end()) throw UsageError("The line has no axis '" + address + "'");
    if (std::ranges::find(axes, address, &LineAxis::address) == axes.end()) axes.push_back(*axis);
  }
  return axes;
}

AgreedBoxes& ConsoleLine::Boxes() {
  return context_.program.boxes;
}

bool ConsoleLine::Stopped() const {
  return context_.program.ends();
}

void ConsoleLine::AxisBegins(const LineAxis& axis, std::size_t /*number*/, std::size_t /*count*/) {
  context_.program.err << "Axis " << axis.address << " " << VisibleText(axis.name) << '\n';
}

}  // namespace velmoor
