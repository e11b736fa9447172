// The window of the index table with a user at it.
#include <algorithm>

#include <gmock/gmock.h>

#include "TableSession.h"
#include "platform/Utility.h"
#include "tables/frmDialogEvent.h"
#include "tables/frmDialogPOut.h"
#include "tables/frmDialogPosition.h"

namespace velmoor {
namespace {

using headless::HeadlessForm;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// Grid columns are the table's plus one, for the step's number.
enum GridColumn { kLabel = 1, kPosition, kSpeed, kRdst, kRspd, kPOut, kEvent, kLoop, kNext };

class IndexWindow : public TableSession {
 protected:
  void SetUp() override {
    TableSession::SetUp();
    Programme({"a,A+0,50,-,1,:::::,IT0,1,b", "b,I+10,50,5,2.5,A::::,T250,3,c",
               "c,I-10,80,-,1,N::::,SEL1T0,1,a"});
    data.boxes.shown.clear();
    form = &OpenIndex();
  }
  bool Edit(int row, int column, const std::string& text) {
    return form->EditCell("vsFG", row, column, text);
  }
  std::string Cell(int row, int column) { return Index().Text(row, column - 1); }
  headless::HeadlessGrid& Grid() { return form->grid("vsFG"); }
  void Choose(const std::string& command) { form->ChooseCommand(command); }

  HeadlessForm* form = nullptr;
};

TEST_F(IndexWindow, OpensOnceAndComesToTheFront) {
  Main().Choose("mnuToolsIndexerJog");
  EXPECT_EQ(data.forms.Active()->Name(), "frmJog");
  Main().Choose("mnuToolsIndexerPosition");
  EXPECT_EQ(data.forms.Active(), form);
  EXPECT_EQ(data.forms.shownNames.back(), "frmJog");
  EXPECT_TRUE(Form().ToolOpened(Tool::position));
  form->Press("cmdCancel");
  EXPECT_FALSE(Form().ToolOpened(Tool::position));
  EXPECT_FALSE(data.forms.IsOpen("frmPosition"));
}

TEST_F(IndexWindow, ARefusedEditRestoresTheCellAndAGoodOneTakesTheResolution) {
  EXPECT_FALSE(Edit(2, kSpeed, "fast"));
  EXPECT_THAT(Boxes(),
              ElementsAre("Speed value must be numeric!\rPrevious value has been restored!"));
  EXPECT_FALSE(form->button("cmdApply").Enabled());
  EXPECT_TRUE(Edit(2, kSpeed, " 7.5 "));
  EXPECT_EQ(Cell(2, kSpeed), FormatToResolution("7.5", Project().Resolution()));
  EXPECT_EQ(Index().DirtyCell(2), "1");
  EXPECT_TRUE(form->button("cmdApply").Enabled());
}

TEST_F(IndexWindow, ARenamedLabelIsFollowedAndAClearedOneEmptiesItsReferences) {
  EXPECT_TRUE(Edit(1, kLabel, "start"));
  EXPECT_EQ(Cell(3, kNext), "start");
  EXPECT_TRUE(Edit(1, kLabel, ""));
  EXPECT_EQ(Cell(3, kNext), "");
  Main().Choose("mnuEditUndo");
  Main().Choose("mnuEditUndo");
  EXPECT_EQ(Cell(1, kLabel), "a");
  EXPECT_EQ(Cell(3, kNext), "a");
}

TEST_F(IndexWindow, AWrongProgrammeIsNotCommitted) {
  EXPECT_TRUE(Edit(4, kLabel, "d"));
  form->Press("cmdApply");
  EXPECT_THAT(Boxes(), ElementsAre("Definition in step 4 is incomplete!\rPlease edit definition."));
  EXPECT_EQ(Cell(4, kPosition), "-");
  EXPECT_EQ(Cell(4, kPOut), "");
  EXPECT_TRUE(Edit(4, kLabel, ""));
  for (const int column : {kPosition, kSpeed, kRdst, kRspd}) EXPECT_TRUE(Edit(4, column, ""));
  EXPECT_TRUE(Edit(2, kNext, "nowhere"));
  form->Press("cmdOK");
  EXPECT_THAT(Boxes(), ElementsAre("Next block 'nowhere' for definition 'Step 2' is undefined!\r"
                                   "Please edit definition."));
  EXPECT_TRUE(form->IsShown());
  EXPECT_EQ(Index().GetNumberOfNewRows(), 3);
}

TEST_F(IndexWindow, ApplyStoresAndCancelAsksAndReadsBack) {
  EXPECT_TRUE(Edit(2, kLoop, "9"));
  form->Press("cmdApply");
  EXPECT_FALSE(form->button("cmdApply").Enabled());
  EXPECT_FALSE(Main().command("mnuEditUndo").Enabled());
  EXPECT_TRUE(Edit(2, kLoop, "10"));
  data.boxes.Expect("Modified values will be lost", BoxAnswer::no);
  form->Press("cmdCancel");
  EXPECT_TRUE(form->IsShown());
  data.boxes.Expect("Do you wish to discard changes?", BoxAnswer::yes);
  form->Press("cmdCancel");
  EXPECT_EQ(Cell(2, kLoop), "9");
}

TEST_F(IndexWindow, AStoreThatFailsKeepsTheWindowAndItsEdits) {
  EXPECT_TRUE(Edit(2, kLoop, "9"));
  Index().SetDatabasePath(data.folder.At("gone.tmp"));
  form->Press("cmdOK");
  EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("clsPosition.SaveToDB: ")));
  EXPECT_TRUE(form->IsShown());
  EXPECT_TRUE(form->button("cmdApply").Enabled());
  Index().SetDatabasePath(Project().ProjectDatabasePath());
}

