// Project files and the recent list.

#include "AppSession.h"
#include "app/RecentFiles.h"
#include "platform/sqlcipher/Engine.h"
#include "tools/ParameterGrid.h"

namespace velmoor {
namespace {

class ProjectFiles : public AppSession {
 protected:
  void SetUp() override {
    path = data.MakeProject("line1.spj");
    ASSERT_TRUE(Start(path));
  }
  void AnswerDialog(const std::string& name) {
    data.dialogs.answers.push_back(data.folder.At(name));
  }
};

constexpr const char* kReopen =
    "Reopening active project will restore any unsaved changes to previously saved values!\r"
    "Do you wish to continue?";

TEST_F(ProjectFiles, NewMakesAProjectFromTheTemplate) {
  AnswerDialog("press.spj");
  Main().Choose("mnuFileNew");
  EXPECT_EQ(Main().Caption(), "Velmoor - press");
  EXPECT_EQ(Status(), "System Status: Project 'press' opened.");
  EXPECT_EQ(data.dialogs.shown.back().request.title, "New Project");
  EXPECT_EQ(data.dialogs.shown.back().request.defaultSuffix, "spj");
  EXPECT_FALSE(data.dialogs.shown.back().askBeforeOverwrite);
  EXPECT_FALSE(std::filesystem::exists(data.folder.At("line1.tmp")));
}

TEST_F(ProjectFiles, NewRefusesAnExistingNameAndTouchesNothing) {
  const auto before = data.files.ReadAll(path);
  data.dialogs.answers.push_back(path);
  Main().Choose("mnuFileNew");
  EXPECT_EQ(Boxes(), Texts{"Project name already exists!  Cannot create new project!"});
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  EXPECT_EQ(data.files.ReadAll(path), before);
}

TEST_F(ProjectFiles, ARefusedNewLeavesItsFileAndTheOldProject) {
  Project().SetNeedsSaving(true);
  AnswerDialog("press.spj");
  data.boxes.Expect("has not been saved yet.", BoxAnswer::cancel);
  Main().Choose("mnuFileNew");
  EXPECT_TRUE(std::filesystem::exists(data.folder.At("press.spj")));
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
  EXPECT_TRUE(Main().command("mnuTools").Visible());
}

TEST_F(ProjectFiles, NewInAReadOnlyFolderSaysWhy) {
  data.dialogs.answers.push_back("/proc/press.spj");
  Main().Choose("mnuFileNew");
  const Texts boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_TRUE(boxes[0].starts_with("New Project File Error: ")) << boxes[0];
  EXPECT_EQ(Main().Caption(), "Velmoor - line1");
}

TEST_F(ProjectFiles, AForeignFileIsRefusedInTheWordsOfEachWay) {
  data.files.WriteDurably(data.folder.At("foreign.spj"), std::string(5000, 'x'));
  AnswerDialog("foreign.spj");
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Boxes(),
            Texts{"Error reading databases!\rthe file has another password or is no database of "
                  "this program\rProject 'foreign.spj' cannot be opened."});
  // Two blanks behind the word.
  EXPECT_EQ(Status(),
            "System Status: Project  '" + data.folder.At("foreign.spj") + "' cannot be opened.");
  instance.deliver(data.folder.At("missing.spj"));
  EXPECT_EQ(Boxes(),
            Texts{"Project file missing.spj cannot be found at " + data.folder.At("missing.spj") +
                  "!\rProject 'missing.spj' cannot be opened."});
}

// A bad file costs nothing that is open, whichever way it was named.
TEST_F(ProjectFiles, ABadFileLeavesTheProjectAndTheConnection) {
  const std::string foreign = data.folder.At("foreign.spj");
  data.files.WriteDurably(foreign, std::string(5000, 'x'));
  Main().Choose("mnuToolsOnline");
  Main().Choose("mnuToolsIndexerJog");
  const auto* const open = &Project();
  Project().SetNeedsSaving(true);
  const std::function<void()> ways[] = {[&] {
                                          AnswerDialog("foreign.spj");
                                          Main().Choose("mnuFileOpen");
                                        },
                                        [&] { instance.deliver(foreign); }};
  for (const auto& way : ways) {
    (void)Boxes();
    way();
    EXPECT_EQ(Boxes().size(), 1U) << "the refusal, and no question";
    EXPECT_EQ(&Project(), open);
    EXPECT_TRUE(Project().NeedsSaving());
    EXPECT_TRUE(Project().IsShown(Tool::jog));
    EXPECT_TRUE(Form().IsOnline());
    EXPECT_TRUE(port.IsOpen());
  }
}

TEST_F(ProjectFiles, ALinkToTheOpenProjectIsTheOpenProject) {
  const std::string link = data.folder.At("link.spj");
  std::filesystem::create_symlink(path, link);
  data.dialogs.answers.push_back(link);
  data.boxes.Expect(kReopen, BoxAnswer::cancel);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Status(), "System Status: Project 'line1' opened.");
}

