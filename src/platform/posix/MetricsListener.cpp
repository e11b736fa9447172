#include "platform/posix/MetricsListener.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "platform/Numbers.h"

namespace velmoor::posix {
namespace {

constexpr std::size_t kMostRequest = 8192;  // bytes
constexpr std::chrono::seconds kPatience{2};
constexpr int kWaiting = 16;

using Deadline = std::chrono::steady_clock::time_point;

// Waits until the deadline; false behind it.
bool Ready(int connection, short events, Deadline deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
      deadline - std::chrono::steady_clock::now());
  pollfd look{.fd = connection, .events = events, .revents = 0};
  return left.count() > 0 && ::poll(&look, 1, static_cast<int>(left.count())) == 1;
}

// The first line of what is asked; empty: nothing sensible.
std::string Request(int connection, Deadline deadline) {
  std::string request;
  while (request.find("\r\n\r\n") == std::string::npos) {
    std::array<char, 1024> piece{};
    if (request.size() > kMostRequest || !Ready(connection, POLLIN, deadline)) return {};
    const ssize_t count = ::recv(connection, piece.data(), piece.size(), MSG_DONTWAIT);
    if (count <= 0) return {};
    request.append(piece.data(), static_cast<std::size_t>(count));
  }
  return request.substr(0, request.find("\r\n"));
}

void SendAll(int connection, std::string_view bytes, Deadline deadline) {
  while (!bytes.empty() && Ready(connection, POLLOUT, deadline)) {
    const ssize_t count =
        ::send(connection, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

struct HostAndPort {
  std::string host, port;
};

HostAndPort Split(const std::string& address) {
  const std::size_t colon = address.rfind(':');
  HostAndPort split{.host = "127.0.0.1", .port = address};
  if (colon != std::string::npos) split = {address.substr(0, colon), address.substr(colon + 1)};
  if (split.host.starts_with('[') && split.host.ends_with(']')) {
    split.host = split.host.substr(1, split.host.size() - 2);
  }
  const auto number = ParseWhole(split.port);
  if (!number || *number < 1 || *number > 65535 || split.host.empty()) {
    throw std::runtime_error("'" + address + "' is no place to listen: 9464, or 127.0.0.1:9464");
  }
  return split;
}

FileDescriptor ListenAt(const std::string& address) {
  const HostAndPort at = Split(address);
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICHOST | AI_PASSIVE;
  addrinfo* found = nullptr;
  if (::getaddrinfo(at.host.c_str(), at.port.c_str(), &hints, &found) != 0) {
    throw std::runtime_error("'" + address + "' is no place to listen: the address in numbers");
  }
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, ::freeaddrinfo);
  FileDescriptor listener(
      ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const int yes = 1;
  (void)::setsockopt(listener.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  if (::bind(listener.Get(), found->ai_addr, found->ai_addrlen) != 0 ||
      ::listen(listener.Get(), kWaiting) != 0) {
    throw std::runtime_error("Nobody can ask at " + address + ": " +
                             std::generic_category().message(errno));
  }
  return listener;
}

}  // namespace

MetricsListener::MetricsListener(const std::string& address) : listener_(ListenAt(address)) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  ended_ = FileDescriptor(pipe[0]);
  end_ = FileDescriptor(pipe[1]);
  thread_ = std::thread([this] { Run(); });
}

MetricsListener::~MetricsListener() {
  end_.Reset();
  thread_.join();
}

void MetricsListener::Show(const std::string& text) {
  const std::scoped_lock lock(mutex_);
  text_ = text;
}

void MetricsListener::Run() {
  for (;;) {
    std::array<pollfd, 2> looks{pollfd{.fd = listener_.Get(), .events = POLLIN, .revents = 0},
                                pollfd{.fd = ended_.Get(), .events = POLLIN, .revents = 0}};
    if (::poll(looks.data(), looks.size(), -1) < 0) continue;
    if (looks[1].revents != 0) return;
    const FileDescriptor connection(::accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (connection.IsValid()) Answer(connection.Get());
  }
}

void MetricsListener::Answer(int connection) {
  const Deadline deadline = std::chrono::steady_clock::now() + kPatience;
  const std::string request = Request(connection, deadline);
  std::string status = "404 Not Found";
  std::string type = "text/plain; charset=utf-8";
  std::string text = "Ask for /metrics.\n";
  if (request.starts_with("GET /metrics ") || request.starts_with("GET /metrics?")) {
    const std::scoped_lock lock(mutex_);
    status = "200 OK";
    type = "application/openmetrics-text; version=1.0.0; charset=utf-8";
    text = text_;
  }
  SendAll(connection,
          "HTTP/1.1 " + status + "\r\nContent-Type: " + type + "\r\nContent-Length: " +
              NumberText(text.size()) + "\r\nConnection: close\r\n\r\n" + text,
          deadline);
  (void)::shutdown(connection, SHUT_RDWR);
}

}  // namespace velmoor::posix
