// What the command lines of the campaigns have in common.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "platform/Numbers.h"
#include "platform/cli/RunProgram.h"

namespace velmoor::bench {

inline const OptionEntry kSeed{"seed", "the same seed does the same; 1 unless given", {"N"}};
inline const OptionEntry kFolder{
    "folder",
    "work on the disk where that lies; the system's for temporary files unless given",
    {"DIRECTORY", ValueEntry::Kind::folder}};

// The option's number, `otherwise` where it is not given. Throws UsageError for what is none from
// 0.
inline std::int64_t NumberOf(const CommandLine& line, const std::string& option,
                             std::int64_t otherwise) {
  const auto text = line.Value(option);
  if (!text) return otherwise;
  const auto number = ParseWhole(*text);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int32_t>::max()) {
    throw UsageError("Option --" + option + " takes a whole number from 0, not '" + *text + "'");
  }
  return *number;
}

}  // namespace velmoor::bench
