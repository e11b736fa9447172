// What an exchange costs: processor time of the host, and wall time against the time of its bytes.
//
//   bench_link [path of velmoor-simulator]
//
// Starts the simulator as a child, unpaced for the processor time and paced for the wall time.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "link/ClassSerialComm.h"
#include "platform/Numbers.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor {
namespace {

constexpr std::int32_t kBaudRate = 38400;
constexpr double kBitsPerCharacter = 11;

class Child {
 public:
  Child(const std::string& program, std::vector<std::string> words) {
    words.insert(words.begin(), program);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawn(&process_, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
      throw std::runtime_error(program + " cannot be started");
    }
  }
  ~Child() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

 private:
  pid_t process_ = 0;
};

double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void WaitFor(const std::string& link) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (!std::filesystem::exists(link)) {
    if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error("no line");
    usleep(1000);
  }
}

// A mixture as a download and a monitoring pass send it.
const char* const kCommands[] = {"0PRM81D", "0PUN", "0POST5=I+100", "0PRM81D=-1200", "0ALM"};

std::size_t RunExchanges(ClassSerialComm& comm, int count) {
  std::size_t bytes = 0;
  for (int i = 0; i < count; ++i) {
    const std::string command = kCommands[static_cast<std::size_t>(i) % std::size(kCommands)];
    RawResponse response;
    const ResultCode result = comm.writeToSerial(command, response);
    if (result != kSuccess) {
      throw std::runtime_error(command + ": " + comm.ErrorMessages(result));
    }
    bytes += command.size() + 1 + response[0].size() + 2 + response[1].size() + 2;
  }
  return bytes;
}

void Measure(const std::string& simulator, bool paced, int count) {
  const std::string link = "/tmp/velmoor-bench-line-" + std::to_string(getpid());
  std::vector<std::string> words{"--link", link, "--baud", std::to_string(kBaudRate)};
  if (paced) words.emplace_back("--paced");
  const Child child(simulator, words);
  WaitFor(link);

  posix::PosixSerialPort port;
  port.SetDeviceMap({{"COM1", link}});
  ClassSerialComm comm;
  comm.setupClass(port, 0, kBaudRate, true, 1, 5000);
  if (!comm.manualConnect()) throw std::runtime_error(port.LastError());
  RunExchanges(comm, 20);

  const double processor = ProcessorSeconds();
  const auto start = std::chrono::steady_clock::now();
  const std::size_t bytes = RunExchanges(comm, count);
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  const double used = ProcessorSeconds() - processor;
  const double wire = static_cast<double>(bytes) * kBitsPerCharacter / kBaudRate;
  std::cout << (paced ? "paced" : "unpaced") << ": " << count << " exchanges, " << bytes
            << " bytes; processor time an exchange " << FixedText(used / count * 1e6, 1)
            << " us; wall time " << FixedText(wall.count(), 3) << " s";
  if (paced) {
    std::cout << ", wire time " << FixedText(wire, 3) << " s, "
              << FixedText((wall.count() / wire - 1) * 100, 2) << " % above";
  }
  std::cout << "\n";
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  try {
    const std::string own = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string simulator = argc > 1 ? argv[1] : own + "/velmoor-simulator";
    velmoor::Measure(simulator, false, 20000);
    velmoor::Measure(simulator, true, 1000);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "bench_link: " << error.what() << "\n";
    return 1;
  }
}
