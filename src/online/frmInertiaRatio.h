// Shows the inertia ratio that the amplifier has identified beside the one in use, and stores the
// identified one.
#pragma once

#include "layouts/frmInertiaRatio.h"
#include "windows/Window.h"

namespace velmoor {

class frmInertiaRatio final : public WindowOf<layouts::frmInertiaRatio> {
 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  void tmrTimer_Timer();
  void Fail();
  void cmdSet_Click();
  std::unique_ptr<Timer> timer_;  // while the window is open
};

}  // namespace velmoor
