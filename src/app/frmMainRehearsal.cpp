// What the window of the rehearsal asks of the session.

#include "app/frmMain.h"
#include "tables/TableWindow.h"

namespace velmoor {

frmRehearsal::Hooks frmMain::HooksOfRehearsal() {
  return {.project = [this] { return ProjectToRehearse(); },
          .goTo = [this](int step, bool front) { GoToStep(step, front); }};
}

// No command may be under way: what was edited is applied by one.
clsHX7Project* frmMain::ProjectToRehearse() {
  const bool ready = RunCommand("frmMain.ProjectToRehearse: ", [this] {
    return clsProject && ApplyPending("Do you wish to apply it?  No rehearses without it.");
  });
  return ready ? clsProject.get() : nullptr;
}

void frmMain::GoToStep(int step, bool front) {
  if (!clsProject) return;
  if (front) RunToolCommand(MainCommand::mnuToolsIndexerPosition);
  clsProject->Position().Window().GoToRow(step);
}

}  // namespace velmoor
