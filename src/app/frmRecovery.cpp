#include "app/frmRecovery.h"

#include "app/frmCompare.h"
#include "platform/Numbers.h"

namespace velmoor {

std::string frmRecovery::Words() const {
  std::string list;
  for (const PartComparison& part : differences_) {
    if (part.differences.empty()) continue;
    list += "\r" + part.part + ": " + NumberText(part.differences.size());
  }
  return "Velmoor ended last without saving project " + project_ + ".\r\r" +
         (list.empty() ? "What was not saved goes to no amplifier: labels or settings."
                       : "Values that were not saved:" + list);
}

frmRecovery::Choice frmRecovery::Ask() {
  choice_ = Choice::later;
  (void)Show(FormMode::modal);
  return choice_;
}

void frmRecovery::FormLoad() {
  ui().lblWords.SetText(Words());
  ui().cmdDifferences.SetEnabled(Differs(differences_));
  connections_ += ui().cmdRecover.Click.Connect([this] { End(Choice::recover); });
  connections_ += ui().cmdDiscard.Click.Connect([this] { End(Choice::discard); });
  connections_ += ui().cmdCancel.Click.Connect([this] { End(Choice::later); });
  connections_ += ui().cmdDifferences.Click.Connect([this] {
    (void)frmCompare(differences_, {"Saved and Not Saved", "Saved", "Not Saved"})
        .Show(FormMode::modal);
  });
}

void frmRecovery::End(Choice choice) {
  choice_ = choice;
  Unload();
}

}  // namespace velmoor