TEST_F(IndexWindow, UndoGoesBackToTheLastApplyWithMarksAndAll) {
  const auto before = Index().Cells();
  Index().SetDirtyCell(1, false);
  form->Press("cmdOK");
  form = &OpenIndex();
  EXPECT_TRUE(Edit(1, kLoop, "2"));
  EXPECT_TRUE(Edit(1, kSpeed, "3"));
  EXPECT_EQ(Index().DirtyCell(1), "1");
  Main().Choose("mnuEditUndo");
  Main().Choose("mnuEditUndo");
  EXPECT_EQ(Index().Cells(), before);
  EXPECT_EQ(Index().DirtyCell(1), "0");
  EXPECT_FALSE(form->button("cmdApply").Enabled());
  EXPECT_FALSE(Main().command("mnuEditUndo").Enabled());
  Main().Choose("mnuEditRedo");
  EXPECT_EQ(Cell(1, kLoop), "2");
  EXPECT_TRUE(form->button("cmdApply").Enabled());
}

TEST_F(IndexWindow, AStepTravelsThroughTheBufferWithoutItsLabel) {
  Grid().GoTo(2, kSpeed);
  Main().Choose("mnuEditCopy");
  Grid().GoTo(5, kLabel);
  Main().Choose("mnuEditPaste");
  EXPECT_EQ(Cell(5, kLabel), "");
  EXPECT_EQ(Cell(5, kPosition), Cell(2, kPosition));
  EXPECT_EQ(Cell(5, kNext), "c");
  Grid().GoTo(3, kLabel);
  Main().Choose("mnuEditPaste");  // step 3 is "c" itself
  EXPECT_THAT(Boxes(), ElementsAre("Step 3, Next: Next position definition cannot be self! Choose "
                                   "different step.\rNothing has been changed."));
  EXPECT_EQ(Cell(3, kNext), "a");
  Grid().GoTo(2, kLabel);
  Main().Choose("mnuEditCut");
  EXPECT_EQ(Cell(2, kLabel), "b");
  EXPECT_EQ(Cell(2, kPosition), "");
}

