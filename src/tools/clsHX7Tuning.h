// The gain parameters, the machine rigidity and the notch filter.
#pragma once

#include <vector>

#include "tools/NibbleDefinitions.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

class clsHX7Tuning final : public ParameterToolBase {
 public:
  clsHX7Tuning() : ParameterToolBase("clsTuning") {}

  void SetNibbleTable(const std::string& table) { strNibbleTable_ = table; }

  // Sends the dirty rows, or all of them with `blnOverRide`; the rigidity goes last. The result
  // does not depend on the rigidity.
  bool Download(bool blnOverRide);

  // The user chose another rigidity, which goes out with the next download.
  [[nodiscard]] bool ChangedRigidity() const { return blnChangedRigidity_; }
  void SetChangedRigidity(bool changed) { blnChangedRigidity_ = changed; }
  // Level 1 to 10; 4 as long as none was read from an amplifier.
  [[nodiscard]] std::int16_t GetRigidity() const { return iRigidity_; }
  void SetRigidity(std::int16_t level) { iRigidity_ = level; }
  // Sends the level when it was changed, and only then: the preset level must not overwrite the
  // amplifier's. Success without a change.
  [[nodiscard]] ResultCode PerformRigidityChange();

  Event<> RigidityChanged;

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void FillRow(int row, const ParameterDefinition& definition) override;
  void DefinitionsRead() override;
  [[nodiscard]] std::string UploadedValue(int row, const std::string& answer) const override;
  void AfterUpload() override;

 private:
  std::string strNibbleTable_;
  std::vector<std::string> arIsNibble_;  // per row, from 0: the key of its digit definition
  std::vector<NibbleDefinition> nibbles_;
  bool blnChangedRigidity_ = false;
  std::int16_t iRigidity_ = 4;
};

}  // namespace velmoor
