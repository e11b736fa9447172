// The simulated amplifier as a child of this program, on a line of its own.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

namespace velmoor::posix {

class SimulatorProcess {
 public:
  // Starts the program and waits until its line is there, 3 s at most. Throws std::runtime_error
  // with words for the user.
  SimulatorProcess(const std::string& program, std::int32_t baudRate);
  // Ends it. It also ends when this program does, however that comes.
  ~SimulatorProcess();
  SimulatorProcess(const SimulatorProcess&) = delete;
  SimulatorProcess& operator=(const SimulatorProcess&) = delete;

  // The path of its end of the line.
  [[nodiscard]] const std::string& Link() const { return link_; }
  [[nodiscard]] bool IsRunning();

 private:
  std::string link_;
  pid_t process_ = -1;
};

}  // namespace velmoor::posix
