// File, Print: the dialog, what it offers with and without a printer, and the viewer.

#include "AppSession.h"
#include "reports/frmPreview.h"
#include "reports/rptHX7Main.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;

class PrintTest : public AppSession {
 protected:
  PrintTest() {
    path = data.MakeProject("line1.spj");
    EXPECT_TRUE(Start(path));
  }
  // Opens the dialog and acts in it; Cancel ends it.
  void InDialog(const std::function<void(HeadlessForm&)>& work) {
    data.forms.OnShow("frmPrint", [work](HeadlessForm& form) {
      work(form);
      form.Press("cmdCancel");
    });
    Main().Choose("mnuFilePrint");
  }
  void InPreview(const std::function<void(HeadlessForm&)>& work) {
    data.forms.OnShow("frmPreview", [work](HeadlessForm& form) {
      work(form);
      form.Press("cmdExit");
    });
    InDialog([](HeadlessForm& form) {
      form.Press("cmdAll");
      form.Press("cmdPreview");
    });
  }
  // "110": Print, Preview and Save as PDF as they are enabled.
  static std::string Offered(HeadlessForm& form) {
    std::string offered;
    for (const char* const name : {"cmdPrint", "cmdPreview", "cmdSavePDF"}) {
      offered += form.button(name).Enabled() ? '1' : '0';
    }
    return offered;
  }
  static Texts Titles(const PrintDocument& document) {
    Texts titles;
    for (const PrintSection& section : document.sections) titles.push_back(section.title);
    return titles;
  }
};

TEST_F(PrintTest, WithoutAPrinterTheDialogOpensAndATickEnablesPrintAllTheSame) {
  InDialog([](HeadlessForm& form) {
    EXPECT_EQ(form.label("lblPrinterName").Text(), "None");
    EXPECT_FALSE(form.comboBox("cmbPrintQuality").Enabled());
    EXPECT_FALSE(form.label("lblQualityLabel").Enabled());
    EXPECT_EQ(form.comboBox("cmbPrintQuality").Items(), (Texts{"Draft", "Low", "Medium", "High"}));
    EXPECT_EQ(Offered(form), "000");
    form.Check("chkPrint_4", true);
    form.Check("chkPrint_10", true);
    EXPECT_EQ(Offered(form), "111");
    form.Check("chkPrint_4", false);
    EXPECT_EQ(Offered(form), "111");
    form.Press("cmdPrint");
    form.Check("chkPrint_10", false);
    EXPECT_EQ(Offered(form), "000");
  });
  EXPECT_EQ(Boxes(), (Texts{"frmPrint.PrintInformation: No printer is installed."}));
}

TEST_F(PrintTest, ThePrinterInUseIsShownWithItsQuality) {
  data.printing.printers = {"Laser", "Plotter"};
  InDialog([this](HeadlessForm& form) {
    EXPECT_EQ(form.label("lblPrinterName").Text(), "Laser");
    EXPECT_EQ(form.comboBox("cmbPrintQuality").Text(), "Medium");
    EXPECT_EQ(Offered(form), "000");
    form.Select("cmbPrintQuality", "Draft");
    EXPECT_EQ(data.printing.quality, PrintQuality::draft);
    form.Press("cmdPrintSetup");
    EXPECT_EQ(form.label("lblPrinterName").Text(), "Plotter");
  });
}

TEST_F(PrintTest, WhatIsTickedIsPrintedInTheOrderOfTheBoxes) {
  data.printing.printers = {"Laser"};
  InDialog([](HeadlessForm& form) {
    EXPECT_EQ(form.checkBox("chkPrint_5").Caption(), "Flexible I/O Parameters");
    // Has no effect, deliberately.
    form.Check("chkPrintToFile", true);
    form.Check("chkPrint_9", true);
    form.Check("chkPrint_0", true);
    form.Press("cmdPrint");
  });
  ASSERT_EQ(data.printing.printed.size(), 1U);
  EXPECT_EQ(Titles(data.printing.printed[0]), (Texts{"Communications Settings", "Jog Table"}));
  EXPECT_FALSE(data.printing.printed[0].sections[0].newPage);
  EXPECT_TRUE(data.printing.printed[0].sections[1].newPage);
  // The next time the choice is there already.
  InDialog([](HeadlessForm& form) {
    EXPECT_EQ(Offered(form), "111");
    EXPECT_TRUE(form.checkBox("chkPrint_9").Value());
    EXPECT_FALSE(form.checkBox("chkPrint_1").Value());
    form.Press("cmdPrint");
  });
  ASSERT_EQ(data.printing.printed.size(), 2U);
  EXPECT_EQ(Titles(data.printing.printed[1]), (Texts{"Communications Settings", "Jog Table"}));
}

