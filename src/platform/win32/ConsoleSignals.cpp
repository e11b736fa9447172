#include "platform/win32/ConsoleSignals.h"

#include <atomic>

#include "platform/win32/Windows.h"

namespace velmoor::win32 {
namespace {

std::atomic<bool> gNoted = false;

// Runs on a thread of the system's. False: the process ends as it does by default.
BOOL WINAPI Note(DWORD /*kind*/) {
  return gNoted.exchange(true) ? FALSE : TRUE;
}

}  // namespace

ConsoleSignals::ConsoleSignals() {
  SetConsoleCtrlHandler(Note, TRUE);
}

ConsoleSignals::~ConsoleSignals() {
  SetConsoleCtrlHandler(Note, FALSE);
}

bool ConsoleSignals::Came() {
  return gNoted;
}

}  // namespace velmoor::win32
