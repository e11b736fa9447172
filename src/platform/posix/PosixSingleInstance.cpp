#include "platform/posix/PosixSingleInstance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "platform/Bounds.h"
#include "platform/Files.h"
#include "platform/posix/ProgramPlaces.h"

namespace velmoor::posix {
namespace {

using Deadline = std::chrono::steady_clock::time_point;

constexpr char kFind = 'F';
constexpr char kVisible = 'V';
constexpr char kActivate = 'A';
constexpr char kMessage = 'M';
constexpr char kYes = '1';
constexpr char kNo = '0';
constexpr std::size_t kLengthBytes = 4;
// A peer has written its request when it connects; one that has not is not waited for.
constexpr std::chrono::milliseconds kRequestLimit{200};
// The other side may be within an exchange with the amplifier.
constexpr std::chrono::milliseconds kAnswerLimit{5000};

bool WaitFor(int descriptor, short events, Deadline deadline) {
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() < 0) return false;
    pollfd entry{descriptor, events, 0};
    const int count = ::poll(&entry, 1, static_cast<int>(left.count()) + 1);
    if (count > 0) return true;
    if (count < 0 && errno != EINTR) return false;
  }
}

// Exactly `count` bytes, or nothing.
std::optional<std::string> ReadBytes(int descriptor, std::size_t count, Deadline deadline) {
  std::string bytes(count, '\0');
  std::size_t have = 0;
  while (have < count) {
    if (!WaitFor(descriptor, POLLIN, deadline)) return std::nullopt;
    const ssize_t got = ::read(descriptor, bytes.data() + have, count - have);
    if (got == 0 || (got < 0 && errno != EINTR && errno != EAGAIN)) return std::nullopt;
    if (got > 0) have += static_cast<std::size_t>(got);
  }
  return bytes;
}

bool WriteBytes(int descriptor, const std::string& bytes, Deadline deadline) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    if (!WaitFor(descriptor, POLLOUT, deadline)) return false;
    const ssize_t count =
        ::send(descriptor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR && errno != EAGAIN) return false;
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
  return true;
}

std::string LengthBytes(std::size_t length) {
  std::string bytes;
  for (std::size_t i = 0; i < kLengthBytes; ++i) {
    bytes += static_cast<char>((length >> (8 * i)) & 0xff);
  }
  return bytes;
}

std::size_t LengthOf(const std::string& bytes) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < kLengthBytes; ++i) {
    length |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
  }
  return length;
}

// The request with its letter in front; nothing where it is cut short, too long or of no kind.
std::optional<std::string> ReadRequest(int connection) {
  const Deadline deadline = std::chrono::steady_clock::now() + kRequestLimit;
  std::optional<std::string> letter = ReadBytes(connection, 1, deadline);
  if (!letter || letter->front() != kMessage) return letter;
  const auto length = ReadBytes(connection, kLengthBytes, deadline);
  if (!length || LengthOf(*length) > bounds::kInstanceMessage) return std::nullopt;
  const auto body = ReadBytes(connection, LengthOf(*length), deadline);
  return body ? std::optional(*letter + *body) : std::nullopt;
}

bool IsOwnUser(int connection) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  const int result = ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size);
  return result == 0 && peer.uid == ::getuid();
}

sockaddr_un Address(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) {
    throw std::runtime_error("The name of the message channel is too long: " + path);
  }
  std::copy(path.begin(), path.end(), address.sun_path);
  return address;
}

