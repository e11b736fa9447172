// Random machines entered as a user enters them, by one `set` of velmoorctl and cell by cell in the
// machine's window, and what became of each against the oracle.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor::walk {

struct TrialReport {
  int machines = 0;
  int valid = 0;
  int doubtful = 0;
  int entered = 0;  // valid ones, of which nothing was wrong
  std::vector<std::string> faults;
  double seconds = 0;
};

// Each machine on a new project, and on one that holds the valid machines before it. `folder` is
// the trials' own. Throws std::runtime_error where no project can be made.
[[nodiscard]] TrialReport RunConsoleTrials(const std::string& folder, std::uint64_t seed,
                                           int machines);
// Each machine in the window over the one before it, its cells in any order.
[[nodiscard]] TrialReport RunWindowTrials(const std::string& folder, std::uint64_t seed,
                                          int machines);

}  // namespace velmoor::walk
