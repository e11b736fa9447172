#include "reports/rptHX7Communications.h"

#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {

void rptHX7Communications::ActiveReport_ReportStart() {
  SetHeadings({"Setting", "Value"});
  arTemp = {{"Axis", gMainForm->Axis()},
            // The session counts ports from 0, people from 1.
            {"COM Port", NumberText(gMainForm->COM() + 1)},
            {"Baud Rate", NumberText(gMainForm->BaudRate())},
            {"Echo", gMainForm->Echo() != 0 ? "Yes" : "No"}};
}

}  // namespace velmoor
