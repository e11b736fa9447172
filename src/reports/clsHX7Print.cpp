#include "reports/clsHX7Print.h"

#include "platform/Printing.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "reports/frmPrint.h"

namespace velmoor {

void clsHX7Print::Show_PrintProject(clsHX7Project& clsProject) {
  // Errors here bear no number; 0 stands in its place.
  Trapped("clsPrint.Show_PrintProject: [0] ", [&clsProject] {
    const std::size_t numPrinters = world().printing->Printers().size();
    frmPrint window;
    window.SetCanPrint(numPrinters > 0);
    window.SetProj(clsProject);
    return window.Show(FormMode::modal);
  });
}

}  // namespace velmoor
