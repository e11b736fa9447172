// The window of the gain parameters, with the rigidity and the notch filter beside the grid.
#pragma once

#include <cstdint>
#include <string>

#include "layouts/frmTuning.h"
#include "tools/DigitPanel.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {

class frmTuning final : public WindowOf<layouts::frmTuning, ParameterGridWindow> {
 public:
  explicit frmTuning(ParameterToolBase& tool) : WindowOf(tool, ParameterWindow::tuning) {}

  // The level from 1 to 10 that the list shows; 4 as long as none was read or chosen.
  [[nodiscard]] std::int16_t Rigidity() const { return iRigidity_; }
  void SetRigidity(std::int16_t level) { iRigidity_ = level; }
  // The user chose another level, which goes out with the next download.
  [[nodiscard]] bool ChangedRigidity() const { return blnChangedRigidity_; }
  void SetChangedRigidity(bool changed) { blnChangedRigidity_ = changed; }

  void RefreshGrid() override;

  Event<> RigidityChanged;  // the user chose a level, or took it back

 protected:
  void FormLoad() override;
  void CurrentRowChanged(int row) override;
  bool MayCommit() override;
  void cmdDownload_Click() override;
  [[nodiscard]] bool HoldsMore() const override;

 private:
  void HideRows();
  void ShowNotchFilter();
  void chkNotchFilter_Click();
  bool CheckNotchFilterFrequency();
  void PutSetting(const char* strPn, const std::string& value);
  void cmbRigidity_Click();
  void UpdateRigidity();
  void QueryToResetChangedRigidity();
  void TakeBackRigidity();

  DigitPanel digits_;
  std::int16_t iRigidity_ = 4;
  bool blnChangedRigidity_ = false;
  bool rigidityAsked_ = false;       // the present choice was confirmed
  std::int16_t rigidityBefore_ = 4;  // at the last commit, or as the window opened
  bool changedBefore_ = false;
};

}  // namespace velmoor
