// Lets a program without an event loop come to its end when its console asks for it.
#pragma once

namespace velmoor::win32 {

// Ctrl+C, Ctrl+Break and the closing of the console are noted for as long as the object lives; the
// second one ends the process at once. One object a process.
class ConsoleSignals {
 public:
  ConsoleSignals();
  ~ConsoleSignals();
  ConsoleSignals(const ConsoleSignals&) = delete;
  ConsoleSignals& operator=(const ConsoleSignals&) = delete;

  // Whether the program is to come to its end.
  [[nodiscard]] static bool Came();
};

}  // namespace velmoor::win32
