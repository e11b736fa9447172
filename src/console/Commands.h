// What velmoorctl does: one function a command.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace velmoor {

class ConsoleBoxes;
class SerialPort;

// What the program lends to a command.
struct ConsoleProgram {
  std::ostream& out;
  std::ostream& err;
  ConsoleBoxes& boxes;
  SerialPort& port;  // COM1; its device is set with SetDevice
  void (*setDevice)(SerialPort& port, const std::string& path);
  std::ostream* progress;  // null: no progress line
  // A signal has asked for an end; looked at as the Stop button is. Null: none can.
  bool (*stopAsked)() = nullptr;
};

// Runs the command that the words name. 0 only on success; 1 for a failure, of which the user was
// told on `err`; 2 for a command line that cannot be understood.
int RunCommand(const std::vector<std::string>& words, const ConsoleProgram& program);

}  // namespace velmoor
