// What the windows of the tables tell beside their cells: words for codes, marks, the strip of the
// zones; and their keys, menus and transfers.
#include <gmock/gmock.h>

#include <algorithm>

#include "TableSession.h"
#include "tables/ZoneStrip.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;
using headless::HeadlessGrid;
using ::testing::ElementsAre;

enum GridColumn { kNumber, kLabel, kPosition, kSpeed, kRdst, kRspd, kPOut, kEvent, kLoop, kNext };

class TableWindows : public TableSession {
 protected:
  clsHX7Jog& Jog() { return Project().Jog(); }
};

TEST_F(TableWindows, CodesAndHeadingsAreToldInWords) {
  Programme({"a,A+12.5,50,5,2.5,::ANZ,SEL0T250,3,b", "b,I-10,80,-,1,:::::,IT0,1,c",
             "c,+INFINITE,80,-,1,:::::,T40,1,END"});
  HeadlessGrid& grid = OpenIndex().grid("vsFG");
  const std::string f9 = "Press [F9] key to invoke dialog box.";
  const struct {
    int row, column;
    std::string tip;
  } kTips[] = {
      {1, kPosition, f9 + "\nMoves to the position +12.500 mm"},
      {2, kPosition, f9 + "\nMoves by -10.000 mm from where the axis stands"},
      {3, kPosition, f9 + "\nRuns forward without end, at the speed of this step"},
      {4, kPosition, f9},
      {1, kPOut, f9 + "\nPOUT0 as it was, POUT1 as it was, POUT2 on, POUT3 off, POUT4 zone signal"},
      {1, kEvent, f9 + "\nUntil input SEL0 is set, then 250 ms"},
      {2, kEvent, f9 + "\nUntil the axis is in position"},
      {3, kEvent, f9 + "\nAfter 40 ms"},
      {2, kRdst, "No registration move"},
      {3, kNext, "The programme ends here"},
      {1, kSpeed, ""},
      {0, kRdst,
       "Registration distance: from the place at which the registration input comes; - "
       "for none"},
  };
  for (const auto& entry : kTips) {
    EXPECT_EQ(grid.TipAt(entry.row, entry.column), entry.tip) << entry.row << ", " << entry.column;
  }
  for (int column = 1; column <= kNext; ++column) EXPECT_NE(grid.TipAt(0, column), "") << column;
}

TEST_F(TableWindows, OneMarkIsTheRowsAndAStrongerOneTheChangedCells) {
  Programme({"a,A+12.5,50,-,1,:::::,IT0,1,END"});
  HeadlessForm& form = OpenIndex();
  const auto mark = [&](int row, int column) {
    return form.grid("vsFG").Source()->Traits(row, column).mark;
  };
  EXPECT_EQ(mark(1, kNumber), CellMark::stripe) << "it was typed in and not downloaded";
  EXPECT_EQ(mark(2, kNumber), CellMark::none);
  ASSERT_TRUE(form.EditCell("vsFG", 1, kSpeed, "60"));
  EXPECT_EQ(mark(1, kSpeed), CellMark::corner);
  EXPECT_EQ(mark(1, kPosition), CellMark::none);
  form.Press("cmdApply");
  EXPECT_EQ(mark(1, kSpeed), CellMark::none);
  EXPECT_EQ(mark(1, kNumber), CellMark::stripe);
}

TEST_F(TableWindows, ANumberKeepsTheKindOfMoveAndTheRefusalGivesAnExample) {
  Programme({"a,A+12.5,50,-,1,:::::,IT0,1,b", "b,I-10,80,-,1,:::::,IT0,1,c",
             "c,STOP,80,-,1,:::::,IT0,1,END"});
  HeadlessForm& form = OpenIndex();
  const auto type = [&](int row, const char* text) {
    return form.EditCell("vsFG", row, kPosition, text) ? Index().Text(row, kPosition - 1) : "";
  };
  EXPECT_EQ(type(1, "7"), "A+7.000");
  EXPECT_EQ(type(1, "-7.5"), "A-7.500");
  EXPECT_EQ(type(2, "7"), "I+7.000");
  EXPECT_EQ(type(2, "A3"), "A+3.000");
  EXPECT_EQ(type(2, "-"), "-");
  for (const int row : {2, 3, 4}) {
    EXPECT_EQ(type(row, "7"), "") << "the cell has no kind to keep";
    EXPECT_THAT(Boxes(),
                ElementsAre(::testing::HasSubstr("\rFor example: A+100.000 or I-100.000.")));
  }
}

TEST_F(TableWindows, EnterGoesDownTabRightAndShiftBack) {
  Programme({"a,A+12.5,50,-,1,:::::,IT0,1,END"});
  HeadlessForm& form = OpenIndex();
  HeadlessGrid& grid = form.grid("vsFG");
  const auto press = [&](int code, bool shift) {
    form.PressKey("vsFG", {.code = code, .shift = shift});
    return std::pair(grid.Row(), grid.Column());
  };
  ASSERT_TRUE(grid.GoTo(1, kSpeed) && grid.TypeInCell("60"));
  EXPECT_EQ(press(keys::kTab, false), std::pair(1, int{kRdst}));
  EXPECT_EQ(Index().Text(1, kSpeed - 1), "60.000");
  EXPECT_EQ(press(keys::kTab, true), std::pair(1, int{kSpeed}));
  EXPECT_EQ(press(keys::kEnter, false), std::pair(2, int{kSpeed}));
  EXPECT_EQ(press(keys::kEnter, true), std::pair(1, int{kSpeed}));
  EXPECT_EQ(press(keys::kEnter, true), std::pair(1, int{kSpeed})) << "there is none above";
  ASSERT_TRUE(grid.GoTo(1, kNext));
  EXPECT_EQ(press(keys::kTab, false), std::pair(2, int{kLabel})) << "on in the next row";
  EXPECT_EQ(press(keys::kTab, true), std::pair(1, int{kNext}));
  ASSERT_TRUE(grid.GoTo(1, kSpeed) && grid.TypeInCell("fast"));
  EXPECT_EQ(press(keys::kEnter, false), std::pair(1, int{kSpeed})) << "a refused text is stayed at";
  EXPECT_EQ(grid.Hint(), "Speed value must be numeric!");
}

