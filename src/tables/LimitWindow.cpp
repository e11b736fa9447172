#include "tables/LimitWindow.h"

#include "session/Session.h"
#include "tables/CellRules.h"

namespace velmoor {

CellCheck LimitWindow::Check(int, int, const std::string& text) const {
  return CheckLimit(OpenedProject(), kind_, text);
}

void LimitWindow::PasteFromBuffer(int row, int column) {
  (void)Accepted(PutTexts(table_, {{row, column, *strTempBuffer_}}, Context()));
}

}  // namespace velmoor
