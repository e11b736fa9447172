// The splash of the start, and the window behind it.
#pragma once

#include <memory>

#include "platform/Form.h"

namespace velmoor {

// The product's name and version while the session is built.
class frmSplash {
 public:
  void Show();

 private:
  void Form_Load();
  std::unique_ptr<Form> form_;
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
