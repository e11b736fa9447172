#include "platform/posix/SerialSettings.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <cerrno>
#include <optional>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor::posix {
namespace {

struct Frame {
  std::optional<speed_t> speed;
  char parity = 'e';
  int dataBits = 7;
  int stopBits = 2;
};

// Cuts the part before the next comma off the front.
std::string_view NextPart(std::string_view& text) {
  const std::size_t comma = text.find(',');
  const std::string_view part = text.substr(0, comma);
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return Trim(part);
}

std::optional<speed_t> SpeedOf(std::string_view text) {
  constexpr std::pair<std::int64_t, speed_t> kSpeeds[] = {
      {9600, B9600}, {19200, B19200}, {38400, B38400}};
  const auto number = ParseWhole(text);
  for (const auto& [rate, speed] : kSpeeds) {
    if (number == rate) return speed;
  }
  return std::nullopt;
}

Frame ParseFrame(std::string_view settings) {
  Frame frame;
  frame.speed = SpeedOf(NextPart(settings));
  const std::string parity = LowerCase(NextPart(settings));
  if (!parity.empty()) frame.parity = parity.front();
  frame.dataBits = ParseWhole(NextPart(settings)) == 8 ? 8 : 7;
  frame.stopBits = ParseWhole(NextPart(settings)) == 1 ? 1 : 2;
  return frame;
}

void FillFrame(const Frame& frame, termios& attributes) {
  cfmakeraw(&attributes);
  attributes.c_cflag |= CREAD | CLOCAL;
  attributes.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS);
  attributes.c_cflag |= frame.dataBits == 8 ? CS8 : CS7;
  if (frame.parity != 'n') attributes.c_cflag |= PARENB;
  if (frame.parity == 'o') attributes.c_cflag |= PARODD;
  if (frame.stopBits == 2) attributes.c_cflag |= CSTOPB;
  // A character whose parity or frame is wrong then arrives as a zero byte.
  if (frame.parity != 'n') attributes.c_iflag |= INPCK;
  // A break would otherwise arrive as a zero byte.
  attributes.c_iflag |= IGNBRK;
  attributes.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
  attributes.c_cc[VMIN] = 1;
  attributes.c_cc[VTIME] = 0;
  if (frame.speed) {
    cfsetispeed(&attributes, *frame.speed);
    cfsetospeed(&attributes, *frame.speed);
  }
}

// The same but for size and parity, which a pseudo-terminal refuses.
bool IsSameButForFrameBits(const termios& asked, const termios& got) {
  constexpr auto kFrameBits = static_cast<tcflag_t>(CSIZE | PARENB | PARODD);
  return asked.c_iflag == got.c_iflag && asked.c_oflag == got.c_oflag &&
         asked.c_lflag == got.c_lflag &&
         (asked.c_cflag & ~kFrameBits) == (got.c_cflag & ~kFrameBits) &&
         cfgetospeed(&asked) == cfgetospeed(&got);
}

}  // namespace

bool IsPseudoTerminal(int terminal) {
  struct stat status {};
  if (fstat(terminal, &status) != 0 || !S_ISCHR(status.st_mode)) return false;
  const unsigned device = major(status.st_rdev);
  return device >= 136 && device <= 143;
}

int ApplySerialSettings(int terminal, const std::string& settings) {
  termios attributes{};
  if (tcgetattr(terminal, &attributes) != 0) return errno;
  FillFrame(ParseFrame(settings), attributes);
  if (tcsetattr(terminal, TCSAFLUSH, &attributes) == 0) return 0;
  const int error = errno;
  termios got{};
  const bool refusedFrameOnly = error == EINVAL && IsPseudoTerminal(terminal) &&
                                tcgetattr(terminal, &got) == 0 &&
                                IsSameButForFrameBits(attributes, got);
  return refusedFrameOnly ? 0 : error;
}

}  // namespace velmoor::posix
