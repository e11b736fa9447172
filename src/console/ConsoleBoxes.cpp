#include "console/ConsoleBoxes.h"

#include <ostream>

#include "platform/VisibleText.h"

namespace velmoor {

void ConsoleBoxes::Told(const std::string& text, bool /*failure*/) {
  out_ << VisibleLines(text) << '\n';
}

}  // namespace velmoor
