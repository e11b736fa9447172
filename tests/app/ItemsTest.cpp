// Single items, groups, and the comparison.

#include <algorithm>

#include "AppSession.h"
#include "app/frmCompare.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

constexpr int kSpeed = 0;

class Items : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  void Apply(int row, const std::string& speed) {
    Project().Jog().SetText(row, kSpeed, speed);
    Project().Jog().SetDirtyCell(row, true);
    ASSERT_TRUE(Project().Jog().ChangeAccepted());
  }
  std::string Held(std::size_t row) { return Amplifier().State().memory.jog.working.at(row); }
  void DownloadEverything() {
    data.boxes.Expect("All parameter and table data will be downloaded", BoxAnswer::ok);
    Main().Choose("mnuToolsDownloadAll");
    data.boxes.shown.clear();
    PauseInSec(1);
    Amplifier().ForgetWhatWasAsked();
  }
};

TEST_F(Items, OneTableGoesOutWholeAndIsStored) {
  Apply(1, "12.000");
  data.boxes.Expect(
      "Jog Table of the project will be downloaded to the controller.\rDo you wish to proceed?",
      BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadTableJog");
  EXPECT_EQ(LastHead(), "Download Jog Table complete!");
  EXPECT_EQ(Amplifier().Asked("JSPDT="), 16);
  EXPECT_EQ(Amplifier().Asked("JSPDSTORE"), 1);
  EXPECT_EQ(Amplifier().Asked("RES"), 0);
  EXPECT_EQ(Held(0), "00000720");
  EXPECT_EQ(Project().WhatIsDirty(), "");
}

TEST_F(Items, GroupsGoOutInOrderAndParametersRestart) {
  data.boxes.Expect("All Tables of the project will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadTablesAll");
  EXPECT_EQ(Amplifier().Asked("POST="), 128);
  EXPECT_EQ(Amplifier().Asked("ZONENT="), 32);
  EXPECT_EQ(Amplifier().Asked("RES"), 0);
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect("All Parameters of the project will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadParametersAll");
  EXPECT_EQ(LastHead(), "Download All Parameters complete!");
  EXPECT_EQ(Amplifier().Asked("PRM="), Project().Parameters().Count() - 10 + 2)
      << "two of them are of searches";
  EXPECT_EQ(Amplifier().Asked("RES"), 1);
}

TEST_F(Items, AnotherBaudRateInTheInterfaceAloneIsFollowed) {
  const int row = Project().Interface().FindRow("Pn801");
  ASSERT_GT(row, 0);
  Project().Interface().EditValue(row, "38400");
  ASSERT_TRUE(Project().Interface().AcceptEdits());
  data.boxes.Expect("Interface Parameters of the project will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadParameterInterface");
  EXPECT_EQ(Amplifier().BaudRate(), 38400);
  EXPECT_EQ(Form().BaudRate(), 38400);
  EXPECT_TRUE(Form().IsOnline());
  const Texts told = Boxes();
  ASSERT_EQ(told.size(), 2u) << "the question, and one answer";
  EXPECT_TRUE(told.back().starts_with("Download Interface Parameters complete!\r"));
  EXPECT_TRUE(
      told.back().ends_with("and stored.  The amplifier has restarted.\r"
                            "Communications baud rate has been modified.\r"
                            "It was 9600 bit/s and is 38400 bit/s now."))
      << told.back();
}

// What was sent is in the amplifier, whatever became of its restart: one box tells both.
TEST_F(Items, ARestartThatWasNotConfirmedIsToldInTheSameBox) {
  struct Case {
    FaultKind kind;
    const char* words;
    const char* cause;
    const char* gain;  // that Pn100 gets
    const char* rate;  // that Pn801 gets; shows that it has restarted
    bool good;
  };
  const Case cases[] = {
      {FaultKind::notGood, "The amplifier did not restart!",
       "Restarting the amplifier (0RES): not acknowledged", "60", "", false},
      {FaultKind::noAnswer, "Whether the amplifier has restarted is not known!",
       "Restarting the amplifier (0RES): no answer within 10 s", "70", "", false},
      {FaultKind::noAnswer, "The amplifier has restarted.", "", "80", "38400", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.words);
    clsHX7Editor& editor = Project().Editor();
    editor.EditValue(editor.FindRow("Pn100"), c.gain);
    if (*c.rate != 0) editor.EditValue(editor.FindRow("Pn801"), c.rate);
    ASSERT_TRUE(editor.AcceptEdits());
    data.boxes.Expect("The following items have been modified:", BoxAnswer::ok);
    line.faults.Add({.kind = c.kind, .match = "RES"});
    Main().Choose("mnuToolsDownloadNew");
    const Texts told = Boxes();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_TRUE(told.back().starts_with("Download New complete!\r")) << told.back();
    for (const char* const part : {c.words, c.cause}) {
      EXPECT_NE(told.back().find(part), std::string::npos) << told.back();
    }
    EXPECT_EQ(told.back().find("take effect at its next start") == std::string::npos, c.good);
    EXPECT_TRUE(Form().IsOnline());
    line.faults.Clear();
  }
}

TEST_F(Items, AnUploadOfOneTableIsCommittedOrPutBack) {
  DownloadEverything();
  Apply(1, "12.000");
  for (const BoxAnswer answer : {BoxAnswer::no, BoxAnswer::yes}) {
    data.boxes.Expect(
        "Existing Jog Table will be overwritten with hardware data!\rDo you wish to continue?",
        BoxAnswer::yes);
    data.boxes.Expect(
        "Jog Table successfully uploaded from controller.\rCommit uploaded data to project?",
        answer);
    data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) {
      EXPECT_EQ(form.label("lblSummary").Text(), "Values that differ.  Jog Table: 1");
      form.Press("cmdCancel");
    });
    Main().Choose("mnuToolsUploadTableJog");
    EXPECT_EQ(Project().Jog().Text(1, kSpeed), answer == BoxAnswer::no ? "12.000" : "");
  }
}

