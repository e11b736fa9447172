// velmoor-simulator as a child of a benchmark, on a line of its own, and the time of bytes on a
// line.
#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmoor::bench {

inline double WireSeconds(std::size_t bytes, std::int32_t baudRate) {
  constexpr double kBitsPerCharacter = 11;
  return static_cast<double>(bytes) * kBitsPerCharacter / baudRate;
}

class SimulatorChild {
 public:
  // Returns when its line is there. Throws std::runtime_error.
  SimulatorChild(const std::string& program, std::int32_t baudRate, bool paced)
      : link_("/tmp/velmoor-bench-line-" + std::to_string(getpid())) {
    std::vector<std::string> words{program, "--link", link_, "--baud", std::to_string(baudRate)};
    if (paced) words.emplace_back("--paced");
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawn(&process_, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
      throw std::runtime_error(program + " cannot be started");
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!std::filesystem::exists(link_)) {
      if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error("no line");
      usleep(1000);
    }
  }
  ~SimulatorChild() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  SimulatorChild(const SimulatorChild&) = delete;
  SimulatorChild& operator=(const SimulatorChild&) = delete;

  [[nodiscard]] const std::string& Link() const { return link_; }

 private:
  std::string link_;
  pid_t process_ = 0;
};

}  // namespace velmoor::bench