TEST_F(TableWindows, TheMenuOfTheCellsCutsCopiesAndPastes) {
  HeadlessForm& form = Open("mnuToolsIndexerJog");
  ASSERT_TRUE(form.EditCell("vsFG", 1, 1, "5"));
  ASSERT_TRUE(form.grid("vsFG").GoTo(1, 1));
  form.ChooseCommand("mnuCellsCut");
  EXPECT_EQ(Jog().Text(1, 0), "");
  ASSERT_TRUE(form.grid("vsFG").GoTo(3, 1));
  form.ChooseCommand("mnuCellsPaste");
  EXPECT_EQ(Jog().Text(3, 0), "5.000");
}

TEST_F(TableWindows, ATableIsSentAndReadFromItsOwnWindow) {
  Main().Choose("mnuToolsOnline");
  HeadlessForm& form = Open("mnuToolsIndexerJog");
  ASSERT_TRUE(form.EditCell("vsFG", 2, 1, "5"));
  data.boxes.Expect("Jog Table of the project will be downloaded to the controller.",
                    BoxAnswer::ok);
  form.Press("cmdDownload");
  EXPECT_EQ(Jog().Stored(2).cells[0], "5.000") << "what is sent is what the window shows";
  EXPECT_FALSE(Jog().IsDirty());
  data.boxes.shown.clear();
  ASSERT_TRUE(form.EditCell("vsFG", 2, 1, "6"));
  form.Press("cmdApply");
  data.forms.OnShow("frmCompare", [](HeadlessForm& compare) { compare.Press("cmdCancel"); });
  data.boxes.Expect("Existing Jog Table will be overwritten with hardware data!", BoxAnswer::yes);
  data.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
  form.Press("cmdUpload");
  EXPECT_EQ(Jog().Stored(2).cells[0], "5.000") << "what the amplifier was given";
}

// ---- the zones

TEST_F(TableWindows, TheStripShowsZonesLimitsAndTheProgrammesTravel) {
  Programme({"a,A+100,50,-,1,:::::,IT0,1,b", "b,A-20,80,-,1,:::::,IT0,1,END"});
  OpenIndex();
  ASSERT_TRUE(Project().WindowOf(Tool::position).CommitPending());
  HeadlessForm& form = Open("mnuToolsIndexerZone");
  const auto texts = [&] {
    std::vector<std::string> found;
    for (const DrawingShape& shape : form.drawing("drwStrip").Shapes()) {
      if (!shape.text.empty()) found.push_back(shape.text);
    }
    return found;
  };
  EXPECT_EQ(std::ranges::count(texts(), "programme -20.000 to 100.000"), 1);
  EXPECT_EQ(std::ranges::count(texts(), "limit beyond"), 2);
  ASSERT_TRUE(form.EditCell("vsFG", 4, 1, "10") && form.EditCell("vsFG", 4, 2, "30"));
  EXPECT_EQ(std::ranges::count(texts(), "3"), 1) << "zones count from 0";
  EXPECT_EQ(form.label("lblRemarks").Text(), "");
  ASSERT_TRUE(form.EditCell("vsFG", 6, 1, "25.5") && form.EditCell("vsFG", 6, 2, "40"));
  EXPECT_EQ(form.label("lblRemarks").Text(), "Zones 3 and 5 overlap from 25.5 to 30.");
  ASSERT_TRUE(form.EditCell("vsFG", 6, 2, "20"));
  EXPECT_EQ(form.label("lblRemarks").Text(), "Zone 5: the lower limit is above the upper.");
  ASSERT_TRUE(form.EditCell("vsFG", 6, 1, "") && form.EditCell("vsFG", 6, 2, ""));
  EXPECT_EQ(form.label("lblRemarks").Text(), "");
}

TEST(ZoneStripTest, ZonesLieInProportionAndTouchingIsNoOverlap) {
  const std::vector<ZoneSpan> zones{{0, 0, 50}, {1, 50, 100}};
  EXPECT_EQ(ZoneRemarks(zones), "");
  std::vector<DrawingShape> boxes = ZoneStrip(zones, Travel{0, 100}, std::nullopt, 1, 3);
  std::erase_if(
      boxes, [](const DrawingShape& shape) { return shape.kind != DrawingShape::Kind::rectangle; });
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_DOUBLE_EQ(boxes[0].x2 - boxes[0].x1, boxes[1].x2 - boxes[1].x1);
  EXPECT_DOUBLE_EQ(boxes[0].x2, boxes[1].x1);
  EXPECT_FALSE(boxes[0].strong);
  EXPECT_TRUE(boxes[1].strong) << "the zone under the cursor";
  EXPECT_TRUE(ZoneStrip({}, std::nullopt, std::nullopt, -1, 3).empty());
}

}  // namespace
}  // namespace velmoor