TEST_F(ProjectFiles, SavingOverAFileThatChangedSinceAsks) {
  constexpr const char* kQuestion =
      "Another program has changed line1.spj since it was opened!\rSaving replaces what it has "
      "written.\r\rDo you wish to save all the same?";
  const std::string others = data.files.ReadAll(path) + "x";
  data.files.WriteDurably(path, others);
  Project().SetNeedsSaving(true);
  data.boxes.Expect(kQuestion, BoxAnswer::no);
  Main().Choose("mnuFileSave");
  EXPECT_EQ(data.boxes.shown.back().kind, BoxKind::exclamation);
  EXPECT_EQ(data.files.ReadAll(path), others);
  EXPECT_TRUE(Project().NeedsSaving());
  // At the end too: No keeps the window.
  data.boxes.Expect("has not been saved yet.", BoxAnswer::yes);
  data.boxes.Expect(kQuestion, BoxAnswer::no);
  EXPECT_FALSE(Main().Close());
  data.boxes.Expect(kQuestion, BoxAnswer::yes);
  Main().Choose("mnuFileSave");
  EXPECT_NE(data.files.ReadAll(path), others);
  EXPECT_FALSE(Project().NeedsSaving());
}

TEST_F(ProjectFiles, OneOfALaterVersionIsReadWhereTheUserWishes) {
  const std::string later = data.MakeProject("later.spj");
  {
    sqlcipher::Connection tool(later, sqlcipher::OpenMode::create, "nurvex");
    tool.Execute("UPDATE tblMisc SET value='3' WHERE PropertyName='format'");
  }
  const std::string before = data.files.ReadAll(later);
  const char* const question =
      "Project later.spj was made by a newer version of Velmoor!\r"
      "The file's format is 3, and this version knows 2 at most.\r\rDo you wish to read it?";
  AnswerDialog("later.spj");
  data.boxes.Expect(question, BoxAnswer::no);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Main().Caption(), "Velmoor");
  EXPECT_EQ(Status(), "System Status: Project  '" + later + "' cannot be opened.");
  AnswerDialog("later.spj");
  data.boxes.Expect(kReopen, BoxAnswer::ok);
  data.boxes.Expect(question, BoxAnswer::yes);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Main().Caption(), "Velmoor - later (read only)");
  EXPECT_EQ(Boxes().size(), 3U) << "the questions alone";
  Main().Choose("mnuFileSave");
  Main().Choose("mnuFileSaveAs");
  const std::string refusal =
      "Project later.spj was made by a newer version of Velmoor and is open for reading only.\rIt "
      "cannot be saved.";
  EXPECT_EQ(Boxes(), (Texts{"frmMain.mnuFileSave_Click: " + refusal,
                            "SaveAs Project File Error: " + refusal}));
  EXPECT_TRUE(Main().Close());
  EXPECT_TRUE(Boxes().empty()) << "nothing is unsaved";
  EXPECT_EQ(data.files.ReadAll(later), before);
}

TEST_F(ProjectFiles, ReopeningTheOpenProjectAsksFirst) {
  data.dialogs.answers.push_back(path);
  data.boxes.Expect(kReopen, BoxAnswer::cancel);
  Main().Choose("mnuFileOpen");
  EXPECT_EQ(Status(), "System Status: Project 'line1' opened.");
  data.dialogs.answers.push_back(path);
  data.boxes.Expect(kReopen, BoxAnswer::ok);
  Main().Choose("mnuFileOpen");
  EXPECT_TRUE(std::filesystem::exists(data.folder.At("line1.tmp")));
  const auto& texts = Main().statusTexts;
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "System Status: Project 'line1' closed."), 1);
}

TEST_F(ProjectFiles, SaveWorksOnlyOnChangesAndClearsTheMark) {
  Main().Choose("mnuFileSave");
  EXPECT_EQ(Status(), "System Status: Project 'line1' opened.");
  Project().SetNeedsSaving(true);
  PauseInSec(1);
  EXPECT_TRUE(Main().Changed());
  Main().Choose("mnuFileSave");
  EXPECT_EQ(Status(), "System Status: Project 'line1' saved.");
  EXPECT_FALSE(Main().Changed());
}

