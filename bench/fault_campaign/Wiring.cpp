#include "fault_campaign/Wiring.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <thread>

#include "platform/posix/PosixSerialPort.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "simulator/SimulatorConsole.h"

namespace velmoor::campaign {
namespace {

using namespace std::chrono_literals;

class ProcessWiring final : public Wiring {
 public:
  ProcessWiring() { line_.AddAmplifier(); }
  WatchedPort& Port() override { return watched_; }
  std::string Type(const std::string& command) override {
    if (!console_) console_.emplace(line_);
    const SimulatorConsole::Outcome outcome = console_->Execute(command, port_.Now());
    if (outcome.failed) throw std::logic_error(command + ": " + outcome.text);
    if (outcome.request == SimulatorConsole::Request::unplug) port_.Unplug();
    if (outcome.request == SimulatorConsole::Request::plug) port_.Plug();
    return outcome.text;
  }
  [[nodiscard]] int TooLate() const override { return 16000; }
  void WaitForLate() override { port_.Advance(20s); }
  void WaitForRestart() override { port_.Advance(1s); }
  [[nodiscard]] const char* Name() const override { return "in process"; }

 private:
  SimulatedLine line_;
  std::optional<SimulatorConsole> console_;
  InProcessPort port_{line_};
  WatchedPort watched_{port_, 1};
};

// The console of a child process: its standard input and output.
class ConsoleChild {
 public:
  ConsoleChild(const std::string& program, const std::string& link) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe(in.data()) != 0 || pipe(out.data()) != 0) throw std::runtime_error("no pipe");
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      if (getppid() != parent) _exit(1);
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      for (const int each : {in[0], in[1], out[0], out[1]}) close(each);
      execl(program.c_str(), program.c_str(), "--link", link.c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    input_ = in[1];
    output_ = out[0];
  }
  ~ConsoleChild() {
    close(input_);
    close(output_);
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  ConsoleChild(const ConsoleChild&) = delete;
  ConsoleChild& operator=(const ConsoleChild&) = delete;

  // A question behind the command tells where its output ends.
  std::string Type(const std::string& command) {
    static constexpr std::string_view kEnd = "0TYPE=00000600\n";
    const std::string typed = command + "\nsend TYPE\n";
    if (write(input_, typed.data(), typed.size()) < 0) throw std::runtime_error("no simulator");
    std::string text;
    while (!text.ends_with(kEnd)) {
      pollfd look{.fd = output_, .events = POLLIN, .revents = 0};
      std::array<char, 4096> chunk{};
      const bool ready = poll(&look, 1, 5000) > 0;
      const ssize_t got = ready ? read(output_, chunk.data(), chunk.size()) : 0;
      if (got <= 0) throw std::runtime_error("the simulator is silent behind: " + command);
      text.append(chunk.data(), static_cast<std::size_t>(got));
    }
    return text.substr(0, text.size() - kEnd.size());
  }

 private:
  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
};

class TerminalWiring final : public Wiring {
 public:
  TerminalWiring(const std::string& simulator, const std::string& folder)
      : child_(simulator, folder + "/line") {
    child_.Type("time restart 5");
    port_.SetDeviceMap({{"COM1", folder + "/line"}});
  }
  WatchedPort& Port() override { return watched_; }
  std::string Type(const std::string& command) override { return child_.Type(command); }
  [[nodiscard]] int TooLate() const override { return 16000 / kHurry; }
  void WaitForLate() override { std::this_thread::sleep_for(std::chrono::milliseconds(TooLate())); }
  void WaitForRestart() override { std::this_thread::sleep_for(8ms); }
  [[nodiscard]] const char* Name() const override { return "pseudo-terminal"; }

 private:
  static constexpr int kHurry = 5;  // 1 s for an answer, which comes in microseconds
  ConsoleChild child_;
  posix::PosixSerialPort port_;
  WatchedPort watched_{port_, kHurry};
};

}  // namespace

std::unique_ptr<Wiring> WireInProcess() {
  return std::make_unique<ProcessWiring>();
}

std::unique_ptr<Wiring> WireTerminal(const std::string& simulator, const std::string& folder) {
  return std::make_unique<TerminalWiring>(simulator, folder);
}

}  // namespace velmoor::campaign
