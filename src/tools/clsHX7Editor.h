// Every parameter of the catalogue, amplifier and option card alike, in one list.
#pragma once

#include <string>

#include "project/data/NibbleDefinitions.h"
#include "tools/ParameterToolBase.h"
#include "tools/frmEditor.h"

namespace velmoor {

class clsHX7Editor final : public ParameterToolBase, public EditorTool {
 public:
  explicit clsHX7Editor(ParameterStore& store)
      : ParameterToolBase(store, Tool::editor, "clsEditor") {
    AttachWindow(frm_);
  }

  // Returns when the window has closed.
  bool Show_Editor() { return ShowWindow("Parameter Editor", FormMode::modal); }
  void Unload_Editor() { UnloadWindow(); }

  [[nodiscard]] std::string Text(int row, Column column) const override;
  [[nodiscard]] ParameterRow Describe(int row) const override;
  [[nodiscard]] std::string GetParameterValue(const std::string& strPn) const override;

  bool Download(bool blnOverRide) { return DownloadRows(blnOverRide); }

  // The controller value of Pn801 just before it is sent, and a failed send of it.
  Event<const std::string&> EditorDownloadPn801;
  Event<> Pn801SendFailed;

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  [[nodiscard]] std::string ValueToSend(const std::string& strPn,
                                        const std::string& controllerValue) const override;
  void BeforeSend(const std::string& strPn, const std::string& value) override;
  void SendFailed(const std::string& strPn) override;

 private:
  [[nodiscard]] static std::string GetCurrentPn000Value(const std::string& strValue);

  frmEditor frm_{*this};
};

}  // namespace velmoor
