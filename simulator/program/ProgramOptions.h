// The command line of velmoor-simulator.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "simulator/SimulatedAmplifier.h"

namespace velmoor {

struct ProgramOptions {
  std::string link;    // name of a symbolic link to the pseudo-terminal; empty for none
  std::string script;  // file of console commands
  bool paced = false;
  bool help = false;
  std::vector<AmplifierSettings> amplifiers;  // at least one
};

// The words behind the program's name. Throws std::invalid_argument with words for the user.
[[nodiscard]] ProgramOptions ParseOptions(std::span<const char* const> words);

[[nodiscard]] std::string UsageText();

}  // namespace velmoor
