// Lets a program without an event loop come to its end when a signal asks for it.
#pragma once

namespace velmoor::posix {

// SIGTERM, SIGINT and SIGHUP are noted for as long as the object lives; the same one again ends the
// process at once. One object a process.
class NotedSignals {
 public:
  NotedSignals();
  ~NotedSignals();
  NotedSignals(const NotedSignals&) = delete;
  NotedSignals& operator=(const NotedSignals&) = delete;

  // Whether the program is to come to its end.
  [[nodiscard]] static bool Came();

  // From now on SIGHUP wants what was read to be read again.
  static void RereadAtHangUp();
  // It came since this was last asked.
  [[nodiscard]] static bool HungUp();
  // The program has come to its end in order: that is how it ends.
  static void Settle();
};

// Ends the process by the signal that was noted, so that its starter sees it; returns without one.
void EndBySignal();

}  // namespace velmoor::posix
