// The splash of the start, and the window behind it.
#pragma once

#include <memory>

#include "layouts/frmSplash.h"
#include "windows/Window.h"

namespace velmoor {

// The product's name and version while the session is built.
class frmSplash final : public WindowOf<layouts::frmSplash> {
 protected:
  void FormLoad() override;
};

class clsHX7Splash {
 public:
  // Shows the splash and waits, while events run, for `intPauseTimeInSec` seconds.
  void Show(int intPauseTimeInSec);
  void Unload_Splash();

 private:
  std::unique_ptr<frmSplash> frm_;
};

}  // namespace velmoor
