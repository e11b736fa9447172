// The program killed at any moment of a save, a save under another name, a commit or a transfer,
// and started again.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace velmoor::campaign {

struct CrashTally {
  int kills = 0;
  int old = 0;    // the project file was still that of before
  int fresh = 0;  // it was a newer one
};

struct CrashReport {
  std::map<std::string, CrashTally> operations;
  std::vector<std::string> violations;
};

// Kills `kills` processes at moments that `seed` chooses, in turn in each kind of work. Between
// them another process opens what was left: every project file must be whole, of one generation and
// not older than the last one, the program must start on it and store it, and nothing else may stay
// in `folder`, which is the campaign's own. This process must have one thread and no database open.
[[nodiscard]] CrashReport RunCrashes(const std::string& folder, std::uint64_t seed, int kills);

}  // namespace velmoor::campaign