TEST_F(Items, AFailedUploadOfATableLeavesItAsItWas) {
  Apply(1, "12.000");
  line.faults.Add({.kind = FaultKind::deviceError, .match = "JSPDT5"});
  data.boxes.Expect("Existing Jog Table will be overwritten", BoxAnswer::yes);
  Main().Choose("mnuToolsUploadTableJog");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Could not upload Jog Table from controller!\r\r"
            "Reading row 5 of the jog table (speed) (0JSPDT5): refused with E5A1 "
            "\"Device is busy\".\r\rThe project is unchanged.");
  EXPECT_EQ(Project().Jog().Text(1, kSpeed), "12.000");
  EXPECT_EQ(Project().WhatIsDirty(), "Jog table");
  EXPECT_TRUE(Form().IsOnline());
}

TEST_F(Items, ComparingShowsTheChangedRowsAndChangesNothing) {
  DownloadEverything();
  Main().Choose("mnuToolsCompare");
  EXPECT_EQ(Boxes(), Texts{"The hardware holds what the project holds."});
  Apply(3, "7.500");
  ASSERT_TRUE(Amplifier().State().memory.parameters.Write(0x100, "77"));
  const std::string bytes = data.files.ReadAll(Project().ProjectDatabasePath());
  data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) {
    EXPECT_EQ(form.label("lblSummary").Text(), "Values that differ.  Parameters: 1, Jog Table: 1");
    form.Press("cmdCancel");
  });
  Main().Choose("mnuToolsCompare");
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_EQ(data.files.ReadAll(Project().ProjectDatabasePath()), bytes);
  EXPECT_EQ(Project().Jog().Text(3, kSpeed), "7.500");
  EXPECT_EQ(Project().WhatIsDirty(), "Jog table");
  EXPECT_EQ(Amplifier().Asked("PRM100="), 0);
  const std::vector<PartComparison> none = Project().CompareWithUpload();
  EXPECT_TRUE(none.empty()) << "nothing is held apart any more";
}

TEST(CompareWindow, ShowsToolRowItemAndBothValues) {
  const PartComparison equal{"Zone Table", 32, {}};
  const PartComparison jog{"Jog Table", 16, {{"Jog Table", "2", "Speed", "7.500 mm/sec", ""}}};
  headless::HeadlessWorld screen;
  std::vector<std::string> cells;
  screen.forms.OnShow("frmCompare", [&cells](headless::HeadlessForm& form) {
    const GridSource& grid = *form.grid("vsFG").Source();
    ASSERT_EQ(grid.Rows(), 2);
    for (int row = 0; row < 2; ++row) {
      for (int column = 0; column < 5; ++column) cells.push_back(grid.Text(row, column));
    }
    EXPECT_EQ(form.label("lblSummary").Text(), "Values that differ.  Jog Table: 1");
    form.Press("cmdCancel");
  });
  (void)frmCompare({equal, jog}).Show(FormMode::modal);
  EXPECT_EQ(cells, (std::vector<std::string>{"Tool", "Row", "Item", "Project", "Hardware",  //
                                             "Jog Table", "2", "Speed", "7.500 mm/sec", ""}));
}

// ---- one at a time

TEST_F(Items, NoClickStartsASecondTransferOrTouchesTheProjectUnderOne) {
  data.boxes.Expect("All parameter and table data will be downloaded", BoxAnswer::ok);
  const auto* const before = &Project();
  Main().Choose("mnuToolsIndexerPosition");
  Project().Position().SetText(1, clsHX7Position::label, "mine");
  const MotionTable::Rows rows = Project().Position().Cells();
  data.forms.OnShow("frmDialogStop", [this](headless::HeadlessForm&) {
    EXPECT_TRUE(data.forms.InputBlocked()) << "the real window lets no click through";
    for (const char* const command :
         {"mnuToolsDownloadAll", "mnuToolsDownloadNew", "mnuToolsUploadAll", "mnuToolsCompare",
          "mnuToolsUploadTableJog", "mnuToolsResetTableJog", "mnuToolsOffline", "mnuFileSave",
          "mnuFileOpen", "mnuFileNew", "mnuModuleTuning", "mnuToolsEditor", "mnuEditCut",
          "mnuEditPaste", "mnuEditUndo"}) {
      Main().command(command).Chosen.Raise();
    }
    Main().RecentChosen.Raise(0);
    EXPECT_FALSE(Main().Close());
  });
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(data.boxes.shown.size(), 2u);
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_EQ(Amplifier().Asked("POST="), 128);
  EXPECT_EQ(&Project(), before);
  EXPECT_EQ(Project().Position().Cells(), rows);
  EXPECT_EQ(Form().SelectedModule(), Module::indexer);
}

}  // namespace
}  // namespace velmoor
