// Maps the input and output signals of the option card to functions.
#pragma once

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7FlexibleIO final : public ParameterToolBase {
 public:
  explicit clsHX7FlexibleIO(ParameterStore& store)
      : ParameterToolBase(store, Tool::flexibleIO, "clsFlexibleIO") {
    AttachWindow(frm_);
    // The sister shows the end switches at once, before any Apply; a Cancel does not call them
    // back.
    overTravelChanged_ = frm_.PropertiesOverTravelChanged.Connect(
        [](const std::string& strPn, const std::string& text) {
          OpenedProject().OverTravelSister().TakeEdit(strPn, text);
        });
  }

  bool Show_FlexibleIO() {
    if (!ShowWindow("Flexible I/O Configuration", FormMode::modeless)) return false;
    TakeSharedEdits(OpenedProject().OverTravelSister());
    return true;
  }
  void Unload_FlexibleIO() { UnloadWindow(); }

  // Sends the marked rows.
  bool Download() { return DownloadRows(false); }

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override {
    const std::string& strPn = definition.user_constant;
    return (strPn >= "Pn803" && strPn <= "Pn818") || NeedsNewOptionVersion(strPn);
  }

 private:
  frmProperties frm_{*this, "FlexibleIO"};
  Connection overTravelChanged_;
};

}  // namespace velmoor
