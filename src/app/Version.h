// The program's version.
#pragma once

namespace velmoor {

inline constexpr char kProgramVersion[] = VELMOOR_VERSION;

}  // namespace velmoor
