// The shared report of a failed operation on the amplifier.
#pragma once

#include <string>

#include "link/ResultCode.h"

namespace velmoor {

// The link's own text for 0 and below, the name of the device error (empty where it has none)
// above. Reads the session through gMainForm.
[[nodiscard]] std::string ResultText(ResultCode lngResult);

// Shows an exclamation box with `strMsg`, a line break and the text of `lngResult`.
void DisplayError(ResultCode lngResult, const std::string& strMsg);

}  // namespace velmoor
