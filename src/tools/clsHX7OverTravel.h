// The travel limits of the axis, and how the axis counts. A change of the machine between linear
// and rotary rewrites these rows.
#pragma once

#include <string>

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7OverTravel final : public ParameterToolBase {
 public:
  explicit clsHX7OverTravel(ParameterStore& store)
      : ParameterToolBase(store, Tool::overTravel, "clsOverTravel") {
    AttachWindow(frm_);
    // The sister shows the end switches at once, before any Apply; a Cancel does not call them
    // back.
    overTravelChanged_ = frm_.PropertiesOverTravelChanged.Connect(
        [](const std::string& strPn, const std::string& text) {
          OpenedProject().FlexibleIOSister().TakeEdit(strPn, text);
        });
  }

  bool Show_OverTravel() {
    if (!ShowWindow("Over Travel Configuration", FormMode::modeless)) return false;
    TakeSharedEdits(OpenedProject().FlexibleIOSister());
    return true;
  }
  void Unload_OverTravel() { UnloadWindow(); }

  // Sends the marked rows.
  bool Download() { return DownloadRows(false); }

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override {
    const std::string& strPn = definition.user_constant;
    return strPn == "Pn80C" || strPn == "Pn80D" || (strPn >= "Pn819" && strPn <= "Pn81C");
  }

 private:
  frmProperties frm_{*this, "OverTravel"};
  Connection overTravelChanged_;
};

}  // namespace velmoor
