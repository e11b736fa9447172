// A project in a folder that its user cannot write.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "Velmoorctl.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kUser = 61001;

class ReadOnlyFolder : public Velmoorctl {
 protected:
  void SetUp() override {
    fs::permissions(world.folder.Path(), fs::perms(0755));
    for (const char* const name : {"given", "state", "run"}) {
      fs::create_directory(world.folder.At(name));
    }
    project = world.folder.At("given/a.spj");
    ASSERT_EQ(Run({"new", project}), 0);
    fs::permissions(project, fs::perms(0600));
    world.world.catalogueCopyDirectory = world.folder.At("run");
    world.world.workDirectory = world.folder.At("state/work");
    before = world.files.ReadAll(project);
    fs::permissions(world.folder.At("given"), fs::perms(0555));
    // The superuser may write anything, so it acts as another one.
    if (geteuid() != 0) return;
    for (const char* const name : {"given/a.spj", "state", "run"}) {
      ASSERT_EQ(chown(world.folder.At(name).c_str(), kUser, kUser), 0);
    }
    ASSERT_EQ(seteuid(kUser), 0);
  }
  void TearDown() override {
    if (getuid() == 0) {
      EXPECT_EQ(seteuid(0), 0);
    }
    fs::permissions(world.folder.At("given"), fs::perms(0755));
    EXPECT_EQ(world.files.ReadAll(project), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(world.folder.At("given")), {}), 1);
  }

  static constexpr const char* kNote =
      "The folder of project a.spj cannot be written: changes can be saved in another folder "
      "only.\n";
  std::string before;
};

TEST_F(ReadOnlyFolder, IsShownComparedAndDownloaded) {
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_EQ(err.str(), kNote);
  EXPECT_TRUE(out.str().starts_with("step,")) << out.str();
  EXPECT_EQ(Run({"download", project, "--port", "x", "--yes"}), 0) << err.str();
  EXPECT_NE(err.str().find("cannot be noted in the project file!\n" + project), std::string::npos)
      << err.str();
  EXPECT_NE(err.str().find("Download All complete!\n"), std::string::npos) << err.str();
  EXPECT_EQ(Run({"compare", project, "--port", "x"}), 0) << err.str();
}

TEST_F(ReadOnlyFolder, RefusesOnlyToBeSavedThere) {
  EXPECT_EQ(Run({"set", project, "Pn100=55"}), 1);
  EXPECT_EQ(err.str(), std::string(kNote) + "Project a.spj cannot be saved in its folder!\n" +
                           project + ": Permission denied\nSave it in another one.\n");
}

// What would be read could not be kept: nothing is read.
TEST_F(ReadOnlyFolder, RefusesAnUploadBeforeItsFirstLine) {
  line.Amplifier('0')->ForgetWhatWasAsked();
  EXPECT_EQ(Run({"upload", project, "--port", "x", "--yes"}), 1);
  EXPECT_EQ(err.str(), std::string(kNote) + "Project a.spj cannot be saved in its folder!\n" +
                           project + ": Permission denied\nSave it in another one.\n");
  EXPECT_TRUE(line.Amplifier('0')->Journal().empty());
}

// What lies in the place of the user's own while a command runs.
std::vector<fs::perms> seen;

bool LookAround() {
  seen.clear();
  for (const auto& entry : fs::directory_iterator(world().workDirectory)) {
    seen.push_back(entry.status().permissions());
  }
  return false;
}

// Nobody else may read what the project hides, and nothing of it stays.
TEST_F(ReadOnlyFolder, IsWorkedOnInAPlaceOfTheUsersOwn) {
  ASSERT_EQ(Run({"compare", project, "--port", "x"}, LookAround), 1);
  EXPECT_EQ(seen, std::vector{fs::perms(0600)});
  (void)LookAround();
  EXPECT_EQ(seen, std::vector<fs::perms>{});
  // A home that cannot be used leaves the process's own place.
  world.world.workDirectory = "/proc/velmoor";
  EXPECT_EQ(Run({"show", project, "index"}), 0) << err.str();
}

}  // namespace
}  // namespace velmoor
