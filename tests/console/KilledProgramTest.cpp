// The program itself, killed while it saves.
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <random>

#include "Velmoorctl.h"

namespace velmoor {
namespace {

class KilledProgram : public Velmoorctl {
 protected:
  pid_t Start(std::vector<std::string> words) {
    words.insert(words.begin(), VELMOORCTL);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    EXPECT_EQ(posix_spawn(&child, VELMOORCTL, nullptr, nullptr, arguments.data(), environ), 0);
    return child;
  }
  static int Wait(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
  }
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

  std::mt19937 engine(20261124);
  int killed = 0;
  for (int round = 0; round < 40; ++round) {
    const pid_t child = Start({"import", project, "jog", files[round % 2]});
    const auto moment = std::uniform_int_distribution<std::int64_t>(0, whole.count())(engine);
    const timespec until{moment / 1000000, moment % 1000000 * 1000};
    ppoll(nullptr, 0, &until, nullptr);
    kill(child, SIGKILL);
    if (WIFSIGNALED(Wait(child))) ++killed;
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

}  // namespace
}  // namespace velmoor
