// The command line and the standard streams as every system has them: UTF-8, and lines that end
// with LF.
#pragma once

#include <string>
#include <vector>

namespace velmoor::win32 {

// The words behind the program's name. Call it before anything is written.
[[nodiscard]] std::vector<std::string> TakeCommandLine();

}  // namespace velmoor::win32
