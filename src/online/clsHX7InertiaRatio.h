// The project's handle on the inertia ratio window.
#pragma once

namespace velmoor {

class clsHX7InertiaRatio {
 public:
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }

 private:
  bool blnNeedsSaving_ = false;
};

}  // namespace velmoor
