// The dialog of a step's five outputs.
#pragma once

#include <array>
#include <string>

#include "layouts/frmDialogPOut.h"
#include "windows/Dialog.h"

namespace velmoor {

class frmDialogPOut final : public WindowOf<layouts::frmDialogPOut, Dialog> {
 public:
  static constexpr std::size_t kOutputs = 5;

  // One state character for each output, output 0 first. A text of other form leaves all outputs as
  // they were.
  void SetPOutState(const std::string& state);
  [[nodiscard]] const std::string& POutState() const { return strPOutState_; }
  // "A", "N", ":" or "Z" for the choice 0 to 3.
  [[nodiscard]] static char GetStateChar(int iIndex);

 protected:
  void FormLoad() override;
  bool TakeResult() override;

 private:
  void SetSelectedPOut();
  void SetStateString();

  std::string strPOutState_ = ":::::";
};

}  // namespace velmoor
