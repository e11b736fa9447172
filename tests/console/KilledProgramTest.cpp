// The program itself, killed while it saves, and while it sends.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <random>

#include "Velmoorctl.h"

namespace velmoor {
namespace {

class KilledProgram : public Velmoorctl {
 protected:
  // Its input is that end of a pipe, where one is given.
  static pid_t StartProgram(std::vector<std::string> words, int input = -1) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    for (const int stream : {1, 2}) {
      posix_spawn_file_actions_addopen(&quiet, stream, "/dev/null", O_WRONLY, 0);
    }
    if (input >= 0) posix_spawn_file_actions_adddup2(&quiet, input, STDIN_FILENO);
    EXPECT_EQ(posix_spawn(&child, words[0].c_str(), &quiet, nullptr, arguments.data(), environ), 0);
    posix_spawn_file_actions_destroy(&quiet);
    return child;
  }
  static pid_t Start(std::vector<std::string> words) {
    words.insert(words.begin(), VELMOORCTL);
    return StartProgram(std::move(words));
  }
  static int Wait(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
  }
  // Kills the child after a part of `whole`, unless it has ended by then. True: it was killed.
  bool KillWithin(pid_t child, std::chrono::microseconds whole) {
    const auto moment = std::uniform_int_distribution<std::int64_t>(0, whole.count())(engine);
    const timespec until{moment / 1000000, moment % 1000000 * 1000};
    ppoll(nullptr, 0, &until, nullptr);
    kill(child, SIGKILL);
    return WIFSIGNALED(Wait(child));
  }
  std::mt19937 engine{20261124};
};

TEST_F(KilledProgram, ASaveThatIsKilledLeavesTheOldOrTheNewProject) {
  ASSERT_EQ(Run({"new", project}), 0);
  const std::string texts[] = {"speed\n1\n2\n", "speed\n100\n200\n"};
  const std::string files[] = {WriteFile("0.csv", texts[0]), WriteFile("1.csv", texts[1])};
  ASSERT_EQ(Run({"import", project, "jog", files[0]}), 0);
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(Wait(Start({"import", project, "jog", files[0]})), 0);
  const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - begin);

  int killed = 0;
  for (int round = 0; round < 40; ++round) {
    const pid_t child = Start({"import", project, "jog", files[round % 2]});
    if (KillWithin(child, whole)) ++killed;
    ASSERT_EQ(Run({"show", project, "jog"}), 0) << "round " << round << ": " << err.str();
    const std::string shown = out.str();
    const bool old = shown.find("\n0,1.000,") != std::string::npos &&
                     shown.find("\n1,2.000,") != std::string::npos;
    const bool fresh = shown.find("\n0,100.000,") != std::string::npos &&
                       shown.find("\n1,200.000,") != std::string::npos;
    ASSERT_TRUE(old || fresh) << "round " << round << ": " << shown;
  }
  EXPECT_GT(killed, 10) << "most rounds must have been cut";
}

// Two axes on a real line. Whatever a killed download has left, the marks of each project name all
// that its amplifier does not hold: what they name, sent, makes both sides equal.
TEST_F(KilledProgram, ADownloadOfALineThatIsKilledLeavesEachProjectAndItsMarksTrue) {
  const std::string device = world.folder.At("device");
  int console[2];
  ASSERT_EQ(pipe2(console, O_CLOEXEC), 0);
  const pid_t simulator = StartProgram({VELMOOR_SIMULATOR, "--link", device, "--restart-ms", "20",
                                        "--store-ms", "1", "--axis", "0", "--axis", "3"},
                                       console[0]);
  const timespec moment{0, 1000000};
  while (!std::filesystem::exists(device)) ppoll(nullptr, 0, &moment, nullptr);
  const std::string file = WriteFile("line.toml", "port = \"" + device +
                                                      "\"\nbaud = 9600\n"
                                                      "[axis.0]\nproject = \"x.spj\"\n"
                                                      "[axis.3]\nproject = \"y.spj\"\n");
  for (const char* const name : {"x.spj", "y.spj"}) {
    ASSERT_EQ(Run({"new", world.folder.At(name)}), 0);
  }
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(Wait(Start({"line", file, "download", "--yes"})), 0);
  const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - begin);
  int killed = 0;
  for (int round = 0; round < 6; ++round) {
    ASSERT_EQ(Wait(Start({"line", file, "set", "Pn100=" + std::to_string(50 + round),
                          "Pn102=" + std::to_string(30 + round)})),
              0);
    const bool all = round % 2 == 0;
    const pid_t child = Start({"line", file, "download", "--yes", all ? "--verify" : "--new"});
    if (KillWithin(child, all ? whole : whole / 4)) ++killed;
    ASSERT_EQ(Wait(Start({"line", file, "download", "--new", "--yes"})), 0) << "round " << round;
    ASSERT_EQ(Wait(Start({"line", file, "compare"})), 0) << "round " << round;
  }
  EXPECT_GT(killed, 2) << "most rounds must have been cut";
  kill(simulator, SIGTERM);
  Wait(simulator);
  close(console[0]);
  close(console[1]);
}

}  // namespace
}  // namespace velmoor
