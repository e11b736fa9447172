// What a list of projects tells of a file, without opening it as a project.
#pragma once

#include <cstdint>
#include <string>

namespace velmoor {

struct ProjectGlance {
  enum class State : std::uint8_t { project, missing, unreadable };
  State state = State::missing;
  std::string changed;    // "2026-03-01 14:05"
  int marked = 0;         // values and rows that were not delivered
  std::string delivered;  // "2026-03-01 14:05": the latest transfer; empty: not known
};

// Looks at a copy: whoever works on the file is not disturbed, and nothing beside it is believed.
[[nodiscard]] ProjectGlance GlanceAt(const std::string& path);

}  // namespace velmoor
