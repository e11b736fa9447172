#include "platform/posix/SimulatorProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include "platform/Files.h"
#include "platform/posix/PosixSingleInstance.h"

namespace velmoor::posix {
namespace {

constexpr std::chrono::seconds kStartLimit{3};
constexpr int kLook = 5;  // milliseconds

// In the child: nothing but calls that are allowed between the fork and the new program.
[[noreturn]] void BecomeSimulator(const char* program, const char* link, const char* baudRate,
                                  pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(1);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  const int nowhere = open("/dev/null", O_RDWR);
  dup2(nowhere, STDIN_FILENO);
  dup2(nowhere, STDOUT_FILENO);
  execl(program, program, "--link", link, "--baud", baudRate, static_cast<char*>(nullptr));
  _exit(127);
}

}  // namespace

SimulatorProcess::SimulatorProcess(const std::string& program, std::int32_t baudRate)
    : link_(JoinPath(RuntimeDirectory(),
                     "velmoor-simulator-" + std::to_string(static_cast<long>(getpid())))) {
  if (access(program.c_str(), X_OK) != 0) {
    throw std::runtime_error("The simulated amplifier was not found at " + program + ".");
  }
  // One that a crash left would pass for the new line.
  (void)unlink(link_.c_str());
  const pid_t parent = getpid();
  const std::string speed = std::to_string(baudRate);
  process_ = fork();
  if (process_ == 0) BecomeSimulator(program.c_str(), link_.c_str(), speed.c_str(), parent);
  const auto deadline = std::chrono::steady_clock::now() + kStartLimit;
  while (process_ > 0 && !std::filesystem::exists(link_)) {
    if (!IsRunning() || std::chrono::steady_clock::now() > deadline) break;
    (void)poll(nullptr, 0, kLook);
  }
  if (IsRunning() && std::filesystem::exists(link_)) return;
  if (process_ > 0) kill(process_, SIGKILL);
  throw std::runtime_error("The simulated amplifier could not be started.");
}

bool SimulatorProcess::IsRunning() {
  if (process_ <= 0) return false;
  if (waitpid(process_, nullptr, WNOHANG) == 0) return true;
  process_ = -1;
  return false;
}

SimulatorProcess::~SimulatorProcess() {
  if (!IsRunning()) return;
  kill(process_, SIGTERM);
  (void)waitpid(process_, nullptr, 0);
}

}  // namespace velmoor::posix
