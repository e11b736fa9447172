// What tells one file from another, whatever their names.
#pragma once

#include <cstdint>
#include <string>

#include "platform/win32/Windows.h"

namespace velmoor::win32 {

[[nodiscard]] inline std::string IdentityOf(const BY_HANDLE_FILE_INFORMATION& about) {
  const std::uint64_t index = std::uint64_t{about.nFileIndexHigh} << 32U | about.nFileIndexLow;
  return std::to_string(about.dwVolumeSerialNumber) + "/" + std::to_string(index);
}

}  // namespace velmoor::win32
