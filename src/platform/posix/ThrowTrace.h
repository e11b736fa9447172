// The calls that led to the last exception, for reports of errors that nobody handled.
#pragma once

#include <string>
#include <vector>

namespace velmoor::posix {

// Of the last exception that this thread threw, innermost first; empty before the first. Linking
// this file makes every throw remember its calls, which costs some microseconds.
[[nodiscard]] std::vector<std::string> LastThrowTrace();
// A readable form of a type's name as the compiler keeps it.
[[nodiscard]] std::string ReadableName(const char* name);

}  // namespace velmoor::posix
