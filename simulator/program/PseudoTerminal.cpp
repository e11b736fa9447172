#include "simulator/program/PseudoTerminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace velmoor {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

PseudoTerminal::PseudoTerminal()
    : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  std::array<char, 128> name{};
  if (!master_.IsValid() || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0 ||
      ptsname_r(master_.Get(), name.data(), name.size()) != 0) {
    Fail("No pseudo-terminal");
  }
  path_ = name.data();
  keeper_ = posix::FileDescriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios attributes{};
  if (!keeper_.IsValid() || tcgetattr(keeper_.Get(), &attributes) != 0) Fail(path_);
  // At once: it starts with an echo of its own.
  cfmakeraw(&attributes);
  if (tcsetattr(keeper_.Get(), TCSANOW, &attributes) != 0) Fail(path_);
}

std::int32_t PseudoTerminal::HostBaudRate() const {
  termios attributes{};
  if (tcgetattr(master_.Get(), &attributes) != 0) return 0;
  switch (cfgetospeed(&attributes)) {
    case B9600:
      return 9600;
    case B19200:
      return 19200;
    case B38400:
      return 38400;
    default:
      return 0;
  }
}

std::string PseudoTerminal::Read() {
  std::array<char, 512> chunk{};
  const ssize_t count = read(master_.Get(), chunk.data(), chunk.size());
  return count > 0 ? std::string(chunk.data(), static_cast<std::size_t>(count)) : std::string();
}

void PseudoTerminal::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(master_.Get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void TerminalLink::PointTo(const std::string& path) {
  if (name_.empty()) return;
  std::error_code ignored;
  if (fs::is_symlink(fs::symlink_status(name_, ignored))) fs::remove(name_, ignored);
  fs::create_symlink(path, name_);
  target_ = path;
}

void TerminalLink::Remove() {
  if (target_.empty()) return;
  std::error_code ignored;
  // Somebody else's by now, where it points elsewhere.
  if (fs::read_symlink(name_, ignored) == target_) fs::remove(name_, ignored);
  target_.clear();
}

}  // namespace velmoor