TEST_F(IndexWindow, ANewerClipboardTextWinsOverTheBuffer) {
  Grid().GoTo(2, kSpeed);
  Main().Choose("mnuEditCopy");
  EXPECT_THAT(data.clipboard.text, HasSubstr("\tA::::\tT250\t3\tc\n"));
  data.clipboard.text = "11\t-\n12\t-\n";
  Grid().GoTo(1, kSpeed);
  Main().Choose("mnuEditPaste");
  EXPECT_EQ(Cell(1, kSpeed), FormatToResolution("11", Project().Resolution()));
  EXPECT_EQ(Cell(2, kRdst), "-");
  data.clipboard.text = "13\tx\n";
  Main().Choose("mnuEditPaste");
  EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Registration Distance value must be numeric!")));
  EXPECT_EQ(Cell(1, kSpeed), FormatToResolution("11", Project().Resolution()));
}

TEST_F(IndexWindow, ABlockIsCopiedAsTabSeparatedText) {
  Grid().GoTo(1, kEvent);
  Grid().Select({1, kEvent, 2, kNext});
  Main().Choose("mnuEditCopy");
  EXPECT_EQ(data.clipboard.text, "IT0\t1\tb\nT250\t3\tc\n");
  Grid().Select({1, kLoop, 3, kLoop});
  Main().Choose("mnuEditCut");
  EXPECT_EQ(Cell(3, kLoop), "");
  Main().Choose("mnuEditUndo");
  EXPECT_EQ(Cell(3, kLoop), "1");
}

TEST_F(IndexWindow, TheStepsNumberStandsForTheWholeStep) {
  Grid().GoTo(2, 0);
  Main().Choose("mnuEditCopy");
  EXPECT_THAT(data.clipboard.text, HasSubstr("\tA::::\tT250\t3\tc\n"));
  Grid().GoTo(5, 0);
  Main().Choose("mnuEditPaste");
  EXPECT_EQ(Cell(5, kLabel), "");
  EXPECT_EQ(Cell(5, kEvent), "T250");
  Grid().Select({2, 0, 3, 0});
  Main().Choose("mnuEditCopy");
  EXPECT_THAT(data.clipboard.text, AllOf(StartsWith("b\t"), HasSubstr("\nc\t")));
  form->PressKey("vsFG", {.code = keys::kDelete});
  EXPECT_TRUE(Index().IsBlank(2));
  EXPECT_TRUE(Index().IsBlank(3));
  EXPECT_FALSE(Index().IsBlank(1));
}

TEST_F(IndexWindow, StepsAreInsertedDeletedFilledAndFound) {
  Grid().GoTo(2, kLabel);
  Choose("mnuTableInsert");
  EXPECT_THAT(Column(Position::label, 4), ElementsAre("a", "", "b", "c"));
  EXPECT_EQ(Index().DirtyCell(4), "1");
  Choose("mnuTableDelete");
  EXPECT_THAT(Column(Position::label, 4), ElementsAre("a", "b", "c", ""));
  Grid().Select({1, kSpeed, 3, kSpeed});
  Choose("mnuTableFillDown");
  EXPECT_EQ(Cell(3, kSpeed), Cell(1, kSpeed));
  form->Type("txtFind", "sel1");
  form->Press("cmdFind");
  EXPECT_EQ(Grid().Row(), 3);
  EXPECT_EQ(Grid().Column(), kEvent);
  form->Type("txtFind", "sel2");
  Choose("mnuTableFindNext");
  EXPECT_EQ(form->label("lblFound").Text(), "Not found");
}

TEST_F(IndexWindow, TheEditMenuFollowsTheActiveWindow) {
  Grid().GoTo(1, kLabel);
  EXPECT_TRUE(Main().command("mnuEditCopy").Enabled());
  EXPECT_FALSE(Main().command("mnuEditPaste").Enabled());
  form->Press("cmdCancel");
  EXPECT_FALSE(Main().command("mnuEditCopy").Enabled());
}

