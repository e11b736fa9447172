// Two users in one folder: the program of the one, and what the other has planted under the names
// that it uses, at every step of a project's life. The first user's files outside of the folder are
// not touched, nobody waits for ever, and nothing becomes readable that the project hides.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kUser = 61001;
constexpr uid_t kOther = 61002;
constexpr int kHang = -1;
constexpr int kKilled = -2;

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class SharedFolder : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0) {
      GTEST_SKIP() << "Needs the superuser, who alone can act as two users: not looked at here.";
    }
    fs::permissions(folder.Path(), fs::perms(0755));
    for (const std::string& name : {std::string("shared"), std::string("home")}) {
      fs::create_directory(folder.At(name));
    }
    ASSERT_EQ(chown(home.c_str(), kUser, kUser), 0);
    fs::permissions(home, fs::perms(0700));
    fs::permissions(shared, fs::perms(0777));
    Refresh();
  }

  // The user's own files, private, and a project that nobody else may read.
  void Refresh() {
    for (const auto& entry : fs::directory_iterator(shared)) fs::remove_all(entry.path());
    std::ofstream(outside) << "private";
    ASSERT_EQ(chown(outside.c_str(), kUser, kUser), 0);
    fs::permissions(outside, fs::perms(0600));
    fs::remove(missing);
    fs::remove(project);
    ASSERT_EQ(Run({"new", project}), 0);
    fs::permissions(project, fs::perms(0600));
  }

  // As the first user; the exit status, kHang after 10 s, or kKilled after `microseconds`.
  int Run(std::vector<std::string> words, long microseconds = 0) {
    words.insert(words.begin(), VELMOORCTL);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string log = folder.At("log");
    const pid_t child = fork();
    if (child == 0) {
      setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
      setenv("HOME", home.c_str(), 1);
      const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
      dup2(out, STDOUT_FILENO);
      dup2(out, STDERR_FILENO);
      const bool changed = setgid(kUser) == 0 && setuid(kUser) == 0;
      if (changed) execv(arguments.front(), arguments.data());
      _exit(127);
    }
    return Wait(child, microseconds);
  }
  static int Wait(pid_t child, long microseconds) {
    constexpr int kTries = 1000;
    int status = 0;
    if (microseconds > 0) {
      const timespec until{microseconds / 1000000, microseconds % 1000000 * 1000};
      ppoll(nullptr, 0, &until, nullptr);
      kill(child, SIGKILL);
      waitpid(child, &status, 0);
      return WIFSIGNALED(status) ? kKilled : WEXITSTATUS(status);
    }
    for (int i = 0; i < kTries; ++i) {
      if (waitpid(child, &status, WNOHANG) == child) return WEXITSTATUS(status);
      ppoll(nullptr, 0, &kTick, nullptr);
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return kHang;
  }

  struct Plant {
    const char* kind;
    std::function<void(const std::string& name)> lay;
  };
  std::vector<Plant> Plants() const {
    const auto others = [](const std::string& name) {
      EXPECT_EQ(lchown(name.c_str(), kOther, kOther), 0);
    };
    return {
        {"link",
         [=, this](const std::string& name) {
           fs::create_symlink(outside, name);
           others(name);
         }},
        {"link to nothing",
         [=, this](const std::string& name) {
           fs::create_symlink(missing, name);
           others(name);
         }},
        {"hard link", [this](const std::string& name) { fs::create_hard_link(outside, name); }},
        {"pipe",
         [=](const std::string& name) {
           ASSERT_EQ(mkfifo(name.c_str(), 0666), 0);
           fs::permissions(name, fs::perms(0666));
           others(name);
         }},
        {"folder",
         [=](const std::string& name) {
           fs::create_directory(name);
           others(name);
         }},
        {"file",
         [=](const std::string& name) {
           std::ofstream(name) << "the other's";
           fs::permissions(name, fs::perms(0666));
           others(name);
         }},
        {"notes",
         [](const std::string& name) {
           std::ofstream(name) << "the user's own notes";
           ASSERT_EQ(chown(name.c_str(), kUser, kUser), 0);
         }},
    };
  }

  // What must hold whatever happened.
  void ExpectSafe() const {
    EXPECT_EQ(Bytes(outside), "private");
    struct stat status {};
    ASSERT_EQ(stat(outside.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_FALSE(fs::exists(fs::symlink_status(missing)));
    for (const auto& entry : fs::directory_iterator(shared)) {
      ASSERT_EQ(lstat(entry.path().c_str(), &status), 0);
      if (!S_ISREG(status.st_mode)) continue;
      const std::string bytes = Bytes(entry.path());
      if (bytes.ends_with("notes") || bytes == "the other's") continue;
      EXPECT_EQ(status.st_uid, kUser) << entry.path() << " is the other's";
      EXPECT_EQ(status.st_mode & 0077U, 0U) << entry.path() << " can be read by others";
    }
  }

  static constexpr timespec kTick{0, 10'000'000};
  TemporaryFolder folder;
  const std::string shared = folder.At("shared");
  const std::string home = folder.At("home");
  const std::string outside = folder.At("home/outside");
  const std::string missing = folder.At("home/missing");
  const std::string project = folder.At("shared/l.spj");
};

constexpr const char* kNames[] = {"l.tmp",     "l.velmoor.tmp", "l.tmp-journal",
                                  "l.tmp-wal", "l.tmp-marks",   ".l.spj.new"};

TEST_F(SharedFolder, WhatIsPlantedHarmsNothingAtOpenEditAndSave) {
  int saved = 0;
  for (const char* const name : kNames) {
    for (const Plant& plant : Plants()) {
      SCOPED_TRACE(std::string(plant.kind) + " under " + name);
      Refresh();
      plant.lay(shared + "/" + name);
      const std::string before = Bytes(project);
      const int shown = Run({"show", project, "index"});
      EXPECT_NE(shown, kHang);
      EXPECT_EQ(Bytes(project), before) << "showing writes nothing";
      ExpectSafe();
      const int set = Run({"set", project, "Pn100=77"});
      EXPECT_NE(set, kHang);
      EXPECT_EQ(set, shown) << Bytes(folder.At("log")) << "what can be opened can be saved";
      EXPECT_EQ(Bytes(project) != before, set == 0);
      ExpectSafe();
      if (set == 0) ++saved;
    }
  }
  // Only another's file in the place of the working file, and what cannot be taken from a journal's
  // place, keep the user from the project.
  EXPECT_GE(saved, 36);
}

TEST_F(SharedFolder, APlantedProjectIsNeitherWaitedForNorWrittenThrough) {
  for (const Plant& plant : Plants()) {
    SCOPED_TRACE(plant.kind);
    Refresh();
    fs::remove(project);
    plant.lay(project);
    EXPECT_EQ(Run({"show", project, "index"}), 1);
    EXPECT_EQ(Run({"set", project, "Pn100=77"}), 1);
    ExpectSafe();
  }
  // A project of the user's own behind the other's link.
  Refresh();
  const std::string own = home + "/own.spj";
  fs::rename(project, own);
  fs::create_symlink(own, project);
  ASSERT_EQ(lchown(project.c_str(), kOther, kOther), 0);
  const std::string before = Bytes(own);
  EXPECT_EQ(Run({"set", project, "Pn100=77"}), 1) << Bytes(folder.At("log"));
  EXPECT_EQ(Bytes(own), before);
  EXPECT_NE(Bytes(folder.At("log")).find("it is a link that another user has made"),
            std::string::npos)
      << Bytes(folder.At("log"));
}

TEST_F(SharedFolder, AKilledProgramLeavesNothingOpenToOthersAndIsRecoveredFrom) {
  std::mt19937 engine(20261125);
  int killed = 0;
  for (int round = 0; round < 40; ++round) {
    Refresh();
    const long moment = std::uniform_int_distribution<long>(1000, 90000)(engine);
    const std::string value = std::to_string(100 + round);
    const int result = Run({"set", project, "Pn100=" + value}, moment);
    if (result == kKilled) ++killed;
    ExpectSafe();
    // What it left is used up, or stays where somebody has put something else in its place.
    const auto plants = Plants();
    const std::string left = shared + "/l.tmp";
    if (round % 2 == 1) {
      fs::remove(left);
      plants[static_cast<std::size_t>(round / 2) % 5].lay(left);
    }
    ASSERT_EQ(Run({"set", project, "Pn101=55"}), 0) << Bytes(folder.At("log"));
    ExpectSafe();
  }
  EXPECT_GT(killed, 10) << "most rounds must have been cut";
}

// What is swapped while the program runs: the other renames and links as fast as it can.
TEST_F(SharedFolder, ASwapBetweenTwoStepsLeadsNowhere) {
  const pid_t swapper = fork();
  if (swapper == 0) {
    if (setgid(kOther) != 0 || setuid(kOther) != 0) _exit(1);
    for (unsigned i = 0;; ++i) {
      const std::string name = shared + "/" + kNames[i % std::size(kNames)];
      std::error_code ignored;
      if (i % 3 == 0) fs::rename(name, shared + "/taken", ignored);
      if (i % 3 == 1) fs::create_symlink(i % 2 == 0 ? outside : missing, name, ignored);
      if (i % 3 == 2) fs::remove(name, ignored);
      if (i % 5 == 0) fs::remove(shared + "/taken", ignored);
    }
  }
  for (int round = 0; round < 60; ++round) {
    EXPECT_NE(Run({"set", project, "Pn100=" + std::to_string(100 + round)}), kHang);
    EXPECT_EQ(Bytes(outside), "private");
    EXPECT_FALSE(fs::exists(fs::symlink_status(missing)));
  }
  kill(swapper, SIGKILL);
  waitpid(swapper, nullptr, 0);
  EXPECT_EQ(Run({"show", project, "index"}), 0) << Bytes(folder.At("log"));
}

}  // namespace
}  // namespace velmoor
