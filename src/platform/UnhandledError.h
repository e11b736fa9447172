// An error that no procedure handled, on its way to the last resort.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velmoor {

struct UnhandledError {
  std::string type;                // of the exception, readable
  std::string description;         // its text
  std::vector<std::string> trace;  // the calls where it was thrown, innermost first; may be empty
};

inline constexpr const char* kUnexpectedError =
    "An unexpected error has occured in this application: \r\r";

// What the user wants: go on without what was under way, have the event handled once more, or end
// the program.
enum class ErrorChoice { goOn, retry, end };

using ErrorHandler = std::function<ErrorChoice(const UnhandledError&)>;

}  // namespace velmoor
