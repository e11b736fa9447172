// The start, one instance, hand-over, and the end.

#include "AppSession.h"

namespace velmoor {
namespace {

constexpr const char* kRunning =
    "Velmoor is already running!\rDo you wish to close any existing opened project and open the "
    "selected project?";

TEST(ElapsedNSecondsTest, CountsInMinutesAndOnlyTheMinuteWraps) {
  const auto elapsed = [](int m1, int s1, int m2, int s2) {
    WallTime first, second;
    first.minute = m1;
    first.second = s1;
    second.minute = m2;
    second.second = s2;
    return ElapsedNSeconds({first, second}, 1);
  };
  EXPECT_FALSE(elapsed(10, 0, 10, 59));
  EXPECT_TRUE(elapsed(10, 0, 11, 0));
  EXPECT_FALSE(elapsed(10, 30, 11, 29));
  EXPECT_TRUE(elapsed(59, 30, 0, 30));
  EXPECT_FALSE(elapsed(59, 30, 0, 29));
}

TEST_F(AppSession, AStartOpensTheProjectOfTheCommandLine) {
  path = data.MakeProject("line1.spj");
  const auto before = data.clock.Monotonic();
  ASSERT_TRUE(Start("\"" + path + "\""));
  // Only the two pauses that a start takes, and the time on the line.
  EXPECT_GE(data.clock.Monotonic() - before, std::chrono::seconds(2));
  EXPECT_EQ(data.forms.shownNames, (Texts{"frmSplash", "frmInitialSettings"}));
  EXPECT_FALSE(data.forms.IsOpen("frmSplash"));
  EXPECT_FALSE(data.forms.IsOpen("frmInitialSettings"));
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  EXPECT_EQ(Status(), "System Status: Project 'line1' opened.");
  EXPECT_EQ(Main().RecentEntries().front(), "&1 " + path);
  EXPECT_EQ(Main().Panel(StatusPanel::module), "Indexer Setup");
  EXPECT_EQ(std::filesystem::current_path(), data.folder.Path());
  EXPECT_TRUE(Main().command("mnuTools").Visible());
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(AppSession, AStartWithoutANameOffersTheOpenDialogInTheLastDirectory) {
  data.settings.values["RecentFile1"] = "/srv/projects/press.spj";
  data.dialogs.answers.push_back(std::nullopt);
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(data.dialogs.shown.at(0).request.title, "Open Project");
  EXPECT_EQ(data.dialogs.shown.at(0).request.initialDirectory, "/srv/projects");
  EXPECT_EQ(Main().Caption(), "Velmoor");
  for (const char* const name : {"mnuModule", "mnuToolsMechanicalSystem", "mnuToolsUpload",
                                 "mnuToolsDownload", "mnuToolsReset", "mnuFileSave"}) {
    EXPECT_FALSE(Main().command(name).Visible()) << name;
  }
}

TEST_F(AppSession, AMissingCatalogueEndsTheStartBeforeAnyWindow) {
  data.world.appDirectory = data.folder.Path();
  EXPECT_FALSE(Start(""));
  EXPECT_EQ(Boxes(),
            Texts{"Error!  " + data.folder.At("IdeInfo.mdb") + " file was not found in its path!"});
  EXPECT_TRUE(data.forms.shownNames.empty());
  EXPECT_FALSE(instance.claimed);
}

TEST_F(AppSession, TheMenusAreOfferedOnlyAfterTheSessionIsBuilt) {
  path = data.MakeProject("line1.spj");
  constexpr std::array kNames{"mnuFile", "mnuFileOpen", "mnuToolsOnline", "mnuToolsSimulated"};
  DuringStart([&] {
    for (const char* const name : kNames) EXPECT_FALSE(Main().command(name).Enabled()) << name;
    EXPECT_FALSE(data.forms.Get("frmStart").button("cmdOpen").Enabled());
  });
  ASSERT_TRUE(Start(path));
  for (const char* const name : kNames) EXPECT_TRUE(Main().command(name).Enabled()) << name;
}

TEST_F(AppSession, StoredSettingsAreTakenAndBadOnesReplaced) {
  data.settings.values = {{"Port", "3"},      {"Rate", "38400"},
                          {"Axis", "b"},      {"LastMotorSize", "030"},
                          {"MainLeft", "12"}, {"MainWidth", "wide"}};
  port.Unplug();
  data.dialogs.answers.push_back(std::nullopt);
  ASSERT_TRUE(Start(""));
  EXPECT_EQ(Form().COM(), 3);
  EXPECT_EQ(Form().Axis(), "B");
  EXPECT_EQ(Form().LastMotorSize(), "30");
  EXPECT_EQ(Main().geometry, (WindowGeometry{12, 100, 1000, 700}));
}

// ---- a second start

TEST_F(AppSession, ASecondStartWithoutANameComesForwardUnasked) {
  instance.otherRuns = true;
  EXPECT_FALSE(Start(""));
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_TRUE(instance.sent.empty());
  EXPECT_EQ(instance.activations, 1);
}

TEST_F(AppSession, ASecondStartHandsItsNameOverAsAnAbsoluteOne) {
  instance.otherRuns = true;
  std::filesystem::current_path(data.folder.Path());
  data.boxes.Expect(kRunning, BoxAnswer::ok);
  EXPECT_FALSE(Start("\"line1.spj\""));
  EXPECT_EQ(instance.sent, Texts{data.folder.At("line1.spj")});
  EXPECT_EQ(instance.sendLimit, std::chrono::milliseconds(5000));
  EXPECT_EQ(instance.activations, 1);
}

TEST_F(AppSession, ARefusedHandOverOnlyComesForward) {
  instance.otherRuns = true;
  data.boxes.Expect(kRunning, BoxAnswer::cancel);
  EXPECT_FALSE(Start("line1.spj"));
  EXPECT_TRUE(instance.sent.empty());
  EXPECT_EQ(instance.activations, 1);
}

TEST_F(AppSession, AHiddenInstanceIsSentASingleZeroByte) {
  instance.otherRuns = true;
  instance.otherVisible = false;
  data.boxes.Expect(kRunning, BoxAnswer::ok);
  EXPECT_FALSE(Start(""));
  EXPECT_EQ(instance.sent, Texts{std::string(1, '\0')});
}

// Where nobody listens, the first one is just beginning or ending.
TEST_F(AppSession, NobodyBehindTheLockEndsTheSecondStartSilentlyAndASilentOneIsTold) {
  instance.otherRuns = true;
  instance.other = Running::nobody;
  EXPECT_FALSE(Start("line1.spj"));
  EXPECT_EQ(Boxes(), Texts{});
  instance.other = Running::silent;
  EXPECT_FALSE(Start("line1.spj"));
  EXPECT_EQ(Boxes(), Texts{"Velmoor is already running, but does not answer!\r"
                           "Wait until it does, or end it, and start Velmoor again."});
  EXPECT_EQ(instance.activations, 0);
}

// ---- messages to the running instance

TEST_F(AppSession, AMessageOpensItsProjectWithQuotesOrWithout) {
  path = data.MakeProject("line1.spj");
  const std::string other = data.MakeProject("line2.spj");
  ASSERT_TRUE(Start(path));
  instance.deliver("  \"" + other + "\" ");
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
  instance.deliver(path);
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
}

TEST_F(AppSession, AZeroByteFailsAsAnyBadName) {
  path = data.MakeProject("line1.spj");
  ASSERT_TRUE(Start(path));
  instance.deliver(std::string(1, '\0'));
  ASSERT_EQ(data.boxes.shown.size(), 1u);
  EXPECT_NE(data.boxes.shown[0].text.find("cannot be opened."), std::string::npos);
  EXPECT_EQ(data.boxes.shown[0].kind, BoxKind::critical);
}

TEST_F(AppSession, AMessageWithABadNameLeavesWhatIsOpen) {
  path = data.MakeProject("line1.spj");
  ASSERT_TRUE(Start(path));
  const auto* const open = &Project();
  Project().SetNeedsSaving(true);
  data.files.WriteDurably(data.folder.At("foreign.spj"), "not a database");
  std::filesystem::create_directory(data.folder.At("folder.spj"));
  for (const char* const name : {"none.spj", "foreign.spj", "folder.spj", "line1.tmp"}) {
    instance.deliver(data.folder.At(name));
    ASSERT_EQ(data.boxes.shown.size(), 1U) << name;
    EXPECT_NE(data.boxes.shown[0].text.find("cannot be opened."), std::string::npos) << name;
    data.boxes.shown.clear();
    EXPECT_EQ(&Project(), open) << name;
    EXPECT_EQ(Main().Caption(), "Velmoor - line1") << name;
    EXPECT_TRUE(Project().NeedsSaving()) << name;
    EXPECT_TRUE(std::filesystem::exists(data.folder.At("line1.tmp"))) << name;
  }
}

TEST_F(AppSession, AMessageDuringTheStartWaitsForItsEnd) {
  path = data.MakeProject("line1.spj");
  const std::string other = data.MakeProject("line2.spj");
  DuringStart([&] { instance.deliver(other); });
  ASSERT_TRUE(Start(path));
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(AppSession, AMessageUnderABoxWaitsForItsAnswer) {
  path = data.MakeProject("line1.spj");
  const std::string other = data.MakeProject("line2.spj");
  ASSERT_TRUE(Start(path));
  data.boxes.Expect("some question", BoxAnswer::ok, [&] {
    instance.deliver(other);
    EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  });
  EXPECT_TRUE(AskOkCancel("some question"));
  PauseInSec(1);
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
}

// ---- the end

TEST_F(AppSession, AnExitStoresTheSettingsAndRemovesTheWorkingFile) {
  StartOnline();
  EXPECT_TRUE(std::filesystem::exists(data.folder.At("line1.tmp")));
  Main().geometry = {5, 6, 700, 500};
  Main().Choose("mnuFileExit");
  YieldEvents();
  EXPECT_EQ(closings, 1);
  module->Terminate();
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(instance.claimed);
  EXPECT_FALSE(std::filesystem::exists(data.folder.At("line1.tmp")));
  EXPECT_FALSE(std::filesystem::exists(data.folder.At("tempIdeInfo.mdb")));
  EXPECT_EQ(data.settings.values["MainTop"], "6");
  EXPECT_EQ(data.settings.values["MainHeight"], "500");
  EXPECT_EQ(data.settings.values["LastMotorSize"], "400");
  EXPECT_EQ(gMainForm, nullptr);
}

TEST_F(AppSession, AnExitCancelledAtTheSaveQuestionStaysOfflineWithoutTheLock) {
  StartOnline();
  Project().SetNeedsSaving(true);
  data.boxes.Expect("Project line1 has not been saved yet.\rDo you wish to save?",
                    BoxAnswer::cancel);
  EXPECT_FALSE(Main().Close());
  EXPECT_TRUE(Main().IsVisible());
  EXPECT_EQ(Status(), "System Status: Offline");
  EXPECT_FALSE(Form().IsOnline());
  EXPECT_FALSE(instance.claimed);
  EXPECT_EQ(instance.deliver, nullptr);
  EXPECT_EQ(data.settings.values.count("MainTop"), 0u);
}

TEST_F(AppSession, AnExitWhileReducedToAnIconKeepsTheStoredPlace) {
  path = data.MakeProject("line1.spj");
  data.settings.values["MainTop"] = "77";
  ASSERT_TRUE(Start(path));
  Main().geometry = {-32000, -32000, 160, 24};
  Main().minimised = true;
  EXPECT_TRUE(Main().Close());
  EXPECT_EQ(data.settings.values["MainTop"], "77");
  EXPECT_EQ(data.settings.values["Rate"], "9600");
}

TEST_F(AppSession, AnExitWaitsAtMostTenSecondsForMonitoring) {
  StartOnline();
  int looks = 0;
  Form().SetMonitoringNotDone([&] {
    ++looks;
    return true;
  });
  const auto before = data.clock.Monotonic();
  EXPECT_TRUE(Main().Close());
  EXPECT_EQ(looks, 10);
  EXPECT_GE(data.clock.Monotonic() - before, std::chrono::seconds(10));
  EXPECT_LT(data.clock.Monotonic() - before, std::chrono::seconds(11));
}

TEST_F(AppSession, ACloseDuringTheStartIsCarriedOutAtItsEnd) {
  path = data.MakeProject("line1.spj");
  bool refused = false;
  DuringStart([&] { refused = !Main().Close(); });
  ASSERT_TRUE(Start(path));
  EXPECT_TRUE(refused);
  EXPECT_EQ(closings, 1);
}

}  // namespace
}  // namespace velmoor
