// What velmoorctl does: one function a command.
#pragma once

#include <iosfwd>
#include <string>

#include "platform/cli/ProgramTable.h"

namespace velmoor {

class ConsoleBoxes;
class SerialPort;
class WatchHost;

// What the program lends to a command.
struct ConsoleProgram {
  std::ostream& out;
  std::ostream& err;
  ConsoleBoxes& boxes;
  SerialPort& port;  // COM1; its device is set with SetDevice
  void (*setDevice)(SerialPort& port, const std::string& path);
  std::ostream* progress;          // null: no progress line
  bool (*ends)();                  // somebody wants the program to come to its end
  WatchHost* watchHost = nullptr;  // null: it watches no lines
};

// What the command line may hold.
[[nodiscard]] const ProgramTable& ConsoleTable();

// Runs the command of a line that ConsoleTable() read. kDone only on success; kFailed after a
// failure, of which the user was told on `err`. Throws UsageError, and what the command throws.
int RunCommand(const CommandLine& line, const ConsoleProgram& program);

}  // namespace velmoor
