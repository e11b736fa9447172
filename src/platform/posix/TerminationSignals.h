// Lets the program do what must be done before a signal ends it.
#pragma once

#include <csignal>
#include <functional>
#include <memory>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// Calls a function from the event loop when the descriptor has something to read, for as long as
// the result lives.
using DescriptorWatch =
    std::function<std::shared_ptr<void>(int descriptor, std::function<void()> onReadable)>;

// SIGTERM, SIGINT and SIGHUP run `beforeTheEnd` from the event loop, at the next time that events
// are served, and then end the process as they do by default. One object a process.
class TerminationSignals {
 public:
  // Throws std::system_error when the system has no descriptors left.
  TerminationSignals(const DescriptorWatch& watch, std::function<void()> beforeTheEnd);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  void End();

  std::function<void()> beforeTheEnd_;
  FileDescriptor reader_, writer_;
  std::shared_ptr<void> watch_;
};

}  // namespace velmoor::posix
