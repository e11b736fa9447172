// Words about a device that cannot be had: who holds it, who may use it.
#pragma once

#include <string>

namespace velmoor::posix {

// " by minicom (process 4711)" for the process that holds the lock on the open file, or has its
// device open; empty when that cannot be seen.
[[nodiscard]] std::string DescribeHolder(int descriptor, const std::string& path);

// The same for a device that is not open here.
[[nodiscard]] std::string DescribeHolder(const std::string& path);

// Which group grants access to the device, as an advice; empty when none does.
[[nodiscard]] std::string DescribeAccess(const std::string& path);

}  // namespace velmoor::posix
