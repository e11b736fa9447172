// The one way in which a procedure traps its own errors.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "platform/MessageBoxes.h"

namespace velmoor {

// Runs `work`, which returns whether it succeeded. An exception shows an exclamation box with
// `prefix`, such as "clsZone.SaveToDB: ", and the error's text, and the result is false.
template <typename Work>
bool Trapped(const std::string& prefix, Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::exception& error) {
    ShowExclamation(prefix + error.what());
    return false;
  }
}

}  // namespace velmoor
