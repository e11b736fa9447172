// Shows the inertia ratio that the amplifier has identified beside the one in use, and stores the
// identified one.
#pragma once

#include "online/OnlineWindow.h"

namespace velmoor {

class frmInertiaRatio final : public OnlineWindow {
 public:
  frmInertiaRatio() : OnlineWindow("frmInertiaRatio") {}

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  void tmrTimer_Timer();
  void Fail();
  void cmdSet_Click();
};

}  // namespace velmoor
