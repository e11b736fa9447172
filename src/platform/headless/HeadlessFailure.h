// What the headless adapters do when the logic asks for something that no script foresaw.
#pragma once

#include <functional>
#include <string>

namespace velmoor::headless {

using FailureHandler = std::function<void(const std::string&)>;

// Replaces the handler, which by default writes the text to standard error and aborts, and returns
// the one before.
FailureHandler SetFailureHandler(FailureHandler handler);
void Fail(const std::string& text);

}  // namespace velmoor::headless