FileDescriptor MakeSocket() {
  return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

const sockaddr* Generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

// Makes the directory where there is none. False: it is no directory of this user.
bool IsMadeOwn(const std::string& directory) {
  if (::mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST) return false;
  const FileDescriptor handle(
      ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat state {};
  return handle.IsValid() && ::fstat(handle.Get(), &state) == 0 && state.st_uid == ::getuid() &&
         ::fchmod(handle.Get(), 0700) == 0;
}

}  // namespace

std::string RuntimeDirectory() {
  const char* const given = std::getenv("XDG_RUNTIME_DIR");
  if (given != nullptr && *given == '/' && ::access(given, W_OK) == 0) return given;
  const char* const temporary = std::getenv("TMPDIR");
  const std::string usual =
      JoinPath(temporary != nullptr ? temporary : "/tmp", "velmoor-" + std::to_string(::getuid()));
  if (IsMadeOwn(usual)) return usual;
  // Somebody else has laid the name there first: below the user's own folders nobody can.
  const std::string own = JoinPath(StateDirectory(), "run");
  std::error_code failed;
  std::filesystem::create_directories(GetFileDirectory(own), failed);
  if (IsMadeOwn(own)) return own;
  throw std::runtime_error("Neither " + usual + " nor " + own + " is a directory of this user");
}

PosixSingleInstance::PosixSingleInstance(DescriptorWatcher watcher, std::string directory)
    : watcher_(std::move(watcher)),
      directory_(directory.empty() ? RuntimeDirectory() : std::move(directory)) {}

PosixSingleInstance::~PosixSingleInstance() {
  StopListening();
}

std::string PosixSingleInstance::PathOf(const char* ending) const {
  return JoinPath(directory_, name_ + ending);
}

bool PosixSingleInstance::Claim(const std::string& name) {
  name_ = name;
  FileDescriptor lock(
      ::open(PathOf(".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!lock.IsValid()) {
    throw std::runtime_error("The file " + PathOf(".lock") +
                             " cannot be opened: " + std::strerror(errno));
  }
  if (::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return false;
  lock_ = std::move(lock);
  return true;
}

void PosixSingleInstance::Release() {
  lock_.Reset();
}

void PosixSingleInstance::Listen(std::function<void(std::string)> onMessage,
                                 std::function<bool()> isVisible,
                                 std::function<void()> onActivate) {
  onMessage_ = std::move(onMessage);
  isVisible_ = std::move(isVisible);
  onActivate_ = std::move(onActivate);
  const std::string path = PathOf(".socket");
  // Whoever holds the lock is alone: a socket that lies here was left by a crash.
  ::unlink(path.c_str());
  socket_ = MakeSocket();
  const sockaddr_un address = Address(path);
  const mode_t before = ::umask(0177);
  const bool bound = ::bind(socket_.Get(), Generic(address), sizeof(address)) == 0;
  ::umask(before);
  if (!bound || ::listen(socket_.Get(), 8) != 0) {
    throw std::runtime_error("The message channel " + path +
                             " cannot be opened: " + std::strerror(errno));
  }
  watch_ = watcher_(socket_.Get(), [this] { Serve(); });
}

void PosixSingleInstance::StopListening() {
  if (!socket_.IsValid()) return;
  watch_.reset();
  socket_.Reset();
  ::unlink(PathOf(".socket").c_str());
}

void PosixSingleInstance::Serve() {
  const FileDescriptor connection(
      ::accept4(socket_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!connection.IsValid() || !IsOwnUser(connection.Get())) return;
  const auto request = ReadRequest(connection.Get());
  if (request) Answer(connection.Get(), *request);
}

void PosixSingleInstance::Answer(int connection, const std::string& request) {
  const char letter = request.front();
  const bool no = letter == kVisible && !isVisible_();
  // The receipt goes out first: the handler may show boxes for as long as it likes.
  WriteBytes(connection, std::string(1, no ? kNo : kYes),
             std::chrono::steady_clock::now() + kRequestLimit);
  if (letter == kActivate) onActivate_();
  if (letter == kMessage) onMessage_(request.substr(1));
}

FileDescriptor PosixSingleInstance::Connect() const {
  FileDescriptor connection = MakeSocket();
  const sockaddr_un address = Address(PathOf(".socket"));
  if (::connect(connection.Get(), Generic(address), sizeof(address)) != 0) connection.Reset();
  return connection;
}

std::optional<char> PosixSingleInstance::Ask(const std::string& request,
                                             std::chrono::milliseconds limit) const {
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  const FileDescriptor connection = Connect();
  if (!connection.IsValid() || !WriteBytes(connection.Get(), request, deadline)) {
    return std::nullopt;
  }
  const auto answer = ReadBytes(connection.Get(), 1, deadline);
  return answer ? std::optional(answer->front()) : std::nullopt;
}

Running PosixSingleInstance::FindRunning() {
  if (Ask({kFind}, kAnswerLimit)) return Running::answers;
  return Connect().IsValid() ? Running::silent : Running::nobody;
}

bool PosixSingleInstance::IsRunningVisible() {
  return Ask({kVisible}, kAnswerLimit) == kYes;
}

void PosixSingleInstance::SendMessage(const std::string& bytes, std::chrono::milliseconds limit) {
  if (bytes.size() > bounds::kInstanceMessage) return;
  (void)Ask(kMessage + LengthBytes(bytes.size()) + bytes, limit);
}

void PosixSingleInstance::ActivateRunning() {
  (void)Ask({kActivate}, kAnswerLimit);
}

}  // namespace velmoor::posix
