// Whole-project transfers, their progress and their stop; modules.

#include "AppSession.h"

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
  int commits = 0;  // questions whether to commit so far
};

TEST_F(Transfers, DownloadNewWithNothingNewOpensNoDialog) {
  Project().ResetAllIsDirty();
  data.forms.shownNames.clear();
  Main().Choose("mnuToolsDownloadNew");
  EXPECT_EQ(Boxes(), Texts{"No new changes have been committed!\r"
                           "New items must be changed and committed before download!"});
  EXPECT_TRUE(data.forms.shownNames.empty());
}

TEST_F(Transfers, DownloadNewNamesWhatIsNewAndClearsIt) {
  Project().ResetAllIsDirty();
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
  EXPECT_EQ(data.boxes.shown.back().text, "Download New complete!");
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
  EXPECT_EQ(data.boxes.shown.back().text, "Download All complete!");
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
  EXPECT_EQ(data.boxes.Count("Error downloading data to controller!"), 1);
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
    EXPECT_EQ(Boxes(), (Texts{kDownloadAll, "Error downloading data to controller!"}));
    EXPECT_EQ(Form().IsOnline(), c.online);
    EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
    EXPECT_EQ(Project().Position().GetNumberOfNewRows(), 128);
    EXPECT_TRUE(Project().NeedsSaving());
  }
}

TEST_F(Transfers, AnUnreachableAmplifierStartsNoTransfer) {
  port.Unplug();
  Main().Choose("mnuToolsUploadAll");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Cannot go online!  Upload failed!\rHardware is not ready, or communication\r"
            "process settings are not set correctly.");
  EXPECT_FALSE(Form().IsOnline());
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(data.boxes.shown.back().text,
            "Cannot go online!  Download failed!\rHardware is not ready, or communication\r"
            "process settings are not set correctly.");
}

// ---- modules

TEST_F(Transfers, ChoosingTheCurrentModuleLeavesItsWindowsAlone) {
  const auto window = world().forms->Load("frmZone");
  window->Show(FormMode::modeless);
  Main().Choose("mnuModuleIndexer");
  EXPECT_TRUE(window->IsShown());
  EXPECT_TRUE(Main().CommandChecked("mnuModuleIndexer"));
}

TEST_F(Transfers, AModuleChangeUnloadsTheWindowsWhenItMay) {
  const auto window = world().forms->Load("frmZone");
  window->Show(FormMode::modeless);
  const char* const question =
      "All opened tool windows will be unloaded prior to switching modules.\r"
      "Uncommitted data will lost.  Do you wish to proceed?";
  data.boxes.Expect(question, BoxAnswer::cancel);
  Main().Choose("mnuModuleTuning");
  EXPECT_TRUE(window->IsShown());
  EXPECT_EQ(Form().SelectedModule(), Module::indexer);
  EXPECT_FALSE(Main().CommandChecked("mnuModuleTuning"));
  data.boxes.Expect(question, BoxAnswer::ok);
  Main().Choose("mnuModuleTuning");
  EXPECT_FALSE(window->IsShown());
  EXPECT_EQ(Main().Panel(StatusPanel::module), "Gain Setting/Tuning");
  // No window is open: no question.
  Main().Choose("mnuModuleEditor");
  EXPECT_EQ(Main().Panel(StatusPanel::module), "Parameter Editor");
}

TEST_F(Transfers, AParameterWindowIsKnownByTheFirstWordOfItsCaption) {
  const auto window = world().forms->Load("frmProperties");
  window->SetCaption("Homing Routine Configuration");
  window->Show(FormMode::modeless);
  EXPECT_TRUE(IsToolWindowOpened("Homing"));
  EXPECT_FALSE(IsToolWindowOpened("OverTravel"));
  EXPECT_FALSE(IsToolWindowOpened("frmZone"));
}

}  // namespace
}  // namespace velmoor
