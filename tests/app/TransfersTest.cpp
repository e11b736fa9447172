// Whole-project transfers, their progress and their stop; modules.

#include <algorithm>

#include "AppSession.h"
#include "layouts/frmProperties.h"
#include "layouts/frmZone.h"

namespace velmoor {
namespace {

constexpr const char* kUploadWarning =
    "All existing table data and parameter data will be overwritten with hardware data\r"
    "converted to units associated to the mechanical system definition!\r"
    "Electronic gear ratio parameters may not match definition!\rDo you wish to continue?";
constexpr const char* kCommit =
    "All tables and parameters successfully uploaded from controller.\r"
    "Commit uploaded data to project?";
constexpr const char* kDownloadAll =
    "All parameter and table data will be downloaded to the controller.\rDo you wish to proceed?";

class Transfers : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  // Of each box what is told before the cause.
  Texts Heads() {
    Texts heads = Boxes();
    for (std::string& text : heads) text.resize(std::min(text.find("\r\r"), text.size()));
    return heads;
  }
  int commits = 0;  // questions whether to commit so far
};

TEST_F(Transfers, DownloadNewWithNothingNewOpensNoDialog) {
  data.forms.shownNames.clear();
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(Boxes(), Texts{"No new changes have been committed!\r"
                           "New items must be changed and committed before download!"});
  EXPECT_TRUE(data.forms.shownNames.empty());
}

TEST_F(Transfers, DownloadNewNamesWhatIsNewAndClearsIt) {
  Project().Jog().SetText(1, 1, "12.0");
  Project().Jog().SetDirtyCell(1, true);
  ASSERT_TRUE(Project().Jog().ChangeAccepted());
  PauseInSec(1);
  EXPECT_EQ(Main().Panel(StatusPanel::pending), "To download: Jog table");
  data.boxes.Expect(
      "The following items have been modified:\rJog table\r"
      "New data will be downloaded to the controller.\rDo you wish to proceed?",
      BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(LastHead(), "Download New complete!");
  EXPECT_EQ(Main().Panel(StatusPanel::pending), "");
  EXPECT_EQ(data.forms.shownNames.back(), "frmDialogStop");
  EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
  EXPECT_EQ(Form().Procedure(), nullptr);
}

TEST_F(Transfers, UploadAllAsksWarnsAndCommitsOnYesOnly) {
  data.boxes.Expect(kUploadWarning, BoxAnswer::no);
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(data.boxes.shown.size(), 1u);
  for (const BoxAnswer answer : {BoxAnswer::no, BoxAnswer::yes}) {
    data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
    data.boxes.Expect(
        "Could not upload Mechanical System Parameters from controller!\r"
        "Do you wish to continue with upload?",
        BoxAnswer::yes);
    data.boxes.Expect(kCommit, answer);
    // The project's values that the amplifier does not hold are shown before the question.
    data.forms.OnShow("frmCompare", [this](headless::HeadlessForm& form) {
      EXPECT_EQ(data.boxes.Count(kCommit), commits);
      EXPECT_EQ(form.label("lblSummary").Text(), "Values that differ.  Parameters: 8");
      form.Press("cmdCancel");
    });
    Main().Choose("mnuToolsUploadAll");
    ++commits;
    EXPECT_EQ(Project().NeedsSaving(), answer == BoxAnswer::yes);
    EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
  }
}

TEST_F(Transfers, StopEndsTheFirstStageWithoutItsQuestion) {
  data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
  data.forms.OnShow("frmDialogStop", [](headless::HeadlessForm& form) { form.Press("cmdStop"); });
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(data.boxes.shown.back().text, "Upload Mechanical System Parameters terminated!");
  EXPECT_EQ(data.boxes.shown.size(), 2u);
  EXPECT_FALSE(Form().StopProcedure());
}

TEST_F(Transfers, AStopAtTheVeryEndDoesNotKillTheNextTransfer) {
  Form().SetStopProcedure(true);
  data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(LastHead(), "Download All complete!");
}

TEST_F(Transfers, ProgressIsShownInTheBarAndTheDialog) {
  data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
  std::string total;
  data.forms.OnShow("frmDialogStop", [&](headless::HeadlessForm& form) {
    // The dialog looks at the procedure in its own time.
    data.clock.Advance(std::chrono::milliseconds(100));
    data.events.AtYield(1, [&] { total = form.label("lblTotal").Text(); });
    EXPECT_FALSE(form.Unload());
    EXPECT_FALSE(Main().Close());
    EXPECT_TRUE(instance.claimed);
  });
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_TRUE(total.starts_with("Downloading Item ")) << total;
  const auto& texts = Main().statusTexts;
  const auto step = std::find_if(texts.begin(), texts.end(), [](const std::string& text) {
    return text.starts_with("System Status: Downloading Hardware Parameters: 1 of ") &&
           text.ends_with(" Parameters");
  });
  EXPECT_NE(step, texts.end());
}

TEST_F(Transfers, TheTotalReachesItsEndAndNotBefore) {
  int finished = 0;
  int steps = 0;
  // Behind the main window's own answer.
  const auto look = [&](Tool, std::int16_t, std::int16_t) {
    finished = Form().Procedure()->Finished;
    steps = Form().Procedure()->Steps;
    ASSERT_LE(finished, steps);
  };
  Connections held;
  held += Project().ToolDownloading.Connect(look);
  held += Project().ToolUploading.Connect(look);
  data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_EQ(finished, steps);
  Main().Choose("mnuToolsCompare");
  const auto counted = [](const std::string& entry) {
    return entry == "operation: Compare with Hardware: equal, 353 of 353 items in 0 ms";
  };
  EXPECT_EQ(std::ranges::count_if(data.log.entries, counted), 1);
}

TEST_F(Transfers, AMessageDuringATransferWaitsForItsEnd) {
  const std::string other = data.MakeProject("line2.spj");
  data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
  data.forms.OnShow("frmDialogStop", [&](headless::HeadlessForm&) {
    instance.deliver(other);
    EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  });
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
}

TEST_F(Transfers, ALineThatIsLostEndsOfflineWithOneMessage) {
  data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
  data.forms.OnShow("frmDialogStop", [&](headless::HeadlessForm&) { port.Unplug(); });
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_FALSE(Form().IsOnline());
  EXPECT_EQ(Status(), "System Status: Offline");
  EXPECT_TRUE(data.boxes.shown.back().text.starts_with("Error downloading data to controller!\r\r"))
      << data.boxes.shown.back().text;
  EXPECT_EQ(data.boxes.shown.size(), 2u);
}

// Whatever happens on the line: one message, no stack of boxes, and the work is there.
TEST_F(Transfers, ALineThatGoesWrongEndsWithOneMessageAndTheWorkIntact) {
  struct Case {
    const char* what;
    FaultKind kind;
    int count;
    bool restarts;
    bool online;  // afterwards
  };
  const Case cases[] = {
      {"silence", FaultKind::silence, 0, false, false},
      {"garbage", FaultKind::garbage, 0, false, false},
      {"half lines", FaultKind::halfLine, 0, false, false},
      {"one refusal", FaultKind::deviceError, 1, false, true},
      {"a restart of the amplifier", FaultKind::silence, 1, true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    line.faults.Clear();
    if (!Form().IsOnline()) Main().Choose("mnuToolsOnline");
    data.boxes.shown.clear();
    data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
    data.forms.OnShow("frmDialogStop", [&](headless::HeadlessForm&) {
      line.faults.Add({.kind = c.kind, .skip = 40, .count = c.count});
      if (c.restarts) Amplifier().Restart(port.Now());
    });
    Main().Choose("mnuToolsDownloadAll");
    EXPECT_NE(data.boxes.shown.back().text.find("items stay on offer ("), std::string::npos);
    EXPECT_EQ(Heads(), (Texts{kDownloadAll, "Error downloading data to controller!"}));
    EXPECT_EQ(Form().IsOnline(), c.online);
    EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
    EXPECT_EQ(Project().Position().GetNumberOfNewRows(), 128);
    EXPECT_FALSE(Project().NeedsSaving()) << "the project's file has the marks already";
  }
}

TEST_F(Transfers, AnUnreachableAmplifierStartsNoTransfer) {
  port.Unplug();
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Cannot go online!  Upload failed!\rHardware is not ready, or communication\r"
            "process settings are not set correctly.\r\rCOM1 does not exist.");
  EXPECT_FALSE(Form().IsOnline());
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Cannot go online!  Download failed!\rHardware is not ready, or communication\r"
            "process settings are not set correctly.\r\rCOM1 does not exist.");
}

// ---- the stages

class Stages : public Transfers {
 protected:
  void SetUp() override {
    Transfers::SetUp();
    data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
    Main().Choose("mnuToolsDownloadAll");
    PauseInSec(1);
    data.boxes.shown.clear();
  }
  void Break(const char* match) {
    line.faults.Clear();
    line.faults.Add({.kind = FaultKind::deviceError, .match = match});
  }
  // The transfer is over, and its failure was a refusal of an amplifier that still answers.
  void ExpectCalm() {
    EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
    EXPECT_EQ(Form().Procedure(), nullptr);
    EXPECT_FALSE(Form().StopProcedure());
    EXPECT_TRUE(Form().IsOnline());
  }
};

TEST_F(Stages, AnUploadThatFailsOrIsStoppedEndsInTheWordsOfItsStageUncommitted) {
  struct Case {
    Tool tool;
    const char* match;
    const char* failed;
    const char* stopped;
  };
  const Case cases[] = {
      {Tool::editor, "PRM100",
       "Could not upload Hardware Parameters from controller!\r"
       "Only Mechanical System Parameters were uploaded!",
       "Upload Hardware Parameters terminated!"},
      {Tool::jog, "JSPDT3",
       "Could not upload Jog Table from controller!\rOnly Parameters were uploaded!",
       "Upload Jog Table terminated!"},
      {Tool::zone, "ZONEPT9",
       "Could not upload Zone Table from controller!\r"
       "Only Parameters plus Jog Table were uploaded!",
       "Upload Zone Table terminated!"},
      {Tool::position, "LOOPT20",
       "Could not upload Index Table from controller!\r"
       "Only Parameters plus Jog and Zone Tables were uploaded!",
       "Upload Index Table terminated!"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.match);
    Break(c.match);
    data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
    Main().Choose("mnuToolsUploadAll");
    EXPECT_NE(data.boxes.shown.back().text.find("refused with E5A1 \"Device is busy\"."),
              std::string::npos);
    EXPECT_EQ(Heads(), (Texts{kUploadWarning, c.failed}));
    ExpectCalm();
    line.faults.Clear();
    const Connection stops =
        Project().ToolUploading.Connect([&](Tool tool, std::int16_t row, std::int16_t) {
          if (tool == c.tool && row == 2) Form().SetStopProcedure(true);
        });
    data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
    Main().Choose("mnuToolsUploadAll");
    EXPECT_EQ(Heads(), (Texts{kUploadWarning, c.stopped}));
    ExpectCalm();
    EXPECT_FALSE(Project().NeedsSaving());
  }
}

TEST_F(Stages, AMachineThatCannotBeReadIsAskedAbout) {
  const char* const question =
      "Could not upload Mechanical System Parameters from controller!\r"
      "Do you wish to continue with upload?";
  Break("PRM82D");
  data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
  data.boxes.Expect(question, BoxAnswer::no);
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(Heads(), (Texts{kUploadWarning, question}));
  ExpectCalm();
  Break("PRM82D");
  data.boxes.Expect(kUploadWarning, BoxAnswer::yes);
  data.boxes.Expect(question, BoxAnswer::yes);
  data.boxes.Expect(kCommit, BoxAnswer::no);
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(Heads(), (Texts{kUploadWarning, question, kCommit}));
  ExpectCalm();
}

TEST_F(Stages, ADownloadThatFailsOrIsStoppedIsOfferedAgain) {
  struct Case {
    const char* match;
    Tool tool;
    const char* pending;  // after the stop, which is a stage's own
  };
  const Case cases[] = {
      {"POST", Tool::position, "To download: 5 items"},
      {"PGMSTORE", Tool::position, "To download: 5 items"},
      {"JSPDT", Tool::jog, "To download: 4 items"},
      {"JSPDSTORE", Tool::jog, "To download: 4 items"},
      {"ZONENT", Tool::zone, "To download: 3 items"},
      {"ZONESTORE", Tool::zone, "To download: 3 items"},
      {"PRM100=", Tool::editor, "To download: Mechanical System, All parameters"},
      {"PRM829=", Tool::mechanicalSystem, "To download: Mechanical System"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.match);
    Break(c.match);
    data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
    Main().Choose("mnuToolsDownloadAll");
    EXPECT_NE(data.boxes.shown.back().text.find("items stay on offer ("), std::string::npos);
    EXPECT_EQ(Heads(), (Texts{kDownloadAll, "Error downloading data to controller!"}));
    ExpectCalm();
    EXPECT_EQ(Main().Panel(StatusPanel::pending), c.pending);
    line.faults.Clear();
    const Connection stops =
        Project().ToolDownloading.Connect([&](Tool tool, std::int16_t row, std::int16_t) {
          if (tool == c.tool && row == 2) Form().SetStopProcedure(true);
        });
    data.boxes.Expect(kDownloadAll, BoxAnswer::ok);
    Main().Choose("mnuToolsDownloadAll");
    EXPECT_NE(data.boxes.shown.back().text.find("Download New completes it."), std::string::npos);
    EXPECT_EQ(Heads(), (Texts{kDownloadAll, "Download All terminated!"}));
    ExpectCalm();
    EXPECT_EQ(Main().Panel(StatusPanel::pending), c.pending);
  }
}

// ---- modules

TEST_F(Transfers, ChoosingTheCurrentModuleLeavesItsWindowsAlone) {
  const auto window = world().forms->Load(layouts::frmZone::kLayout);
  window->Show(FormMode::modeless);
  Main().Choose("mnuModuleIndexer");
  EXPECT_TRUE(window->IsShown());
  EXPECT_TRUE(Main().command("mnuModuleIndexer").Checked());
}

TEST_F(Transfers, AModuleChangeUnloadsTheWindowsWhenItMay) {
  const auto window = world().forms->Load(layouts::frmZone::kLayout);
  window->Show(FormMode::modeless);
  const char* const question =
      "All opened tool windows will be unloaded prior to switching modules.\r"
      "Uncommitted data will lost.  Do you wish to proceed?";
  data.boxes.Expect(question, BoxAnswer::cancel);
  Main().Choose("mnuModuleTuning");
  EXPECT_TRUE(window->IsShown());
  EXPECT_EQ(Form().SelectedModule(), Module::indexer);
  EXPECT_FALSE(Main().command("mnuModuleTuning").Checked());
  data.boxes.Expect(question, BoxAnswer::ok);
  Main().Choose("mnuModuleTuning");
  EXPECT_FALSE(window->IsShown());
  EXPECT_EQ(Main().Panel(StatusPanel::module), "Gain Setting/Tuning");
  // No window is open: no question.
  Main().Choose("mnuModuleEditor");
  EXPECT_EQ(Main().Panel(StatusPanel::module), "Parameter Editor");
}

TEST_F(Transfers, AParameterWindowIsKnownByTheFirstWordOfItsCaption) {
  const auto window = world().forms->Load(layouts::frmProperties::kLayout);
  window->SetCaption("Homing Routine Configuration");
  window->Show(FormMode::modeless);
  EXPECT_TRUE(IsToolWindowOpened("Homing"));
  EXPECT_FALSE(IsToolWindowOpened("OverTravel"));
  EXPECT_FALSE(IsToolWindowOpened("frmZone"));
}

}  // namespace
}  // namespace velmoor
