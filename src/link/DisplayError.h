// The shared report of a failed operation on the amplifier.
#pragma once

#include <string>

#include "link/LinkFailure.h"
#include "link/ResultCode.h"

namespace velmoor {

// The link's own text for 0 and below; above, the name of the device error, or its number where it
// has no name. Reads the session through gMainForm.
[[nodiscard]] std::string ResultText(ResultCode lngResult);

// `words`, a line break and the text of `result`. Behind it, where the device object's latest
// failure is this one, what was asked and why it failed.
[[nodiscard]] std::string ErrorText(ResultCode result, const std::string& words);

// Shows an exclamation box with the ErrorText of the two.
void DisplayError(ResultCode lngResult, const std::string& strMsg);
// The same of a failure that was kept, since others came behind it; `strAfter` are lines at the
// end.
void DisplayError(const LinkFailure& failure, const std::string& strMsg,
                  const std::string& strAfter = {});

}  // namespace velmoor
