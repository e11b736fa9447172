#include "platform/posix/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace velmoor::posix {
namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};

volatile sig_atomic_t gWriter = -1;

// Only what a handler may do: the rest happens in the event loop.
void Note(int number) {
  const int before = errno;
  const auto byte = static_cast<char>(number);
  [[maybe_unused]] const auto written = write(gWriter, &byte, 1);
  errno = before;
}

void Handle(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int number : kSignals) sigaction(number, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(const DescriptorWatch& watch,
                                       std::function<void()> beforeTheEnd)
    : beforeTheEnd_(std::move(beforeTheEnd)) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "No pipe for signals");
  }
  reader_ = FileDescriptor(ends[0]);
  writer_ = FileDescriptor(ends[1]);
  gWriter = writer_.Get();
  watch_ = watch(reader_.Get(), [this] { End(); });
  Handle(Note);
}

TerminationSignals::~TerminationSignals() {
  Handle(SIG_DFL);
  gWriter = -1;
}

void TerminationSignals::End() {
  char number = 0;
  if (read(reader_.Get(), &number, 1) != 1) return;
  // A second signal ends the process at once, whatever hangs in here.
  Handle(SIG_DFL);
  beforeTheEnd_();
  raise(number);
}

}  // namespace velmoor::posix