TEST_F(PrintTest, ThePreviewPagesAndZooms) {
  InPreview([](HeadlessForm& form) {
    EXPECT_EQ(form.pageView("pvwPages").Pages(), 11);
    EXPECT_EQ(form.label("lblPages").Text(), "of 11");
    EXPECT_FALSE(form.button("cmdPrevious").Enabled());
    form.Press("cmdNext");
    EXPECT_EQ(form.textBox("txtPage").Text(), "2");
    form.Press("cmdLast");
    EXPECT_FALSE(form.button("cmdNext").Enabled());
    form.Type("txtPage", "7");
    form.Leave("txtPage");
    EXPECT_EQ(form.pageView("pvwPages").Page(), 7);
    for (const char* const wrong : {"0", "12", "-1", "x", "", "99999999999999999999"}) {
      form.Type("txtPage", wrong);
      form.Leave("txtPage");
      EXPECT_EQ(form.textBox("txtPage").Text(), "7") << wrong;
    }
    form.pageView("pvwPages").ScrollTo(3);
    EXPECT_EQ(form.textBox("txtPage").Text(), "3");

    EXPECT_EQ(form.comboBox("cmbZoom").Text(), "Page width");
    EXPECT_EQ(form.pageView("pvwPages").Zoom(), 110);
    form.Press("cmdZoomIn");
    EXPECT_EQ(form.comboBox("cmbZoom").Text(), "125 %");
    form.Press("cmdZoomOut");
    form.Press("cmdZoomOut");
    form.Press("cmdZoomOut");
    EXPECT_EQ(form.pageView("pvwPages").Zoom(), 50);
    form.Select("cmbZoom", "Whole page");
    EXPECT_EQ(form.pageView("pvwPages").Zoom(), 60);
    form.Select("cmbZoom", "400 %");
    form.Press("cmdZoomIn");
    EXPECT_EQ(form.pageView("pvwPages").Zoom(), 400);
  });
}

TEST_F(PrintTest, ThePreviewPrintsWhereThereIsAPrinter) {
  InPreview([](HeadlessForm& form) { EXPECT_FALSE(form.button("cmdPrint").Enabled()); });
  data.printing.printers = {"Laser"};
  InPreview([](HeadlessForm& form) { form.Press("cmdPrint"); });
  ASSERT_EQ(data.printing.printed.size(), 1U);
  EXPECT_EQ(data.printing.printed[0].sections.size(), 11U);
}

TEST_F(PrintTest, APdfNeedsNoPrinterAndNeverReplacesTheProject) {
  const std::string bytes = data.files.ReadAll(path);
  const std::string pdf = data.folder.At("a.pdf");
  data.dialogs.answers = {pdf, path, data.folder.At("nowhere/a.pdf"), std::nullopt};
  InDialog([](HeadlessForm& form) {
    form.Select("cmbPaper", "Letter");
    form.Check("chkPrint_8", true);
    for (int i = 0; i < 4; ++i) form.Press("cmdSavePDF");
  });
  EXPECT_EQ(data.files.ReadAll(pdf), "%PDF of line1");
  EXPECT_EQ(data.pdf.papers.front(), Paper::letter);
  EXPECT_EQ(data.files.ReadAll(path), bytes);
  const Texts boxes = Boxes();
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_EQ(boxes[0], "The report would overwrite the project!");
  EXPECT_EQ(boxes[1].substr(0, 13), "Save as PDF: ");
  // The paper is remembered.
  InDialog([](HeadlessForm& form) { EXPECT_EQ(form.comboBox("cmbPaper").Text(), "Letter"); });
}

TEST_F(PrintTest, PageSetupDoesNothing) {
  Main().Choose("mnuFilePageSetup");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_TRUE(data.forms.Shown().empty());
}

}  // namespace
}  // namespace velmoor
