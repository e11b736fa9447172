// The window in which the user describes the machine. Every edit is checked on a copy; the machine
// changes at Apply or OK, with every consequence asked for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "layouts/frmMechanicalSystem.h"
#include "mechanics/MachineEdit.h"
#include "mechanics/MachineResults.h"
#include "platform/Grid.h"
#include "windows/GridWindow.h"

namespace velmoor {

class frmMechanicalSystem final : public WindowOf<layouts::frmMechanicalSystem, GridWindow>,
                                  private GridSource {
 public:
  // The store must outlive the window.
  explicit frmMechanicalSystem(const ParameterStore& store);

  // What the window asks to be committed.
  [[nodiscard]] const MachineEdit& Edit() const { return *edit_; }
  // The commit is done: what was edited is the machine now.
  void Committed();
  // The project's machine or its values changed.
  void StoreChanged();

 protected:
  void FormLoad() override;
  bool MayCommit() override;
  [[nodiscard]] bool MayApply() const override;
  [[nodiscard]] const GridSource& Cells() const override { return *this; }

 private:
  // ---- GridSource
  [[nodiscard]] int Rows() const override;
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  void Restart();
  void vsFG_ValidateEdit(GridEdit& edit);
  // True: the edit stands.
  bool TakeEdit(const std::string& name, const std::string& text);
  void ShowEdit();
  void vsFG_Tip(int row, std::string& tip) const;
  void cmbSystem_Click();
  void cmbEncoder_Click();
  void cmdGetEncoder_Click();
  void AfterChoice(const MachineCheck& check);
  void ShowEverything();
  void ShowFigures();
  void ShowSchematic();
  void SetEncoderComboList();
  [[nodiscard]] std::string NameAt(int row) const;

  const ParameterStore& store_;
  std::unique_ptr<MachineEdit> edit_;
  MachineResults results_;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);  // for what is posted
  std::vector<int> shown_;  // rows of the machine that the grid shows, in its order
};

}  // namespace velmoor
