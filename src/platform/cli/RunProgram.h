// The frame of every program's main function.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "platform/cli/ProgramTable.h"

namespace velmoor {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

// Does the work of a line that was understood, and gives the program's status.
using ProgramRun = std::function<int(const CommandLine& line)>;

// Answers what is asked of the program itself, or reads its line and runs it. A line that cannot be
// understood is told on `err`, with kWrongUsage; any other failure, which `run` throws, with
// kFailed. So is output that could not be written.
int RunProgram(const ProgramTable& table, const std::vector<std::string>& words, std::ostream& out,
               std::ostream& err, const ProgramRun& run);

// The same on the standard output. A reader that closes its pipe ends no process: the next write
// fails like any other.
int RunProgram(const ProgramTable& table, const std::vector<std::string>& words,
               const ProgramRun& run);
int RunProgram(const ProgramTable& table, int argc, char** argv, const ProgramRun& run);

}  // namespace velmoor
