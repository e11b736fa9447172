// A project's file that is known by several names, or that others work on at the same time.

#include <filesystem>
#include <fstream>

#include "project/data/MiscSettings.h"
#include "support/ProjectWorld.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;

class ProjectInUse : public ProjectWorld {
 protected:
  void SetUp() override {
    path = world.MakeProject("a.spj");
    fs::create_directory(world.folder.At("elsewhere"));
    link = world.folder.At("elsewhere/link.spj");
    hardLink = world.folder.At("elsewhere/hard.spj");
    fs::create_symlink(path, link);
  }
  // What another program is told that opens the file.
  std::string OthersOpen(const std::string& name) {
    clsHX7Project other;
    other.SetWorkingDirectory(GetFileDirectory(name));
    std::string words;
    (void)other.OpenProject(name, GetFileTitle(name), words);
    return words;
  }
  void Change() {
    project().Jog().SetText(1, 1, "12.0");
    ASSERT_TRUE(project().Jog().ChangeAccepted());
  }
  std::string Bytes(const std::string& name) { return world.files.ReadAll(name); }

  std::string path, link, hardLink;
};

TEST_F(ProjectInUse, IsTheSameByALinkAndByAHardLink) {
  fs::create_hard_link(path, hardLink);
  for (const auto& [first, second] :
       {std::pair{path, link}, {link, path}, {path, hardLink}, {hardLink, link}}) {
    ASSERT_EQ(session.Open(first), "");
    EXPECT_EQ(OthersOpen(second),
              "Project " + GetFileTitle(second) + " is in use by another program!");
    session.Close();
    EXPECT_EQ(session.Open(second), "");
    session.Close();
  }
  EXPECT_EQ(world.folder.Count(), 3) << "the project, the folder and the catalogue's copy";
}

TEST_F(ProjectInUse, ASaveKeepsTheLinkAndTheHold) {
  ASSERT_EQ(session.Open(link), "");
  const std::string before = Bytes(path);
  Change();
  EXPECT_EQ(project().SaveConcern(), "");
  project().Save();
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_NE(Bytes(path), before);
  EXPECT_EQ(OthersOpen(path), "Project a.spj is in use by another program!");
  EXPECT_EQ(project().SaveConcern(), "");
}

TEST_F(ProjectInUse, AFileThatOthersHaveChangedIsNotReplacedUnasked) {
  ASSERT_EQ(session.Open(path), "");
  Change();
  // The same once more is no change.
  world.files.WriteDurably(path, Bytes(path));
  EXPECT_EQ(project().SaveConcern(), "");
  world.files.WriteDurably(path, Bytes(world.MakeProject("other.spj")) + "x");
  const std::string words =
      "Another program has changed a.spj since it was opened!\rSaving replaces what it has "
      "written.";
  EXPECT_EQ(project().SaveConcern(), words);
  project().Save();
  EXPECT_EQ(project().SaveConcern(), "");
  fs::remove(path);
  EXPECT_EQ(project().SaveConcern(), "") << "nothing is lost";
}

// The marks that a download keeps in the file are no saving.
TEST_F(ProjectInUse, MarksLeaveTheConcernAsItIs) {
  ASSERT_EQ(session.Open(path), "");
  session.GoOnline();
  ASSERT_TRUE(project().DownloadParts({Tool::jog}));
  EXPECT_EQ(project().SaveConcern(), "") << "its own marks";
  const std::string other = world.folder.At("other.spj");
  {
    fs::copy_file(path, other);
    WriteMiscSetting(other, "testrunspeed", "77");
    world.files.ReplaceDurably(other, path);
  }
  project().Jog().Mark({1, 2});
  project().SaveMarks();
  EXPECT_NE(project().SaveConcern(), "");
  EXPECT_EQ(ReadMiscSetting(path, "testrunspeed"), "77");
}

TEST_F(ProjectInUse, AHardLinkIsToldBeforeASavePartsIt) {
  fs::create_hard_link(path, hardLink);
  ASSERT_EQ(session.Open(path), "");
  const std::string before = Bytes(path);
  session.GoOnline();
  // A download asks, for its marks would part the two.
  world.boxes.Expect("a hard link, which would be parted", BoxAnswer::no);
  project().Jog().Mark({1});
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(fs::hard_link_count(path), 2u);
  EXPECT_EQ(project().SaveConcern(),
            "a.spj has another name (a hard link)!\rSaving gives this name alone what is new; the "
            "other keeps what was saved before.");
  Change();
  project().Save();
  EXPECT_EQ(Bytes(hardLink), before);
  EXPECT_EQ(project().SaveConcern(), "");
}

TEST_F(ProjectInUse, SaveAsOverAProjectThatOthersHoldIsRefused) {
  const std::string held = world.MakeProject("held.spj");
  const auto lock = world.files.LockPresent(held);
  const std::string before = Bytes(held);
  ASSERT_EQ(session.Open(path), "");
  EXPECT_THROW(project().SaveAs(held), FileError);
  EXPECT_EQ(Bytes(held), before);
  EXPECT_EQ(project().FileName(), path);
  // Its own file by another name is no other project.
  project().SaveAs(link);
  EXPECT_TRUE(fs::is_symlink(link));
}

}  // namespace
}  // namespace velmoor
