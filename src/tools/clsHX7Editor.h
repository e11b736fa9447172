// Every parameter of the catalogue, amplifier and option card alike, in one list; and the shared
// service that shows counts in user units.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/NibbleDefinitions.h"
#include "tools/ParameterToolBase.h"
#include "tools/frmEditor.h"

namespace velmoor {

// The ten parameters that are never sent give false.
[[nodiscard]] bool NotNonDownloadPns(std::string_view strPn);

class clsHX7Editor final : public ParameterToolBase, public EditorTool {
 public:
  clsHX7Editor() : ParameterToolBase("clsEditor") { AttachWindow(frm_); }

  // Returns when the window has closed.
  bool Show_Editor() { return ShowWindow("Parameter Editor", FormMode::modal); }
  void Unload_Editor() { UnloadWindow(); }

  void SetNibbleTable(const std::string& table) { strNibbleTable_ = table; }
  // The digit definition of a row (from 1), or null for a decimal row.
  [[nodiscard]] const NibbleDefinition* NibbleOf(int row) const;
  // Four characters, left to right as the digits of the value: "1" marks one that cannot be
  // changed.
  [[nodiscard]] const std::string& NibbleFixed(int row) const;
  [[nodiscard]] ParameterRow Describe(int row) const override;

  bool Download(bool blnOverRide) { return DownloadRows(blnOverRide); }
  bool ChangeResolution(std::int16_t digits);
  // Back to the catalogue's values in the present units; `length` is the travel of one turn.
  bool ResetDefaults(std::int16_t digits, float length);

  [[nodiscard]] std::string ConvertCountsToUnitsPublic(std::int32_t count,
                                                       UnitKind kind) const override;
  [[nodiscard]] std::string GetParameterValue(const std::string& strPn) const override;
  void MarkChanged() override { MarkDirty(); }

  // The controller value of Pn801 just before it is sent, and a failed send of it.
  Event<const std::string&> EditorDownloadPn801;
  Event<> Pn801SendFailed;

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void FillRow(int row, const ParameterDefinition& definition) override;
  void DefinitionsRead() override;
  std::optional<std::string> GetSelectedComboListIndex(int row) override;
  [[nodiscard]] std::string GetSelectedComboListItem(int row, std::int32_t selected) const override;
  [[nodiscard]] bool ScalesWithResolution(int row) const override;

  void MarkAllForDownload() override;
  [[nodiscard]] bool GoesOut(int row, const RowSet& record, bool blnOverRide) const override;
  [[nodiscard]] bool IsNeverSent(const std::string& strPn) const override {
    return !NotNonDownloadPns(strPn);
  }
  [[nodiscard]] std::string ValueToSend(const std::string& strPn,
                                        const std::string& controllerValue) const override;
  void BeforeSend(const std::string& strPn, const std::string& value) override;
  void SendFailed(const std::string& strPn) override;
  [[nodiscard]] std::string UploadedValue(int row, const std::string& answer) const override;
  void AfterUpload() override;
  // Its commits stay its own: the sisters read them from the file.
  [[nodiscard]] bool HandsRowsToEditor() const override { return false; }

 private:
  struct Extra {
    std::string nibbleKey;
    std::string fixedDigits;
  };
  [[nodiscard]] const Extra& ExtraOf(int row) const;
  [[nodiscard]] bool IsOptionCard(int row) const;
  [[nodiscard]] static std::string GetCurrentPn000Value(const std::string& strValue);
  void ReplaceNibbleLimits();
  void UpdateIndexerBlockMatrices();

  std::string strNibbleTable_;
  std::vector<Extra> extras_;  // per row, from 0
  std::vector<NibbleDefinition> nibbles_;
  frmEditor frm_{*this};
};

}  // namespace velmoor
