#include "platform/posix/PosixFiles.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "support/TemporaryFolder.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

class PosixFilesTest : public testing::Test {
 protected:
  [[nodiscard]] std::string At(const std::string& name) const { return folder_.At(name); }
  std::string Put(const std::string& name, const std::string& bytes) {
    files_.WriteDurably(At(name), bytes);
    return At(name);
  }
  TemporaryFolder folder_;
  PosixFiles files_;
};

// What `work` is refused with, by a user who is not above permissions.
template <typename Work>
std::string RefusalAsUser(Work work) {
  const bool superuser = geteuid() == 0;
  EXPECT_TRUE(!superuser || seteuid(65534) == 0);
  std::string words;
  try {
    work();
  } catch (const FileError& error) {
    words = error.what();
  }
  EXPECT_TRUE(!superuser || seteuid(0) == 0);
  return words;
}

TEST_F(PosixFilesTest, ReplacingTakesContentsButNotPermissionsAndLeavesNothingElse) {
  const std::string source = Put("template", "new contents");
  fs::permissions(source, fs::perms(0444));
  const std::string target = Put("line1.spj", "old");
  fs::permissions(target, fs::perms(0660));
  Put("line1.spj-journal", "stale");
  const std::string before = files_.Identity(target);
  const mode_t mask = umask(027);
  files_.ReplaceDurably(source, target);
  umask(mask);
  EXPECT_EQ(files_.ReadAll(target), "new contents");
  EXPECT_EQ(fs::status(target).permissions(), fs::perms(0660));
  EXPECT_NE(files_.Identity(target), before);
  EXPECT_EQ(folder_.Count(), 2);
}

TEST_F(PosixFilesTest, ASymbolicLinkKeepsPointing) {
  fs::create_directory(folder_.Path() / "real");
  Put("real/line1.spj", "old");
  fs::create_symlink("real/line1.spj", folder_.Path() / "link.spj");
  fs::create_symlink("link.spj", folder_.Path() / "link2.spj");
  files_.WriteDurably(At("link2.spj"), "new");
  EXPECT_TRUE(fs::is_symlink(At("link.spj")));
  EXPECT_FALSE(fs::is_symlink(At("real/line1.spj")));
  EXPECT_EQ(files_.ReadAll(At("real/line1.spj")), "new");
  EXPECT_TRUE(files_.IsSameFile(At("link2.spj"), At("real/line1.spj")));
}

TEST_F(PosixFilesTest, AFailedReplacementLeavesTheOldFile) {
  const std::string target = Put("line1.spj", "old");
  EXPECT_THROW(files_.ReplaceDurably(At("missing"), target), FileError);
  EXPECT_EQ(files_.ReadAll(target), "old");

  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_THROW(files_.WriteDurably(target, std::string(5000, 'x')), FileError);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(files_.ReadAll(target), "old");
  EXPECT_EQ(folder_.Count(), 1);

  fs::permissions(folder_.Path(), fs::perms(0555));
  const std::string words = RefusalAsUser([&] {
    EXPECT_FALSE(files_.IsWritableDirectory(folder_.Path().string()));
    files_.WriteDurably(target, "new");
  });
  EXPECT_EQ(words, target + ": Permission denied");
  EXPECT_EQ(files_.ReadAll(target), "old");
}

// Each by the name that was asked for, not by that of the helper file.
TEST_F(PosixFilesTest, APlaceThatTakesNoFileIsRefusedByItsName) {
  const auto refusal = [this](const std::string& target) {
    return RefusalAsUser([&] { files_.WriteDurably(target, "new"); });
  };
  const std::string target = Put("line1.spj", "old");
  fs::permissions(folder_.Path(), fs::perms(0777));
  fs::permissions(target, fs::perms(0444));
  EXPECT_EQ(refusal(target), target + ": Permission denied") << "write-protected";
  EXPECT_EQ(files_.ReadAll(target), "old");
  EXPECT_EQ(refusal(At("no/a.pdf")), At("no/a.pdf") + ": No such file or directory");
  fs::create_directory(At("folder"));
  EXPECT_EQ(refusal(At("folder")), At("folder") + ": Is a directory");
  ASSERT_EQ(mkfifo(At("pipe").c_str(), 0666), 0);
  EXPECT_EQ(refusal(At("pipe")), At("pipe") + ": it is no regular file");
  EXPECT_EQ(folder_.Count(), 3);
}