TEST_F(IndexWindow, ACsvFileIsImportedWholeOrNotAtAll) {
  const std::string file = data.folder.At("steps.csv");
  data.dialogs.answers.emplace_back(file);
  Choose("mnuTableExport");
  const std::string text = data.files.ReadAll(file);
  EXPECT_EQ(text, ExportCsv(Index()));
  std::string bad = text;
  bad.replace(bad.find("T250"), 4, "T2.5");
  data.files.WriteDurably(file, bad);
  data.dialogs.answers.emplace_back(file);
  Choose("mnuTableImport");
  EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Row 2, column event: Value must be an integer!")));
  EXPECT_FALSE(form->button("cmdApply").Enabled());
  std::string good = text;
  good.replace(good.find("T250"), 4, "T251");
  data.files.WriteDurably(file, good);
  data.dialogs.answers.emplace_back(file);
  Choose("mnuTableImport");
  EXPECT_EQ(Cell(2, kEvent), "T251");
  EXPECT_TRUE(Main().command("mnuEditUndo").Enabled());
}

TEST_F(IndexWindow, ThePathAndThePictureFollowTheEdits) {
  EXPECT_EQ(form->label("lblPath").Text(), "Repeats from step 1 \"a\" on.");
  Grid().GoTo(2, kLabel);
  EXPECT_GT(form->chart("chtMotion").shown.shadeTo, form->chart("chtMotion").shown.shadeFrom);
  EXPECT_EQ(form->chart("chtMotion").shown.marks.size(), 3u);
  EXPECT_TRUE(Edit(3, kEvent, "IT0"));
  EXPECT_EQ(form->label("lblPath").Text(),
            "Endless loop from step 1 \"a\" on: no step of it waits for an input!");
  EXPECT_EQ(form->label("lblPath").TextTone(), Tone::alarm);
  form->Select("cmbStart", "2  b");
  EXPECT_EQ(form->label("lblPath").Text().substr(0, 31), "Endless loop from step 2 \"b\" on");
  form->grid("vsPath").GoTo(2, 0);
  EXPECT_EQ(Grid().Row(), 3);
}

// ---- the dialogs

class IndexDialogs : public IndexWindow {
 protected:
  // Presses F9 in the cell and acts in the dialog that comes.
  void F9(int row, int column, const std::string& dialog,
          const std::function<void(HeadlessForm&)>& work) {
    Grid().GoTo(row, column);
    data.forms.OnShow(dialog, [this, work](HeadlessForm& shown) {
      work(shown);
      // One that has closed is gone.
      if (std::ranges::count(data.forms.Shown(), &shown) > 0) shown.Press("cmdOK");
    });
    form->PressKey("vsFG", {.code = keys::kF9});
  }
};

TEST_F(IndexDialogs, ThePositionDialogReadsAndWritesEveryKind) {
  struct Case {
    int option;
    std::string distance;
    std::string cell;
  };
  const std::string one = FormatToResolution("1.5", Project().Resolution());
  for (const Case& row :
       {Case{0, "1.5", "I+" + one}, Case{1, "-1.5", "A-" + one}, Case{2, "", "+INFINITE"},
        Case{3, "", "-INFINITE"}, Case{4, "", "-"}, Case{5, "", "STOP"}}) {
    F9(2, kPosition, "frmDialogPosition", [&](HeadlessForm& dialog) {
      dialog.Choose("optPosition", row.option);
      EXPECT_EQ(dialog.textBox("txtDistance").Enabled(), row.option <= 1);
      if (!row.distance.empty()) dialog.Type("txtDistance", row.distance);
    });
    EXPECT_EQ(Cell(2, kPosition), row.cell);
    // What it wrote it reads again.
    F9(2, kPosition, "frmDialogPosition", [&](HeadlessForm& dialog) {
      EXPECT_EQ(dialog.optionGroup("optPosition").Value(), row.option);
      dialog.Press("cmdCancel");
    });
    EXPECT_EQ(Cell(2, kPosition), row.cell);
  }
  EXPECT_EQ(Index().DirtyCell(2), "1");
}

TEST_F(IndexDialogs, ThePositionDialogRefusesWhatIsNoDistance) {
  F9(4, kPosition, "frmDialogPosition", [&](HeadlessForm& dialog) {
    dialog.Press("cmdOK");
    EXPECT_THAT(Boxes(), ElementsAre("Distance is required for relative or absolute moves!"));
    dialog.Type("txtDistance", "far");
    EXPECT_FALSE(dialog.Leave("txtDistance"));
    EXPECT_THAT(Boxes(),
                ElementsAre("Distance value must be numeric!\rPrevious value will be restored!"));
    dialog.Type("txtDistance", "1E12");
    EXPECT_FALSE(dialog.Leave("txtDistance"));
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("1E12 is out of range!\rValue must be within")));
    dialog.Press("cmdCancel");
  });
  EXPECT_EQ(Cell(4, kPosition), "");
}

