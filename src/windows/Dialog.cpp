#include "windows/Dialog.h"

namespace velmoor {

bool Dialog::Ask() {
  accepted_ = false;
  (void)Show(FormMode::modal);
  return accepted_;
}

void Dialog::Accept() {
  if (!TakeResult()) return;
  accepted_ = true;
  Unload();
}

}  // namespace velmoor