// In a folder that others may write to, a name of ours can be taken before we come.
TEST_F(PosixFilesTest, WhatIsPlantedUnderTheHelperNameStaysAndDoesNotStopASave) {
  const std::string target = Put("line1.spj", "old");
  const std::string outside = Put("outside", "mine");
  const std::string planted = At(".line1.spj.new");
  const std::pair<const char*, std::function<void()>> plants[] = {
      {"pipe", [&] { ASSERT_EQ(mkfifo(planted.c_str(), 0666), 0); }},
      {"link", [&] { fs::create_symlink(outside, planted); }},
      {"hard link", [&] { fs::create_hard_link(outside, planted); }},
      {"folder", [&] { fs::create_directory(planted); }}};
  for (const auto& [name, plant] : plants) {
    SCOPED_TRACE(name);
    fs::permissions(target, fs::perms(0640));
    plant();
    files_.WriteDurably(target, std::string("new over a ") + name);
    EXPECT_EQ(files_.ReadAll(target), std::string("new over a ") + name);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    EXPECT_EQ(files_.ReadAll(outside), "mine");
    EXPECT_TRUE(fs::exists(fs::symlink_status(planted))) << "it is not ours";
    EXPECT_EQ(folder_.Count(), 3);
    fs::remove(planted);
  }
  if (geteuid() != 0) GTEST_SKIP() << "another user's file needs the superuser";
  Put(".line1.spj.new", "");
  ASSERT_EQ(chown(planted.c_str(), 65534, 65534), 0);
  files_.WriteDurably(target, "last");
  struct stat status {};
  ASSERT_EQ(stat(target.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 0U) << "the project does not become the other user's";
}

TEST_F(PosixFilesTest, AFolderOfOursIsNoLinkAndNobodyElses) {
  const std::string project = Put("line1.spj", "project");
  const std::string folder = At("line1.history");
  const std::string elsewhere = At("elsewhere");
  fs::create_directory(elsewhere);
  const mode_t mask = umask(0);
  for (const auto& [file, expected] : {std::pair{0600, 0700}, {0640, 0750}, {0664, 0775}}) {
    fs::permissions(project, fs::perms(file));
    files_.MakeOwnFolder(folder, project);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms(expected));
    files_.MakeOwnFolder(folder, project);
    fs::remove(folder);
  }
  umask(mask);
  const std::pair<const char*, std::function<void()>> plants[] = {
      {"link", [&] { fs::create_directory_symlink(elsewhere, folder); }},
      {"link to nothing", [&] { fs::create_symlink(At("none"), folder); }},
      {"file", [&] { Put("line1.history", ""); }},
      {"pipe", [&] { ASSERT_EQ(mkfifo(folder.c_str(), 0666), 0); }}};
  for (const auto& [name, plant] : plants) {
    SCOPED_TRACE(name);
    plant();
    EXPECT_THROW(files_.MakeOwnFolder(folder, project), FileError);
    EXPECT_TRUE(fs::is_empty(elsewhere));
    EXPECT_FALSE(fs::exists(At("none")));
    fs::remove(folder);
  }
  if (geteuid() != 0) GTEST_SKIP() << "another user's folder needs the superuser";
  fs::create_directory(folder);
  ASSERT_EQ(chown(folder.c_str(), 65534, 65534), 0);
  EXPECT_THROW(files_.MakeOwnFolder(folder, project), FileError);
  // Whose the project is may keep its folder.
  ASSERT_EQ(chown(project.c_str(), 65534, 65534), 0);
  EXPECT_NO_THROW(files_.MakeOwnFolder(folder, project));
}

TEST_F(PosixFilesTest, AFileGrowsUnderANewNameAndIsReadByLines) {
  const std::string project = Put("line1.spj", "project");
  fs::permissions(project, fs::perms(0640));
  const std::string path = At("a.csv");
  std::string read;
  const auto lines = [&](const std::string& file) {
    read.clear();
    files_.ReadLines(file, [&](std::string_view line) {
      read += "[" + std::string(line) + "]";
      return line != "end";
    });
    return read;
  };
  {
    const auto file = files_.Begin(path, project);
    file->Add("one\r\n\ntw");
    EXPECT_EQ(lines(path), "[one][]") << "half a line is none";
    file->Add("o\nend\nbehind\n");
  }
  EXPECT_EQ(lines(path), "[one][][two][end]");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
  EXPECT_THROW((void)files_.Begin(path, project), FileError) << "the name is taken";
  fs::create_symlink(At("none"), At("link.csv"));
  EXPECT_THROW((void)files_.Begin(At("link.csv"), project), FileError);
  EXPECT_FALSE(fs::exists(At("none")));
  // Longer than a piece of the file is read at once.
  Put("long.csv", std::string(70000, 'x') + "\n");
  EXPECT_THROW((void)lines(At("long.csv")), FileError);
  Put("many.csv", [] {
    std::string text;
    for (int i = 0; i < 20000; ++i) text += "12345\n";
    return text;
  }());
  EXPECT_EQ(lines(At("many.csv")).size(), 20000U * 7);
  fs::create_directory(At("folder"));
  EXPECT_EQ(files_.NamesIn(folder_.Path()),
            (std::vector<std::string>{"a.csv", "line1.spj", "long.csv", "many.csv"}));
  EXPECT_TRUE(files_.NamesIn(At("nowhere")).empty());
}