// An edit of a parameter that waits for Apply, and a text that is still being typed in another
// window.
TEST_F(ProjectFiles, SaveOffersWhatWasEditedAndNotApplied) {
  const struct {
    BoxAnswer answer;
    const char* limit;  // what the file has afterwards
    bool saved;
  } kCases[] = {{BoxAnswer::cancel, "99999.999", false},
                {BoxAnswer::no, "99999.999", false},
                {BoxAnswer::yes, "5.000", true}};
  Main().Choose("mnuToolsIndexerOverTravel");
  Main().Choose("mnuToolsIndexerJog");
  clsHX7OverTravel& tool = Project().OverTravel();
  headless::HeadlessGrid& limits = data.forms.Get("frmProperties").grid("vsFG");
  ASSERT_TRUE(limits.EditCell(tool.FindRow("Pn81B"), ParameterGrid::kValue, "5"));
  headless::HeadlessGrid& speeds = data.forms.Get("frmJog").grid("vsFG");
  ASSERT_TRUE(speeds.GoTo(1, 1) && speeds.TypeInCell("7"));
  const std::string words =
      "What was edited in these windows was not applied yet:\rOver Travel Parameters\rJog "
      "Table\r\rDo you wish to apply and save it?  No saves the project without it.";
  for (const auto& entry : kCases) {
    SCOPED_TRACE(entry.limit);
    data.boxes.Expect(words, entry.answer);
    Main().Choose("mnuFileSave");
    EXPECT_EQ(Project().Parameters().Get("Pn81B").text, entry.limit);
    EXPECT_EQ(Project().Jog().Stored(1).cells[0], entry.saved ? "7.000" : "");
    EXPECT_EQ(Status() == "System Status: Project 'line1' saved.", entry.saved);
  }
  (void)Boxes();
  ASSERT_TRUE(speeds.GoTo(1, 1) && speeds.TypeInCell("fast"));
  Project().SetNeedsSaving(true);
  Main().Choose("mnuFileSave");
  EXPECT_EQ(Boxes().size(), 1U);
  EXPECT_TRUE(Project().NeedsSaving()) << "nothing is saved beside a text that is refused";
}

TEST_F(ProjectFiles, SaveAsGoesOnUnderTheNewNameAndStaysUnsaved) {
  Project().SetNeedsSaving(true);
  AnswerDialog("press.spj");
  Main().Choose("mnuFileSaveAs");
  EXPECT_TRUE(data.dialogs.shown.back().askBeforeOverwrite);
  EXPECT_EQ(Main().Caption(), "Velmoor - press");
  EXPECT_EQ(Status(), "System Status: Project Saved As 'press'");
  EXPECT_EQ(Main().RecentEntries().front(), "&1 " + data.folder.At("press.spj"));
  EXPECT_TRUE(Project().NeedsSaving());
}

TEST_F(ProjectFiles, TheSaveQuestionSavesDropsOrStays) {
  const std::string other = data.MakeProject("line2.spj");
  for (const BoxAnswer answer : {BoxAnswer::cancel, BoxAnswer::no, BoxAnswer::yes}) {
    Project().SetNeedsSaving(true);
    const std::string caption = Main().Caption();
    data.boxes.Expect("has not been saved yet.", answer);
    instance.deliver(caption == "Velmoor - line1" ? other : path);
    EXPECT_EQ(Main().Caption() == caption, answer == BoxAnswer::cancel);
  }
}

TEST_F(ProjectFiles, ARecentProjectThatIsGoneLeavesTheList) {
  const std::string other = data.MakeProject("line2.spj");
  instance.deliver(other);
  std::filesystem::remove(path);
  Main().ChooseRecent(1);
  EXPECT_EQ(data.boxes.shown.size(), 1u);
  EXPECT_EQ(Status(), "System Status: Project 'line1.spj' cannot be opened.");
  EXPECT_EQ(Main().RecentEntries(), (Texts{"&1 " + other, "", "", "", ""}));
}

TEST_F(ProjectFiles, ARefusedRecentProjectStaysInTheList) {
  instance.deliver(data.MakeProject("line2.spj"));
  Project().SetNeedsSaving(true);
  data.boxes.Expect("has not been saved yet.", BoxAnswer::cancel);
  Main().ChooseRecent(1);
  EXPECT_EQ(Main().RecentEntries().at(1), "&2 " + path);
}

// ---- the list alone

TEST(RecentFilesTest, TheSixthDropsTheOldestAndAListedOneMovesToTheFront) {
  const TestWorld test;
  RecentFiles list;
  for (const char name : std::string("abcdef")) list.Add(std::string("/projects/") + name + ".spj");
  list.Add("/projects/d.spj");
  list.Add("");
  EXPECT_EQ(list.Captions(), (std::vector<std::string>{"&1 /projects/d.spj", "&2 /projects/f.spj",
                                                       "&3 /projects/e.spj", "&4 /projects/c.spj",
                                                       "&5 /projects/b.spj"}));
  list.Remove(1);
  list.Save();
  RecentFiles again;
  again.Load();
  EXPECT_EQ(again.Captions(),
            (std::vector<std::string>{"&1 /projects/d.spj", "&2 /projects/e.spj",
                                      "&3 /projects/c.spj", "&4 /projects/b.spj", ""}));
}

TEST(RecentFilesTest, OnlyProjectPathsOfEightCharactersAreTaken) {
  TestWorld test;
  test.settings.values = {{"RecentFile1", "n/a"},
                          {"RecentFile2", "/projects/notes.txt"},
                          {"RecentFile3", "/w/A.SPJ"},
                          {"RecentFile4", "/aa.spj"}};
  RecentFiles list;
  list.Load();
  EXPECT_EQ(list.Captions(), (std::vector<std::string>{"", "", "&3 /w/A.SPJ", "", ""}));
  list.Add("/projects/b.spj");
  list.Save();
  EXPECT_EQ(test.settings.values["RecentFile2"], "n/a");
}

}  // namespace
}  // namespace velmoor
