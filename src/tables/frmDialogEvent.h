// The dialog of the event that a step waits for, and of the time after it.
#pragma once

#include <string>

#include "layouts/frmDialogEvent.h"
#include "windows/Dialog.h"

namespace velmoor {

class frmDialogEvent final : public WindowOf<layouts::frmDialogEvent, Dialog> {
 public:
  frmDialogEvent();

  void SetEventCell(const std::string& cell);
  // The event's text, "T" and the time in milliseconds: "SEL5T100", "T0".
  [[nodiscard]] std::string EventCell() const;
  // Whether the session is online, and then whether the option card knows SEL5 and SEL6.
  void SetOnline(bool online, bool newOptionVersion);

 protected:
  void FormLoad() override;
  bool TakeResult() override;

 private:
  void optEvent_Click(int index);
  void EnableTime(bool bState);
  void txtTime_Validate(bool& cancel);
  // False after the words about old firmware.
  [[nodiscard]] bool FirmwareKnows(int index) const;

  int intEventNumber_ = 0;
  std::string strEventTime_ = "0";
  bool blnIsOnline_;
  bool blnNewOptionVersion_;
};

}  // namespace velmoor
