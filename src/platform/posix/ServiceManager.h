// Tells the system's service manager how a service does.
#pragma once

#include <string>

namespace velmoor::posix {

// Lines such as "READY=1", "STATUS=...", "WATCHDOG=1". Where nobody wants to know, nothing.
void TellServiceManager(const std::string& lines);

// Bounds what the process may have of memory: a library that would take more fails instead.
void BoundMemory(std::size_t bytes);
// Gives the system back what only the beginning of the program has needed, its code among it.
void ReturnMemory();

}  // namespace velmoor::posix
