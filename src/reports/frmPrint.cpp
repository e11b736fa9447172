#include "reports/frmPrint.h"

#include <algorithm>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Printing.h"
#include "platform/Settings.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/clsHX7Project.h"
#include "reports/PdfFile.h"

namespace velmoor {
namespace {

constexpr const char* kPaperSetting = "PrintPaper";
constexpr const char* kSectionsSetting = "PrintSections";  // a bit each
constexpr const char* kPapers[] = {"A4", "Letter"};        // in the order of Paper

}  // namespace

CheckBox& frmPrint::chkPrint(std::size_t Index) {
  return ui().chkPrint_[Index];
}

void frmPrint::FormLoad() {
  // Errors here bear no number; 0 stands in its place.
  Trapped("frmPrint.Form_Load: [0] ", [this] {
    Form_Load();
    return true;
  });
}

void frmPrint::Form_Load() {
  strFullName_ = clsProj_->FileName();
  ui().lblProject.SetText(strFullName_);
  for (std::size_t i = 0; i < kReportItems; ++i) {
    chkPrint(i).SetCaption(std::string(ReportItems()[i].label));
    connections_ += chkPrint(i).Click.Connect([this, i] { chkPrint_Click(i); });
  }
  BindButtons();
  ComboBox& papers = ui().cmbPaper;
  papers.SetItems({kPapers[0], kPapers[1]});
  papers.SetListIndex(world().settings->ReadText(kPaperSetting, kPapers[0]) == kPapers[1] ? 1 : 0);
  connections_ += papers.Click.Connect([this] { cmbPaper_Click(); });
  ComboBox& qualities = ui().cmbPrintQuality;
  qualities.SetItems({"Draft", "Low", "Medium", "High"});
  connections_ += qualities.Click.Connect([this] { cmbPrintQuality_Click(); });
  ShowPrinter();
  ui().cmdPrint.SetEnabled(blnCanPrint_);
  blnPrintToFile_ = false;
  TickLatestChoice();
}

void frmPrint::TickLatestChoice() {
  const auto sections =
      static_cast<std::uint32_t>(world().settings->ReadNumber(kSectionsSetting, 0));
  for (std::size_t i = 0; i < kReportItems; ++i) {
    blnPrint_[i] = ((sections >> i) & 1U) != 0;
    chkPrint(i).SetValue(blnPrint_[i]);
  }
  CountTicks();
}

void frmPrint::FormUnload() {
  std::uint32_t sections = 0;
  for (std::size_t i = 0; i < kReportItems; ++i) {
    if (blnPrint_[i]) sections |= 1U << i;
  }
  Trapped("frmPrint.FormUnload: ", [sections] {
    world().settings->Write(kSectionsSetting, NumberText(sections));
    return true;
  });
}

void frmPrint::BindButtons() {
  const auto onClick = [this](Button& button, void (frmPrint::*work)()) {
    connections_ += button.Click.Connect([this, work] { (this->*work)(); });
  };
  onClick(ui().cmdPrint, &frmPrint::PrintInformation);
  onClick(ui().cmdPreview, &frmPrint::PreviewInformation);
  onClick(ui().cmdSavePDF, &frmPrint::cmdSavePDF_Click);
  onClick(ui().cmdPrintSetup, &frmPrint::cmdPrintSetup_Click);
  connections_ += ui().cmdAll.Click.Connect([this] { TickAll(true); });
  connections_ += ui().cmdNone.Click.Connect([this] { TickAll(false); });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
  connections_ += ui().chkPrintToFile.Click.Connect([this] { chkPrintToFile_Click(); });
}

void frmPrint::ShowPrinter() {
  ui().cmbPrintQuality.SetEnabled(blnCanPrint_);
  ui().lblQualityLabel.SetEnabled(blnCanPrint_);
  ui().lblPrinterName.SetText(blnCanPrint_ ? world().printing->PrinterName() : "None");
  if (!blnCanPrint_) return;
  ui().cmbPrintQuality.SetListIndex(static_cast<int>(world().printing->Quality()));
}

// ---- what is ticked

void frmPrint::chkPrint_Click(std::size_t Index) {
  blnPrint_.at(Index) = chkPrint(Index).Value();
  CountTicks();
}

void frmPrint::TickAll(bool checked) {
  for (std::size_t i = 0; i < kReportItems; ++i) chkPrint(i).SetValue(checked);
  blnPrint_.fill(checked);
  CountTicks();
}

void frmPrint::CountTicks() {
  iPrintBoxesChecked_ = static_cast<std::int16_t>(std::ranges::count(blnPrint_, true));
  EnablePrintAndPreview();
}

// Whether there is a printer plays no part: a tick enables Print without one. Intended.
void frmPrint::EnablePrintAndPreview() {
  for (Button* const button : {&ui().cmdPrint, &ui().cmdPreview, &ui().cmdSavePDF}) {
    button->SetEnabled(iPrintBoxesChecked_ > 0);
  }
}

void frmPrint::chkPrintToFile_Click() {
  blnPrintToFile_ = ui().chkPrintToFile.Value();
}

// ---- the printer and its paper

void frmPrint::cmbPrintQuality_Click() {
  Trapped("frmPrint.cmbPrintQuality_Click: ", [this] {
    const int choice = ui().cmbPrintQuality.ListIndex();
    world().printing->SetQuality(static_cast<PrintQuality>(choice));
    return true;
  });
}

void frmPrint::cmbPaper_Click() {
  Trapped("frmPrint.cmbPaper_Click: ", [this] {
    world().settings->Write(kPaperSetting, ui().cmbPaper.Text());
    return true;
  });
}

Paper frmPrint::ChosenPaper() {
  return static_cast<Paper>(ui().cmbPaper.ListIndex());
}

void frmPrint::cmdPrintSetup_Click() {
  Trapped("frmPrint.cmdPrintSetup_Click: ", [this] {
    if (world().printing->SetUp()) ShowPrinter();
    return true;
  });
}

// ---- the document

bool frmPrint::IsAnythingChecked() const {
  if (iPrintBoxesChecked_ > 0) return true;
  ShowExclamation("No print category checked!\rPlease select print option(s).");
  return false;
}

void frmPrint::UseReport(const std::string& prefix,
                         const std::function<void(rptHX7Main& report)>& use) {
  Trapped(prefix, [&] {
    if (!IsAnythingChecked()) return false;
    rptHX7Main report;
    report.SetCanPrint(blnCanPrint_);
    report.SetProject(*clsProj_);
    report.SetPrintCount(iPrintBoxesChecked_);
    report.SetPrintReportItems(blnPrint_);
    report.Run();
    use(report);
    return true;
  });
}

void frmPrint::PrintInformation() {
  UseReport("frmPrint.PrintInformation: ", [this](rptHX7Main& report) {
    world().printing->Print(report.Document(), ChosenPaper());
  });
}

// Its errors bear the name of the printing's: intended.
void frmPrint::PreviewInformation() {
  UseReport("frmPrint.PrintInformation: ",
            [this](rptHX7Main& report) { report.ShowInViewer(ChosenPaper()); });
}

void frmPrint::cmdSavePDF_Click() {
  UseReport("frmPrint.cmdSavePDF_Click: ",
            [this](rptHX7Main& report) { SaveAsPdf(*clsProj_, report.Document(), ChosenPaper()); });
}

}  // namespace velmoor