TEST_F(PosixFilesTest, AWorkingFileIsItsOwnersAloneAndNoLinkOrPipe) {
  const std::string project = Put("line1.spj", "project");
  const std::string outside = Put("outside", "mine");
  const std::string working = At("line1.tmp");
  const std::pair<const char*, std::function<void()>> plants[] = {
      {"pipe", [&] { ASSERT_EQ(mkfifo(working.c_str(), 0666), 0); }},
      {"link", [&] { fs::create_symlink(outside, working); }},
      {"link to nothing", [&] { fs::create_symlink(At("none"), working); }},
      {"hard link", [&] { fs::create_hard_link(outside, working); }}};
  for (const auto& [name, plant] : plants) {
    SCOPED_TRACE(name);
    plant();
    EXPECT_THROW((void)files_.Lock(working), FileError);
    EXPECT_THROW(files_.LayWorkingCopy(project, working), FileError);
    EXPECT_EQ(files_.ReadAll(outside), "mine");
    EXPECT_FALSE(fs::exists(At("none")));
    fs::remove(working);
  }
  EXPECT_TRUE(files_.Lock(working));
  EXPECT_EQ(fs::status(working).permissions(), fs::perms(0600));
  fs::permissions(working, fs::perms(0644));
  files_.LayWorkingCopy(project, working);
  EXPECT_EQ(fs::status(working).permissions(), fs::perms(0600));
  fs::remove(project);
  ASSERT_EQ(mkfifo(project.c_str(), 0600), 0);
  EXPECT_THROW(files_.LayWorkingCopy(project, working), FileError) << "and does not wait for it";
}

TEST_F(PosixFilesTest, AWorkingCopyKeepsItsFileAndLosesItsJournal) {
  const std::string project = Put("line1.spj", "project");
  const std::string working = Put("line1.tmp", "a longer old working file");
  Put("line1.tmp-journal", "stale");
  const auto lock = files_.Lock(working);
  const std::string before = files_.Identity(working);
  files_.LayWorkingCopy(project, working);
  EXPECT_EQ(files_.ReadAll(working), "project");
  EXPECT_EQ(files_.Identity(working), before);
  EXPECT_EQ(files_.Lock(working), nullptr) << "the lock holds on";
  EXPECT_FALSE(files_.Exists(At("line1.tmp-journal")));
  EXPECT_THROW(files_.LayWorkingCopy(project, folder_.Path().string() + "/./line1.spj"), FileError);
  EXPECT_EQ(files_.ReadAll(project), "project");
}

TEST_F(PosixFilesTest, NamesWithAZeroCharacterNeitherExistNorReachAnotherFile) {
  const std::string file = Put("line1.spj", "kept");
  const std::string cut = file + std::string(1, '\0');
  EXPECT_TRUE(files_.Exists(file));
  EXPECT_FALSE(files_.Exists(cut));
  EXPECT_FALSE(files_.Exists(std::string(1, '\0')));
  EXPECT_FALSE(files_.IsSameFile(file, cut));
  EXPECT_THROW((void)files_.ReadAll(cut), FileError);
  EXPECT_THROW(files_.Remove(cut), FileError);
  EXPECT_THROW(files_.Rename(cut, At("other")), FileError);
  EXPECT_THROW(files_.WriteDurably(cut, "x"), FileError);
  EXPECT_EQ(files_.ReadAll(file), "kept");
}

TEST_F(PosixFilesTest, SameFileIsToldForFilesThatDoNotExistYet) {
  fs::create_directory(folder_.Path() / "a");
  EXPECT_TRUE(files_.IsSameFile(At("line1.tmp"), At("a/../line1.tmp")));
  EXPECT_FALSE(files_.IsSameFile(At("line1.tmp"), At("line2.tmp")));
  Put("line1.tmp", "");
  EXPECT_FALSE(files_.IsSameFile(At("line1.tmp"), At("line2.tmp")));
  EXPECT_FALSE(files_.Exists(At("a"))) << "a folder is no file";
}

TEST_F(PosixFilesTest, AFileGrowsOnBehindWholeLinesAlone) {
  EXPECT_EQ(files_.SizeOf(At("none")), 0U);
  files_.Continue(At("log"), {})->Add("a\nhal");
  files_.Continue(At("log"), {})->Add("b\n");
  EXPECT_EQ(files_.ReadAll(At("log")), "a\nhal\nb\n");
  EXPECT_EQ(files_.SizeOf(At("log")), 8U);
  EXPECT_EQ(fs::status(At("log")).permissions(), fs::perms(0600));
  fs::create_symlink(At("log"), At("link"));
  EXPECT_THROW((void)files_.Continue(At("link"), {}), FileError);
}

