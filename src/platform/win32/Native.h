// The adapters of this system by names that all systems have, for the programs that put them
// together.
#pragma once

#include <io.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/win32/ConsoleSignals.h"
#include "platform/win32/ConsoleStreams.h"
#include "platform/win32/PdfModule.h"
#include "platform/win32/ProgramPlaces.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32Events.h"
#include "platform/win32/Win32Files.h"
#include "platform/win32/Win32SerialPort.h"

namespace velmoor::native {

using win32::CatalogueCopyPlace;
using win32::ExecutableDirectory;
using win32::PdfModule;
using win32::ProgramDirectory;
using win32::StateDirectory;
using Clock = win32::Win32Clock;
using Events = win32::Win32Events;
using Files = win32::Win32Files;
using SerialPort = win32::Win32SerialPort;
using Signals = win32::ConsoleSignals;

inline constexpr const char* kPagesModule = "velmoor-pages.dll";

// Whether somebody watches the stream of errors on a console.
[[nodiscard]] inline bool IsErrorStreamWatched() {
  return _isatty(_fileno(stderr)) != 0;
}

// The words behind the program's name, in UTF-8.
[[nodiscard]] inline std::vector<std::string> CommandLineWords(int /*argc*/, char** /*argv*/) {
  return win32::TakeCommandLine();
}

// Signals do not end a process here.
inline void EndBySignal() {}

}  // namespace velmoor::native
