// The simulator as a program: a child process, and the host's port on its pseudo-terminal.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "link/ClassSerialComm.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor {
namespace {

// The running program with its console.
class Program {
 public:
  explicit Program(std::vector<std::string> words) {
    words.insert(words.begin(), VELMOOR_SIMULATOR);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int in[2];
    int out[2];
    EXPECT_EQ(pipe2(in, O_CLOEXEC) + pipe2(out, O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    EXPECT_EQ(
        posix_spawn(&process_, words[0].c_str(), &actions, nullptr, arguments.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    in_ = posix::FileDescriptor(in[1]);
    out_ = posix::FileDescriptor(out[0]);
    AwaitOutput("line at ");
  }
  ~Program() {
    if (process_ > 0) kill(process_, SIGKILL);
    if (process_ > 0) waitpid(process_, nullptr, 0);
  }
  void Type(std::string line) {
    line += "\n";
    ASSERT_EQ(write(in_.Get(), line.data(), line.size()), static_cast<ssize_t>(line.size()));
  }
  // Reads until the program has written `text`; forgets what came before.
  void AwaitOutput(const std::string& text) {
    while (output_.find(text) == std::string::npos) {
      pollfd look{.fd = out_.Get(), .events = POLLIN, .revents = 0};
      char chunk[256];
      const ssize_t count = poll(&look, 1, 5000) > 0 ? read(out_.Get(), chunk, sizeof chunk) : 0;
      if (count <= 0) {
        ADD_FAILURE() << "never written: " << text;
        return;
      }
      output_.append(chunk, static_cast<std::size_t>(count));
    }
    output_.clear();
  }
  int End(int signal) {
    if (signal != 0) kill(process_, signal);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_ = 0;
  posix::FileDescriptor in_;
  posix::FileDescriptor out_;
  std::string output_;
};

class SimulatorOnATerminal : public testing::Test {
 protected:
  SimulatorOnATerminal() : link(testing::TempDir() + "velmoor-sim-" + std::to_string(getpid())) {
    port.SetDeviceMap({{"COM1", link}});
    comm.setupClass(port, 0, 9600, true, 1, 500);
  }
  ResultCode Search() {
    comm.setTimeOut(100);
    return comm.autoConnect(echo, baud);
  }
  std::string link;
  posix::PosixSerialPort port;
  ClassSerialComm comm;
  bool echo = false;
  std::int32_t baud = 0;
};

TEST_F(SimulatorOnATerminal, IsFoundAtItsSpeedAndAnswers) {
  Program program({"--link", link, "--baud", "38400", "--motor-size", "750"});
  ASSERT_EQ(Search(), kSuccess) << port.LastError();
  EXPECT_EQ(baud, 38400);
  EXPECT_TRUE(echo);
  std::string size;
  EXPECT_EQ(comm.helixReadInfo(5, size), kSuccess);
  EXPECT_EQ(size, "00000075");
  // A host that dies and comes back finds the line as before.
  port.Close();
  ASSERT_EQ(Search(), kSuccess) << port.LastError();
  program.Type("send PUN");
  program.AwaitOutput("0PUN=00000000\n");
  program.Type("quit");
  EXPECT_EQ(program.End(0), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(SimulatorOnATerminal, ChangesSpeedAtItsRestart) {
  Program program({"--link", link, "--restart-ms", "0"});
  ASSERT_EQ(Search(), kSuccess);
  EXPECT_EQ(comm.writeParameter("801", "1"), kSuccess);
  EXPECT_EQ(comm.helixSimpleCommand(14), kSuccess);
  ASSERT_EQ(Search(), kSuccess);
  EXPECT_EQ(baud, 19200);
  EXPECT_EQ(program.End(SIGTERM), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(SimulatorOnATerminal, PlugCanBePulledAndPutBack) {
  Program program({"--link", link});
  ASSERT_EQ(Search(), kSuccess);
  program.Type("fault hang-up PGMSTORE");
  program.Type("send PUN");
  program.AwaitOutput("0PUN");
  EXPECT_EQ(comm.helixSimpleCommand(8), kPortNotOpen);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_EQ(Search(), kPortNotOpen);
  EXPECT_EQ(port.LastError(),
            link + " does not exist.  Plug the adapter in, or assign another one.");
  program.Type("plug");
  program.AwaitOutput("line at ");
  EXPECT_EQ(Search(), kSuccess) << port.LastError();
}

}  // namespace
}  // namespace velmoor
