// The command of velmoorctl that makes a project's report.
#pragma once

namespace velmoor {

struct Context;

// False after a failure, of which the user was told.
[[nodiscard]] bool Report(const Context& context);

}  // namespace velmoor
