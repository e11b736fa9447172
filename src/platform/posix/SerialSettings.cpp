#include "platform/posix/SerialSettings.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <cerrno>

#include "platform/SerialFrame.h"

namespace velmoor::posix {
namespace {

speed_t CodeOf(int speed) {
  if (speed == 9600) return B9600;
  return speed == 19200 ? B19200 : B38400;
}

void FillFrame(const SerialFrame& frame, termios& attributes) {
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
  if (frame.speed != 0) {
    cfsetispeed(&attributes, CodeOf(frame.speed));
    cfsetospeed(&attributes, CodeOf(frame.speed));
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
  FillFrame(ParseSerialFrame(settings), attributes);
  if (tcsetattr(terminal, TCSAFLUSH, &attributes) == 0) return 0;
  const int error = errno;
  termios got{};
  const bool refusedFrameOnly = error == EINVAL && IsPseudoTerminal(terminal) &&
                                tcgetattr(terminal, &got) == 0 &&
                                IsSameButForFrameBits(attributes, got);
  return refusedFrameOnly ? 0 : error;
}

}  // namespace velmoor::posix
