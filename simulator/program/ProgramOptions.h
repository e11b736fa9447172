// The command line of velmoor-simulator.
#pragma once

#include <string>
#include <vector>

#include "platform/cli/ProgramTable.h"
#include "simulator/SimulatedAmplifier.h"

namespace velmoor {

struct ProgramOptions {
  std::string link;    // name of a symbolic link to the pseudo-terminal; empty for none
  std::string script;  // file of console commands
  bool paced = false;
  std::vector<AmplifierSettings> amplifiers;  // at least one
};

// What the command line may hold.
[[nodiscard]] const ProgramTable& SimulatorTable();

// Throws UsageError for a value that is out of its range.
[[nodiscard]] ProgramOptions OptionsOf(const CommandLine& line);

}  // namespace velmoor