TEST_F(IndexDialogs, TheOutputDialogKeepsTheOrderOfTheOutputs) {
  EXPECT_EQ(frmDialogPOut::GetStateChar(0), 'A');
  EXPECT_EQ(frmDialogPOut::GetStateChar(3), 'Z');
  F9(2, kPOut, "frmDialogPOut", [&](HeadlessForm& dialog) {
    EXPECT_EQ(dialog.comboBox("cmbPOut0").ListIndex(), 0);
    EXPECT_EQ(dialog.comboBox("cmbPOut1").ListIndex(), 2);
    dialog.Select("cmbPOut1", "N - off");
    dialog.Select("cmbPOut4", "Z - zone signal");
  });
  EXPECT_EQ(Cell(2, kPOut), "AN::Z");
}

TEST_F(IndexDialogs, TheEventDialogReadsAndWritesEveryEvent) {
  const std::vector<std::string> events{"I",    "N",    "D",    "SEL0", "SEL1", "SEL2",
                                        "SEL3", "SEL4", "SEL5", "SEL6", ":",    ""};
  for (std::size_t i = 0; i < events.size(); ++i) {
    F9(2, kEvent, "frmDialogEvent", [&](HeadlessForm& dialog) {
      dialog.Choose("optEvent", static_cast<int>(i));
      dialog.Type("txtTime", i == 2 ? "" : "00099");
    });
    EXPECT_EQ(Cell(2, kEvent), events[i] + (i == 2 ? "T0" : "T99"));
    F9(2, kEvent, "frmDialogEvent", [&](HeadlessForm& dialog) {
      EXPECT_EQ(dialog.optionGroup("optEvent").Value(), static_cast<int>(i));
    });
  }
  // Offline the two new events warn and stand.
  EXPECT_EQ(data.boxes.Count("Velmoor was unable to retrieve firmware version while offline!\r"
                             "Events SEL5 and SEL6 are only functional with firmware version 3 or "
                             "newer!"),
            2);
}

TEST_F(IndexDialogs, TheEventTimeIsAWholeNumberUpTo99999) {
  F9(2, kEvent, "frmDialogEvent", [&](HeadlessForm& dialog) {
    for (const char* const text : {"1.5", "100000", "-1"}) {
      dialog.Type("txtTime", text);
      EXPECT_FALSE(dialog.Leave("txtTime")) << text;
      EXPECT_EQ(dialog.textBox("txtTime").Text(), "250");
    }
    dialog.Type("txtTime", "99999");
  });
  EXPECT_THAT(
      Boxes(),
      ElementsAre("Value must be an integer!\rPlease enter a non-float value.\rPrevious value has "
                  "been restored!",
                  "Time value must be in the range from 0 to 99999!\rPrevious value has been "
                  "restored!",
                  "Time value must be in the range from 0 to 99999!\rPrevious value has been "
                  "restored!"));
  EXPECT_EQ(Cell(2, kEvent), "T99999");
}

TEST_F(IndexDialogs, OldFirmwareSendsTheChoiceBack) {
  Amplifier().State().settings.firmware = 2;
  GoOnline();
  form = &data.forms.Get("frmPosition");
  F9(3, kEvent, "frmDialogEvent", [&](HeadlessForm& dialog) {
    dialog.Choose("optEvent", 8);
    EXPECT_EQ(dialog.optionGroup("optEvent").Value(), 4);
  });
  EXPECT_THAT(Boxes(),
              ElementsAre("Current RX900 firmware version does not support SEL5 and SEL6 events!\r"
                          "Events SEL5 and SEL6 are only functional with firmware version 3 or "
                          "newer!"));
  EXPECT_EQ(Cell(3, kEvent), "SEL1T0");
}

}  // namespace
}  // namespace velmoor
