// The project's handle on the inertia ratio window.
#pragma once

#include "online/frmInertiaRatio.h"

namespace velmoor {

class clsHX7InertiaRatio {
 public:
  // Returns when the window has closed.
  bool Show_InertiaRatio() { return frm_.Show(FormMode::modal); }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }

 private:
  frmInertiaRatio frm_;
  bool blnNeedsSaving_ = false;
};

}  // namespace velmoor
