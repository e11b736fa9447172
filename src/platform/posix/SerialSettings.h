// The settings text of a line, and how it is put on a terminal.
#pragma once

#include <string>

namespace velmoor::posix {

// Puts "19200,e,7,2" on the open terminal, raw, and throws away what was received so far. A speed
// other than 9600, 19200 and 38400 leaves the present one. Returns 0 or an error number.
//
// A pseudo-terminal has eight bits and no parity whatever is asked; that is no error there.
[[nodiscard]] int ApplySerialSettings(int terminal, const std::string& settings);

// True for the far side of a pseudo-terminal.
[[nodiscard]] bool IsPseudoTerminal(int terminal);

}  // namespace velmoor::posix
