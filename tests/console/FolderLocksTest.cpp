// The program itself in a folder that has no locks, or does not keep them, as one of a network may.
#include <cstdlib>
#include <filesystem>

#include "Velmoorctl.h"
#include "platform/posix/PosixFiles.h"

namespace velmoor {
namespace {

class FolderLocks : public Velmoorctl {
 protected:
  // Runs the program on the project; what it told is in `told`.
  int RunWith(const std::string& locks, const std::string& command) {
    const std::string log = world.folder.At("log");
    const std::string folder = std::filesystem::canonical(world.folder.At("")).string();
    const std::string typed = "VELMOOR_TEST_FOLDER=" + folder + " VELMOOR_TEST_LOCKS=" + locks +
                              " LD_PRELOAD=" + VELMOOR_LOCK_MODULE + " " + VELMOORCTL + " " +
                              command + " >" + log + " 2>&1";
    const int status = std::system(typed.c_str());
    told = world.files.ReadAll(log);
    return WEXITSTATUS(status);
  }
  std::string told;
};

TEST_F(FolderLocks, ThatAreRefusedOrNotKeptHaveWordsOfTheirOwn) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "A sanitizer wants to be loaded first: not looked at here.";
#endif
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string before = world.files.ReadAll(project);
  EXPECT_EQ(RunWith("refused", "set " + project + " Pn100=77"), 1);
  EXPECT_NE(told.find("a.tmp: the folder keeps no locks, so two programs could write the file at "
                      "once. Work on a copy in a folder of this computer."),
            std::string::npos)
      << told;
  EXPECT_EQ(world.files.ReadAll(project), before);
  EXPECT_EQ(RunWith("lying", "set " + project + " Pn100=77"), 0) << told;
  EXPECT_NE(told.find("The folder of the project takes locks and does not keep them: take care "
                      "that no other program works on the project at the same time."),
            std::string::npos)
      << told;
  EXPECT_EQ(Run({"show", project, "index"}), 0);
  EXPECT_EQ(err.str(), "");
}

TEST(NetworkFolders, AreKnownByTheNumberOfTheirFileSystem) {
  const std::pair<std::uint32_t, const char*> cases[] = {
      {0x6969, "NFS"}, {0xFF534D42, "SMB"}, {0xFE534D42, "SMB"}, {0xEF53, ""}, {0x01021994, ""}};
  for (const auto& [type, name] : cases) EXPECT_EQ(posix::NetworkFileSystem(type), name) << type;
}

}  // namespace
}  // namespace velmoor
