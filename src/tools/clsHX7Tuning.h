// The gain parameters, the machine rigidity and the notch filter.
#pragma once

#include "tools/ParameterToolBase.h"
#include "tools/frmTuning.h"

namespace velmoor {

class clsHX7Tuning final : public ParameterToolBase {
 public:
  explicit clsHX7Tuning(ParameterStore& store);

  // Returns when the window has closed.
  bool Show_Tuning() { return ShowWindow("Gain Tuning", FormMode::modal); }
  void Unload_Tuning() { UnloadWindow(); }
  [[nodiscard]] ParameterRow Describe(int row) const override;

  // A level that was chosen is offered for download like an edited row, but no file holds it.
  [[nodiscard]] bool IsDirty() const override {
    return acceptedRigidity_ || ParameterToolBase::IsDirty();
  }

  // Sends the marked rows, or all of them with `blnOverRide`; the rigidity goes last. The result
  // does not depend on the rigidity.
  bool Download(bool blnOverRide);
  bool DownloadWhole() override { return Download(true); }

  // The user chose another rigidity, which goes out with the next download.
  [[nodiscard]] bool ChangedRigidity() const { return blnChangedRigidity_; }
  void SetChangedRigidity(bool changed);
  // Level 1 to 10; 4 as long as none was read from an amplifier.
  [[nodiscard]] std::int16_t GetRigidity() const { return frm_.Rigidity(); }
  void SetRigidity(std::int16_t level) { frm_.SetRigidity(level); }
  // Sends the level when it was changed, and only then: the preset level must not overwrite the
  // amplifier's. Success without a change.
  [[nodiscard]] ResultCode PerformRigidityChange();

  Event<> RigidityChanged;  // the amplifier has taken another level

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  bool frm_PropertiesChangeAccepted() override;

 private:
  bool blnChangedRigidity_ = false;
  bool acceptedRigidity_ = false;  // by Apply or OK
  frmTuning frm_{*this};
  Connections windowConnections_;
};

}  // namespace velmoor