// Collectors run as other users, and passwords are nobody's but their owner's.
TEST_F(PosixFilesTest, WhatAllMayReadAndWhatNobodyElseMay) {
  const mode_t mask = umask(022);
  files_.WriteWhole(At("figures"), "old");
  files_.WriteWhole(At("figures"), "new");
  umask(mask);
  EXPECT_EQ(files_.ReadAll(At("figures")), "new");
  EXPECT_EQ(fs::status(At("figures")).permissions(), fs::perms(0644));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path()), {}), 1);
  EXPECT_THROW(files_.WriteWhole(At("no/folder"), "x"), FileError);
  const std::string secret = Put("password", "word\n");
  fs::permissions(secret, fs::perms(0640));
  EXPECT_THROW((void)files_.ReadSecret(secret), FileError);
  fs::permissions(secret, fs::perms(0600));
  EXPECT_EQ(files_.ReadSecret(secret), "word\n");
}

TEST_F(PosixFilesTest, RenameReplacesAndOntoItselfDoesNothing) {
  const std::string from = Put("line1.tmp", "working");
  Put("line2.tmp", "stale");
  Put("line2.tmp-journal", "stale");
  files_.Rename(from, At("line2.tmp"));
  EXPECT_EQ(files_.ReadAll(At("line2.tmp")), "working");
  files_.Rename(At("line2.tmp"), At("line2.tmp"));
  EXPECT_EQ(files_.ReadAll(At("line2.tmp")), "working");
  EXPECT_EQ(folder_.Count(), 1);
  files_.Remove(At("line2.tmp"));
  files_.Remove(At("line2.tmp"));
  EXPECT_EQ(folder_.Count(), 0);
  EXPECT_THROW(files_.Rename(from, At("x")), FileError);
}

TEST_F(PosixFilesTest, RenameCrossesFileSystems) {
  const std::string other = "/dev/shm/velmoor-files-test-" + std::to_string(getpid());
  struct stat here {};
  struct stat there {};
  if (stat(folder_.Path().c_str(), &here) != 0 || stat("/dev/shm", &there) != 0 ||
      here.st_dev == there.st_dev) {
    GTEST_SKIP() << "one file system only";
  }
  files_.Rename(Put("line1.tmp", "working"), other);
  EXPECT_EQ(files_.ReadAll(other), "working");
  EXPECT_EQ(folder_.Count(), 0);
  files_.Remove(other);
}

TEST_F(PosixFilesTest, ALockIsFreedWithItsOwnerAndByTheDeathOfAProcess) {
  const std::string path = At("line1.tmp");
  auto lock = files_.Lock(path);
  ASSERT_NE(lock, nullptr);
  EXPECT_EQ(files_.Lock(path), nullptr);
  lock.reset();
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const auto held = files_.Lock(path);
    if (write(ready[1], held ? "y" : "n", 1) != 1) _exit(1);
    pause();
  }
  char answer = 0;
  ASSERT_EQ(read(ready[0], &answer, 1), 1);
  EXPECT_EQ(answer, 'y');
  EXPECT_EQ(files_.Lock(path), nullptr);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_NE(files_.Lock(path), nullptr);
}

// A child that saves without end is killed at some point, many times over: the target is the old
// file or the new one, whole, and the next save works and clears away what the dead one left.
TEST_F(PosixFilesTest, KillingASaveLeavesTheOldOrTheNewFileWhole) {
  const std::string a(200000, 'a');
  const std::string b(150000, 'b');
  const std::string sourceA = Put("a", a);
  const std::string sourceB = Put("b", b);
  const std::string target = Put("line1.spj", a);
  for (int round = 0; round < 60; ++round) {
    int saving[2];
    ASSERT_EQ(pipe(saving), 0);
    const pid_t child = fork();
    if (child == 0) {
      for (;;) {
        if (write(saving[1], "s", 1) != 1) _exit(1);
        files_.ReplaceDurably(sourceB, target);
        files_.ReplaceDurably(sourceA, target);
      }
    }
    // Once it is at work, a little later each round.
    char sign = 0;
    ASSERT_EQ(read(saving[0], &sign, 1), 1);
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(round * 37);
    while (std::chrono::steady_clock::now() < until) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(saving[0]);
    close(saving[1]);
    const std::string found = files_.ReadAll(target);
    ASSERT_TRUE(found == a || found == b) << "round " << round << ", " << found.size() << " bytes";
  }
  files_.ReplaceDurably(sourceB, target);
  EXPECT_EQ(files_.ReadAll(target), b);
  EXPECT_EQ(folder_.Count(), 3);
}

}  // namespace
}  // namespace velmoor::posix
