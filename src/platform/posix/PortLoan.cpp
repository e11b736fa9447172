#include "platform/posix/PortLoan.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <span>

#include "platform/Numbers.h"

namespace velmoor::posix {
namespace {

constexpr int kWaiting = 8;
constexpr char kFree = 'f';

std::optional<struct stat> DeviceAt(const std::string& path) {
  struct stat device {};
  if (::stat(path.c_str(), &device) != 0 || !S_ISCHR(device.st_mode)) return std::nullopt;
  return device;
}

// A name without a file: it is gone with its last holder.
struct Address {
  explicit Address(dev_t device) {
    const std::string name = "velmoor-port-" + NumberText(static_cast<std::uint64_t>(device));
    place.sun_family = AF_UNIX;
    std::memcpy(place.sun_path + 1, name.data(), name.size());
    bytes = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  }
  [[nodiscard]] const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&place); }

  sockaddr_un place{};
  socklen_t bytes = 0;
};

FileDescriptor Socket(int flags) {
  return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

bool Has(mode_t mode, mode_t reading, mode_t writing) {
  return (mode & reading) != 0 && (mode & writing) != 0;
}

// Whether the program at the other end may read and write the device, by its permissions.
bool MayUse(int connection, const struct stat& device) {
  ucred peer{};
  socklen_t size = sizeof peer;
  if (::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return false;
  if (peer.uid == 0) return true;
  if (peer.uid == device.st_uid) return Has(device.st_mode, S_IRUSR, S_IWUSR);
  std::array<gid_t, 256> groups{};
  size = sizeof groups;
  if (::getsockopt(connection, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &size) != 0) size = 0;
  const std::span<const gid_t> others(groups.data(), size / sizeof(gid_t));
  const bool inGroup =
      peer.gid == device.st_gid || std::ranges::find(others, device.st_gid) != others.end();
  return inGroup ? Has(device.st_mode, S_IRGRP, S_IWGRP) : Has(device.st_mode, S_IROTH, S_IWOTH);
}

// The other end is gone; nothing that it says is of interest.
bool HasEnded(int connection) {
  char byte = 0;
  const ssize_t count = ::recv(connection, &byte, 1, MSG_DONTWAIT);
  return count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

}  // namespace

void PortLender::Listen() {
  const auto device = DeviceAt(device_);
  if (!device || (listener_.IsValid() && number_ == device->st_rdev)) return;
  listener_ = Socket(SOCK_NONBLOCK);
  number_ = device->st_rdev;
  const Address address(device->st_rdev);
  if (::bind(listener_.Get(), address.Get(), address.bytes) != 0 ||
      ::listen(listener_.Get(), kWaiting) != 0) {
    listener_.Reset();
  }
}

void PortLender::TakeAskers() {
  for (;;) {
    FileDescriptor connection(::accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!connection.IsValid()) return;
    const auto device = DeviceAt(device_);
    if (device && MayUse(connection.Get(), *device)) askers_.push_back({std::move(connection)});
  }
}

bool PortLender::IsWanted() {
  Listen();
  if (listener_.IsValid()) TakeAskers();
  std::erase_if(askers_, [](const Asker& asker) { return HasEnded(asker.connection.Get()); });
  return !askers_.empty();
}

void PortLender::TellFree() {
  for (Asker& asker : askers_) {
    if (asker.told) continue;
    asker.told = ::send(asker.connection.Get(), &kFree, 1, MSG_DONTWAIT | MSG_NOSIGNAL) == 1;
  }
}

FileDescriptor BorrowPort(const std::string& device, std::chrono::milliseconds limit) {
  const auto found = DeviceAt(device);
  if (!found) return {};
  FileDescriptor connection = Socket(0);
  const Address address(found->st_rdev);
  if (::connect(connection.Get(), address.Get(), address.bytes) != 0) return {};
  pollfd look{.fd = connection.Get(), .events = POLLIN, .revents = 0};
  char answer = 0;
  const bool came = ::poll(&look, 1, static_cast<int>(limit.count())) == 1 &&
                    ::recv(connection.Get(), &answer, 1, MSG_DONTWAIT) == 1;
  if (!came || answer != kFree) return {};
  return connection;
}

}  // namespace velmoor::posix
