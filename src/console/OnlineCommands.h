// The commands of velmoorctl that watch the live amplifier, or talk to it line by line.
#pragma once

namespace velmoor {

struct Context;

// Each returns false after a failure, of which the user was told.

// One line as the terminal sends it, in capitals; prints the answer.
[[nodiscard]] bool Send(const Context& context);
// The lines of a script, one after the other; a failed line is told and the next one goes out.
[[nodiscard]] bool RunScript(const Context& context);
// The present state and the history as CSV.
[[nodiscard]] bool Alarms(const Context& context);
// Values over time as CSV, a line for each pass; the first failure ends it.
[[nodiscard]] bool Monitor(const Context& context);

}  // namespace velmoor
