// The window in which the user describes the machine. Every edit is checked on a copy; the machine
// changes at Apply or OK, with every consequence asked for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "mechanics/MachineEdit.h"
#include "platform/Grid.h"
#include "tools/GridWindow.h"

namespace velmoor {

class frmMechanicalSystem final : public GridWindow, private GridSource {
 public:
  explicit frmMechanicalSystem(clsHX7MechanicalSystem& machine);

  // Starts from the machine again, after an upload.
  void PostUpload() override;
  // What the window hands over at a commit.
  [[nodiscard]] MechanicalSystemEdit TakeForCommit() { return edit_->TakeForCommit(); }
  // The commit is done: what was edited is the machine now.
  void Committed();

 protected:
  void FormLoad() override;
  bool MayCommit() override;

 private:
  // ---- GridSource
  [[nodiscard]] int Rows() const override;
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  void Restart();
  void vsFG_ValidateEdit(GridEdit& edit);
  void vsFG_AfterEdit();
  void vsFG_Tip(int row, std::string& tip) const;
  void cmbSystem_Click();
  void cmbEncoder_Click();
  void cmdGetEncoder_Click();
  void AfterChoice(const MachineCheck& check);
  bool ShowPreview();
  void ShowEverything();
  void ShowFigures();
  void ShowSchematic();
  void SetEncoderComboList();
  [[nodiscard]] std::string NameAt(int row) const;

  clsHX7MechanicalSystem& machine_;
  std::unique_ptr<MachineEdit> edit_;
  std::vector<int> shown_;  // rows of the machine that the grid shows, in its order
};

}  // namespace velmoor
