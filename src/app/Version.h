// The program's version.
#pragma once

namespace velmoor {

// As the project's build names it, its one place.
extern const char* const kProgramVersion;

}  // namespace velmoor
