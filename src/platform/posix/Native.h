// The adapters of this system by names that all systems have, for the programs that put them
// together.
#pragma once

#include <unistd.h>

#include <string>
#include <vector>

#include "platform/posix/NotedSignals.h"
#include "platform/posix/PdfModule.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixEvents.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSerialPort.h"
#include "platform/posix/ProgramPlaces.h"

namespace velmoor::native {

using posix::CatalogueCopyPlace;
using posix::EndBySignal;
using posix::ExecutableDirectory;
using posix::PdfModule;
using posix::ProgramDirectory;
using posix::StateDirectory;
using Clock = posix::PosixClock;
using Events = posix::PosixEvents;
using Files = posix::PosixFiles;
using SerialPort = posix::PosixSerialPort;
using Signals = posix::NotedSignals;

inline constexpr const char* kPagesModule = "velmoor-pages.so";

// Whether somebody watches the stream of errors on a terminal.
[[nodiscard]] inline bool IsErrorStreamWatched() {
  return ::isatty(STDERR_FILENO) != 0;
}

// The words behind the program's name.
[[nodiscard]] inline std::vector<std::string> CommandLineWords(int argc, char** argv) {
  return {argv + 1, argv + argc};
}

}  // namespace velmoor::native
