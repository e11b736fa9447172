// The homing routine: its method, speeds and distances, and the home offset, which is also kept
// beside the parameters among the project's settings.
#pragma once

#include <string>

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7Homing final : public ParameterToolBase, public HomingTool {
 public:
  explicit clsHX7Homing(ParameterStore& store)
      : ParameterToolBase(store, Tool::homing, "clsHoming") {
    AttachWindow(frm_);
  }

  bool Show_Homing() { return ShowWindow("Homing Routine Configuration", FormMode::modeless); }
  void Unload_Homing() { UnloadWindow(); }

  // The catalogue's unit is not shown here: only rows with a user unit have one.
  [[nodiscard]] std::string Text(int row, Column column) const override;

  // Sends the marked rows.
  bool Download() { return DownloadRows(false); }

  // The stored home offset at the project's resolution; empty where the project holds none.
  [[nodiscard]] std::string GetHomingOffset() const override;
  bool SetHomingOffset(const std::string& strValue) override;
  // Reads Pn81D alone from the amplifier into the project, marked as a change.
  bool UploadHomingOffset() override;

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override {
    const std::string& strPn = definition.user_constant;
    return strPn == "Pn81D" || (strPn >= "Pn823" && strPn <= "Pn828");
  }

 private:
  frmProperties frm_{*this, "Homing"};
};

}  // namespace velmoor
