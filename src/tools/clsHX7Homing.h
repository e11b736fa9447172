// The homing routine. The home offset is also kept beside the parameters, among the project's
// miscellaneous settings.
#pragma once

#include <string>

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7Homing final : public ParameterToolBase, public HomingTool {
 public:
  clsHX7Homing() : ParameterToolBase("clsHoming") { AttachWindow(frm_); }

  bool Show_Homing() { return ShowWindow("Homing Routine Configuration", FormMode::modeless); }
  void Unload_Homing() { UnloadWindow(); }

  // Sends the dirty rows.
  bool Download() { return DownloadRows(false); }

  bool ChangeResolution(std::int16_t digits);
  bool ResetDefaults(std::int16_t digits);

  // The stored home offset at the machine's resolution; empty where the project holds none.
  [[nodiscard]] std::string GetHomingOffset() const override;
  bool SetHomingOffset(const std::string& strValue) override;
  // Reads Pn81D alone from the amplifier and marks it changed.
  bool UploadHomingOffset() override;
  // Stores the rows with a user unit once more and gives them to the editor, after a reset of the
  // editor's own copies.
  void HandRowsToEditor();
  // Nothing in the system calls it; it is here for symmetry with the mechanical system.
  void MoveToFrontOfBlockMatrix(const std::string& strPn) { arBlockMatrix_.MoveToFront(strPn); }

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void FillRow(int row, const ParameterDefinition& definition) override;
  void AfterUpload() override;

 private:
  frmProperties frm_{*this, "Homing"};
};

}  // namespace velmoor
