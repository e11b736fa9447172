// The transfers of the project: looked at, compared with it, and sent back.

#include "app/frmHistory.h"
#include "app/frmMain.h"
#include "platform/Files.h"
#include "platform/Trapped.h"

namespace velmoor {

void frmMain::mnuViewHistory_Click() {
  if (!clsProject) return;
  Trapped("Transfer History failed!\r", [this] {
    const frmHistory::Actions actions{
        .compare =
            [this](const HistoryChoice& choice, const std::string& path) {
              ShowCompared({clsProject->FileTitle(), clsProject->ProjectDatabasePath()},
                           {(choice.after ? "Behind " : "Before ") + choice.entry->name + ", " +
                                choice.entry->moment,
                            path},
                           true);
            },
        .sendBack =
            [this](const HistoryChoice& choice) {
              return operations_.transfers.Restore(*choice.entry, choice.after);
            }};
    (void)frmHistory(clsProject->FileName(), actions).Show(FormMode::modal);
    return true;
  });
}

}  // namespace velmoor
