#include "platform/posix/PosixSerialPort.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <system_error>
#include <utility>

#include "platform/Bounds.h"
#include "platform/Numbers.h"
#include "platform/posix/PortHolder.h"
#include "platform/posix/PortLoan.h"
#include "platform/posix/SerialSettings.h"

namespace velmoor::posix {
namespace {

constexpr int kHighestPort = 256;
constexpr std::size_t kMostSoon = 3;  // characters
// An exchange of the lender's that is under way ends first.
constexpr std::chrono::milliseconds kLongestLoan{3000};

std::string SystemText(int error) {
  return std::generic_category().message(error);
}

// Some adapters for the universal bus hold received bytes back for 16 ms unless asked not to. Not
// every device knows the request, and none needs it to work.
void AskForLowLatency(int device) {
  serial_struct line{};
  if (ioctl(device, TIOCGSERIAL, &line) != 0) return;
  line.flags |= ASYNC_LOW_LATENCY;
  (void)ioctl(device, TIOCSSERIAL, &line);
}

// Of a start bit, seven data bits, parity and two stop bits.
std::chrono::nanoseconds CharacterTime(std::string_view settings) {
  const auto rate = ParseWhole(settings.substr(0, settings.find(',')));
  if (!rate || *rate <= 0) return std::chrono::nanoseconds(0);
  return std::chrono::nanoseconds(11'000'000'000 / *rate);
}

std::string OpenFailure(const std::string& path, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return path + " does not exist.  Plug the adapter in, or assign another one.";
    case ENXIO:
    case ENODEV:
      return path + " has no device behind it.  Choose another port.";
    case EACCES:
    case EPERM:
      return "Access to " + path + " is not allowed." + DescribeAccess(path);
    case EBUSY:
    case EWOULDBLOCK:
      return path + " is in use" + DescribeHolder(path) + ".  Close that program.";
    case ENOTTY:
      return path + " is not a serial port.  Choose another port.";
    default:
      return path + " cannot be used: " + SystemText(error) + ".";
  }
}

}  // namespace

std::string PosixSerialPort::DeviceOf(const std::string& name) const {
  if (const auto entry = deviceMap_.find(name); entry != deviceMap_.end()) return entry->second;
  if (name.rfind("COM", 0) != 0) return {};
  const auto number = ParseWhole(name.substr(3));
  if (!number || *number < 1 || *number > kHighestPort) return {};
  return "/dev/ttyS" + NumberText(*number - 1);
}

void PosixSerialPort::SetSettings(const std::string& settings) {
  settings_ = settings;
  characterTime_ = CharacterTime(settings);
  if (!IsOpen()) return;
  received_.Clear();
  // A line that takes no settings has lost its device; the next exchange finds the port closed.
  const int error = ApplySerialSettings(device_.Get(), settings_);
  if (error != 0) {
    lastError_ = OpenFailure(DevicePath(), error);
    Close();
  }
}

bool PosixSerialPort::Open() {
  Close();
  lastError_.clear();
  const std::string path = DevicePath();
  if (path.empty() || path.find('\0') != std::string::npos) {
    lastError_ = "The port " + name_ + " is not assigned to a device.";
    return false;
  }
  int error = OpenDevice(path);
  if (borrows_ && (error == EWOULDBLOCK || error == EBUSY)) {
    loan_ = BorrowPort(path, kLongestLoan);
    if (loan_.IsValid()) error = OpenDevice(path);
    if (error != 0) loan_.Reset();
  }
  if (error != 0) lastError_ = OpenFailure(path, error);
  return error == 0;
}

int PosixSerialPort::OpenDevice(const std::string& path) {
  FileDescriptor device(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!device.IsValid()) return errno;
  if (isatty(device.Get()) == 0) return errno == EIO ? EIO : ENOTTY;
  if (flock(device.Get(), LOCK_EX | LOCK_NB) != 0) return EWOULDBLOCK;
  // The exclusive mode outlives this process on a pseudo-terminal whose other side stays open, so a
  // crash would lock everybody out; there the lock above has to do.
  if (!IsPseudoTerminal(device.Get())) {
    (void)ioctl(device.Get(), TIOCEXCL);
    AskForLowLatency(device.Get());
  }
  const int error = ApplySerialSettings(device.Get(), settings_);
  if (error != 0) return error;
  device_ = std::move(device);
  DiscardInput();
  return 0;
}

void PosixSerialPort::Close() {
  device_.Reset();
  loan_.Reset();
  received_.Clear();
}

int PosixSerialPort::WaitingBytes() {
  if (!IsOpen()) return 0;
  int waiting = 0;
  if (ioctl(device_.Get(), FIONREAD, &waiting) != 0) Lose(errno);
  // A line that hung up calls itself readable: what can be read is its end.
  pollfd look{.fd = device_.Get(), .events = POLLIN, .revents = 0};
  constexpr int kGone = POLLHUP | POLLERR | POLLNVAL;
  if (waiting == 0 && poll(&look, 1, 0) > 0 && (look.revents & kGone) != 0) Lose(EIO);
  return waiting + static_cast<int>(received_.Size());
}

void PosixSerialPort::DiscardInput() {
  received_.Clear();
  if (IsOpen()) (void)tcflush(device_.Get(), TCIFLUSH);
}

void PosixSerialPort::Lose(int error) {
  const std::string path = DevicePath();
  Close();
  throw SerialPortError(path + " is gone: " + SystemText(error) + ".  Plug the adapter in again.");
}

PosixSerialPort::Deadline PosixSerialPort::DeadlineFromNow() const {
  return std::chrono::steady_clock::now() + std::chrono::milliseconds(std::max(timeOut_, 0));
}

bool PosixSerialPort::WaitFor(short events, Deadline deadline) {
  using std::chrono::duration_cast;
  for (;;) {
    const auto left = std::max(deadline - std::chrono::steady_clock::now(), Deadline::duration(0));
    const auto seconds = duration_cast<std::chrono::seconds>(left);
    const timespec limit{.tv_sec = static_cast<time_t>(seconds.count()),
                         .tv_nsec = static_cast<long>(
                             duration_cast<std::chrono::nanoseconds>(left - seconds).count())};
    pollfd look{.fd = device_.Get(), .events = events, .revents = 0};
    const int ready = ppoll(&look, 1, &limit, nullptr);
    if (ready == 0) return false;
    if (ready < 0) {
      if (errno != EINTR) Lose(errno);
      continue;
    }
    // What came before the other side went is still to be had.
    if ((look.revents & events) != 0) return true;
    Lose(EIO);
  }
}

void PosixSerialPort::WriteLine(std::string_view line) {
  if (!IsOpen()) return;
  std::string bytes(line);
  bytes += '\r';
  pace_.LineWritten(line);
  written_ = std::chrono::steady_clock::now();
  awaitsBeginning_ = true;
  const Deadline deadline = DeadlineFromNow();
  for (std::string_view rest = bytes; !rest.empty();) {
    const ssize_t written = ::write(device_.Get(), rest.data(), rest.size());
    if (written > 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
      continue;
    }
    if (written < 0 && errno == EINTR) continue;
    if (written < 0 && errno != EAGAIN) Lose(errno);
    if (!WaitFor(POLLOUT, deadline)) Lose(ETIMEDOUT);
  }
}

void PosixSerialPort::SleepThrough(std::chrono::nanoseconds quiet, Deadline deadline) const {
  const auto left = deadline - std::chrono::steady_clock::now();
  const auto nanoseconds =
      std::max<std::int64_t>(std::min<std::int64_t>(quiet.count(), left.count()), 0);
  const timespec limit{.tv_sec = nanoseconds / 1'000'000'000,
                       .tv_nsec = nanoseconds % 1'000'000'000};
  (void)clock_nanosleep(CLOCK_MONOTONIC, 0, &limit, nullptr);
}

void PosixSerialPort::Receive() {
  std::array<char, 256> chunk{};
  const ssize_t count = ::read(device_.Get(), chunk.data(), chunk.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) Lose(count < 0 ? errno : EIO);
  received_.Add({chunk.data(), static_cast<std::size_t>(count)});
}

// The end of the line before may come meanwhile, which is no beginning.
void PosixSerialPort::AwaitBeginning(Deadline deadline) {
  awaitsBeginning_ = false;
  if (const std::size_t own = pace_.OwnCharacters(); own > 0) {
    SleepThrough(characterTime_ * (2 * own + 1) / 2, deadline);
    Receive();
    // More than could have come since: it was heard earlier.
    if (received_.Begun().size() > kMostSoon) return pace_.AnswerBegan(0);
  }
  while (received_.Begun().empty()) {
    if (!WaitFor(POLLIN, deadline)) return;
    Receive();
  }
  const auto took = std::chrono::duration<double>(std::chrono::steady_clock::now() - written_);
  const double character = std::chrono::duration<double>(characterTime_).count();
  pace_.AnswerBegan(character > 0 ? took.count() / character : 0);
}

std::string PosixSerialPort::ReadLine() {
  if (!IsOpen()) return {};
  const Deadline deadline = DeadlineFromNow();
  if (awaitsBeginning_) AwaitBeginning(deadline);
  for (;;) {
    std::string line = received_.Take();
    if (!line.empty()) {
      pace_.LineReceived(line);
      return line;
    }
    const std::chrono::nanoseconds quiet =
        characterTime_ * pace_.QuietCharacters(received_.Begun());
    if (quiet.count() > 0 && std::chrono::steady_clock::now() < deadline) {
      SleepThrough(quiet, deadline);
    } else if (!WaitFor(POLLIN, deadline)) {
      return {};
    }
    Receive();
  }
}

}  // namespace velmoor::posix
