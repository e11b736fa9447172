// The gain parameters, the machine rigidity and the notch filter.
#pragma once

#include <vector>

#include "tools/NibbleDefinitions.h"
#include "tools/ParameterToolBase.h"
#include "tools/frmTuning.h"

namespace velmoor {

class clsHX7Tuning final : public ParameterToolBase {
 public:
  clsHX7Tuning();

  // Returns when the window has closed.
  bool Show_Tuning() { return ShowWindow("Gain Tuning", FormMode::modal); }
  void Unload_Tuning() { UnloadWindow(); }
  [[nodiscard]] ParameterRow Describe(int row) const override;

  void SetNibbleTable(const std::string& table) { strNibbleTable_ = table; }

  // Sends the dirty rows, or all of them with `blnOverRide`; the rigidity goes last. The result
  // does not depend on the rigidity.
  bool Download(bool blnOverRide);
  bool DownloadWhole() override { return Download(true); }
  [[nodiscard]] bool HasMoreToSend() const override {
    return blnChangedRigidity_ || ParameterToolBase::HasMoreToSend();
  }

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
  void FillRow(int row, const ParameterDefinition& definition) override;
  void DefinitionsRead() override;
  [[nodiscard]] std::string UploadedValue(int row, const std::string& answer) const override;
  void AfterUpload() override;
  bool frm_PropertiesChangeAccepted() override;
  void frm_PropertiesChangeCanceled() override;

 private:
  std::string strNibbleTable_;
  std::vector<std::string> arIsNibble_;  // per row, from 0: the key of its digit definition
  std::vector<NibbleDefinition> nibbles_;
  bool blnChangedRigidity_ = false;
  frmTuning frm_{*this};
  Connections windowConnections_;
};

}  // namespace velmoor
