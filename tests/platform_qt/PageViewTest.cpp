// The view of a document's pages, which needs no printer.
#include <gtest/gtest.h>
#include <QApplication>
#include <QGraphicsView>
#include <QListWidget>
#include <QScrollBar>

#include "QtTestUser.h"
#include "layouts/frmPreview.h"
#include "platform/Form.h"
#include "platform/Printing.h"
#include "platform/World.h"

namespace velmoor::qt {
namespace {

PrintDocument SixPages() {
  PrintDocument document;
  document.title = "line1";
  for (int i = 0; i < 6; ++i) {
    PrintSection section;
    section.newPage = i > 0;
    section.headings = {"Row ID"};
    section.rows = {{{"0", true}}};
    document.sections.push_back(section);
  }
  return document;
}

TEST(PageViewTest, ShowsEachPageAndTellsWhereTheUserScrolledTo) {
  const auto form = world().forms->Load(layouts::frmPreview::kLayout);
  PageView& view = layouts::frmPreview(*form).pvwPages;
  form->Show(FormMode::blocking);
  view.Show(SixPages(), Paper::a4);
  view.SetZoom(100);
  EXPECT_EQ(view.Pages(), 6);
  EXPECT_EQ(view.Page(), 1);
  EXPECT_EQ(view.Zoom(), 100);
  int moves = 0;
  const Connection held = view.Moved.Connect([&moves] { ++moves; });
  view.GoTo(4);
  EXPECT_EQ(view.Page(), 4);
  auto* const area = Widget<QWidget>("pvwPages").findChild<QGraphicsView*>();
  ASSERT_NE(area, nullptr);
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
  EXPECT_EQ(view.Page(), 6);
  EXPECT_GT(moves, 0);
  // The small pictures follow, and lead.
  auto* const pictures = Widget<QWidget>("pvwPages").findChild<QListWidget*>();
  ASSERT_NE(pictures, nullptr);
  EXPECT_EQ(pictures->count(), 6);
  EXPECT_EQ(pictures->currentRow(), 5);
  pictures->setCurrentRow(2);
  EXPECT_EQ(view.Page(), 3);
  for (int i = 0; i < 6; ++i) QApplication::processEvents();
  EXPECT_FALSE(pictures->item(5)->icon().isNull());
  view.FitPage();
  EXPECT_LT(view.Zoom(), 100);
}

TEST(PageViewTest, PrintingWithoutAPrinterTellsWhatCanBeDone) {
  Printing& printing = *world().printing;
  if (!printing.Printers().empty()) GTEST_SKIP() << "A printer is installed";
  EXPECT_EQ(printing.PrinterName(), "");
  try {
    printing.Print(SixPages(), Paper::a4);
    FAIL() << "Printed without a printer";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "No printer is installed.  The document can be saved as PDF.");
  }
}

}  // namespace
}  // namespace velmoor::qt
