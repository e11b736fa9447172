// The print dialog: which sections, on which printer or paper, printed, previewed or as PDF.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "layouts/frmPrint.h"
#include "reports/rptHX7Main.h"
#include "windows/Window.h"

namespace velmoor {

class clsHX7Project;

class frmPrint final : public WindowOf<layouts::frmPrint> {
 public:
  // A printer is installed.
  void SetCanPrint(bool canPrint) { blnCanPrint_ = canPrint; }
  // Must outlive the window.
  void SetProj(clsHX7Project& project) { clsProj_ = &project; }

  // With no section ticked each only says so.
  void PrintInformation();
  void PreviewInformation();

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  void Form_Load();
  void TickLatestChoice();
  void BindButtons();
  void chkPrint_Click(std::size_t Index);
  void TickAll(bool checked);
  void CountTicks();
  void chkPrintToFile_Click();
  void cmbPrintQuality_Click();
  void cmbPaper_Click();
  void cmdPrintSetup_Click();
  void cmdSavePDF_Click();
  void EnablePrintAndPreview();
  void ShowPrinter();
  [[nodiscard]] bool IsAnythingChecked() const;
  // Does `use` with the report of the chosen sections, made now. Errors are shown behind `prefix`.
  void UseReport(const std::string& prefix, const std::function<void(rptHX7Main& report)>& use);
  [[nodiscard]] Paper ChosenPaper();
  [[nodiscard]] CheckBox& chkPrint(std::size_t Index);

  bool blnPrintToFile_ = false;  // recorded and read by nobody, deliberately
  bool blnCanPrint_ = false;
  std::int16_t iPrintBoxesChecked_ = 0;
  PrintItems blnPrint_{};
  std::string strFullName_;
  clsHX7Project* clsProj_ = nullptr;
};

}  // namespace velmoor
