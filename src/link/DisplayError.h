// The shared report of a failed operation on the amplifier.
#pragma once

#include <string>

#include "link/LinkFailure.h"
#include "link/ResultCode.h"

namespace velmoor {

// The link's own text for 0 and below; above, the name of the device error, or its number where it
// has no name. Reads the session through gMainForm.
[[nodiscard]] std::string ResultText(ResultCode lngResult);

// Shows an exclamation box with `strMsg`, a line break and the text of `lngResult`. Behind it,
// where the device object's latest failure is this one, what was asked and why it failed.
void DisplayError(ResultCode lngResult, const std::string& strMsg);
// The same of a failure that was kept, since others came behind it; `strAfter` are lines at the
// end.
void DisplayError(const LinkFailure& failure, const std::string& strMsg,
                  const std::string& strAfter = {});

}  // namespace velmoor
