// Sets the home offset in the hardware, and clears an absolute encoder.
#pragma once

#include <cstdint>
#include <string>

#include "layouts/frmHomePosition.h"
#include "session/Project.h"
#include "windows/Window.h"

namespace velmoor {

class frmHomePosition final : public WindowOf<layouts::frmHomePosition> {
 public:
  // The tool outlives the window.
  explicit frmHomePosition(HomingTool& homing) : homing_(homing) {}

  // The offset differs from the one with which the window opened.
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }

  Event<const std::string&> Status;  // "Home Offset Position Updating"

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  [[nodiscard]] bool IsAbsoluteEncoderInUse();
  void txtOffset_Validate(bool& Cancel);
  // Counts from -99999999 to 99999999, both included.
  [[nodiscard]] bool IsWithinAllowableRange(const std::string& text) const;
  [[nodiscard]] double CountsOf(const std::string& text) const;
  void Restore(bool& Cancel);
  void cmdUpdate_Click();
  bool UpdateOffset();
  void cmdAbsReset_Click();

  HomingTool& homing_;
  bool blnNeedsSaving_ = false;
  std::string strStartValue_, strOldValue_;
  std::string strUnits_;
  std::int16_t iResolution_ = 0;
  std::int32_t lngOffset_ = 0;  // counts
  std::string strEncoderType_;
  double dblCFDistance_ = 1;  // counts for one distance unit
};

}  // namespace velmoor
