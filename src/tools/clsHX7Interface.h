// How the option card talks on its serial line.
#pragma once

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7Interface final : public ParameterToolBase {
 public:
  explicit clsHX7Interface(ParameterStore& store)
      : ParameterToolBase(store, Tool::interface, "clsInterface") {
    AttachWindow(frm_);
  }

  bool Show_Interface() { return ShowWindow("Interface Configuration", FormMode::modeless); }

  // Sends the marked rows.
  bool Download() { return DownloadRows(false); }

  // The controller value of Pn801 just before it is sent, and a failed send of it.
  Event<const std::string&> InterfaceDownloadPn801;
  Event<> Pn801SendFailed;

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override {
    return definition.user_constant >= "Pn800" && definition.user_constant <= "Pn802";
  }
  void BeforeSend(const std::string& strPn, const std::string& value) override {
    if (strPn == "Pn801") InterfaceDownloadPn801.Raise(value);
  }
  void SendFailed(const std::string& strPn) override {
    if (strPn == "Pn801") Pn801SendFailed.Raise();
  }

 private:
  frmProperties frm_{*this, "Interface"};
};

}  // namespace velmoor
