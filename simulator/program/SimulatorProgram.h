// velmoor-simulator: a simulated line on a pseudo-terminal, and a console on the standard input.
#pragma once

#include <signal.h>

#include <deque>
#include <optional>
#include <string>

#include "simulator/SimulatorConsole.h"
#include "simulator/program/ProgramOptions.h"
#include "simulator/program/PseudoTerminal.h"

namespace velmoor {

class SimulatorProgram {
 public:
  explicit SimulatorProgram(const ProgramOptions& options);

  // The console is read only where the program has its terminal: not in a shell's background.
  // Serves line and console until the console or a signal ends it; the end of the standard input
  // does not. Returns the exit code.
  int Run();

 private:
  // A character on its way, or bytes of the host that are not complete before `when`.
  struct Due {
    Micros when;
    std::string bytes;
    std::int32_t baudRate;
    bool hangsUp = false;
  };

  void Plug();
  void Unplug();
  bool RunScript(const std::string& file);
  void ExecuteTyped(std::string_view line);
  void ReadConsole();
  void ReadLine();
  void Schedule(const Transmission& transmission);
  // Does everything whose time has come.
  void ServeDue();
  [[nodiscard]] std::optional<Micros> NextDue() const;
  void Wait();

  SimulatedLine line_;
  std::optional<SimulatorConsole> console_;
  std::string script_;
  bool paced_;
  TerminalLink link_;
  std::optional<PseudoTerminal> terminal_;
  std::deque<Due> incoming_;
  std::deque<Due> outgoing_;
  Micros receiveFree_{0};  // when the host's last character is in
  Micros sendFree_{0};     // when the amplifier's last character is out
  sigset_t signalMask_{};  // while waiting
  std::string typed_;
  bool consoleOpen_ = true;
  bool ends_ = false;
};

}  // namespace velmoor
