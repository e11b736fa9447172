// What another process may write into the channel between instances.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "Folder.h"
#include "Target.h"
#include "platform/posix/PosixSingleInstance.h"

namespace velmoor::fuzz {
namespace {

struct Listener {
  Listener() {
    instance.Claim("fuzz");
    instance.Listen([this](const std::string& message) { received = message; }, [] { return true; },
                    [] {});
  }
  Folder folder{"messages"};
  std::string received;
  std::function<void()> serve;
  posix::PosixSingleInstance instance{[this](int /*socket*/, std::function<void()> ready) {
                                        serve = std::move(ready);
                                        return std::shared_ptr<void>();
                                      },
                                      folder.path};
};

}  // namespace
}  // namespace velmoor::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor::fuzz;
  static Listener listener;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = listener.folder.path + "/fuzz.socket";
  std::copy(path.begin(), path.end(), address.sun_path);
  const int peer = socket(AF_UNIX, SOCK_STREAM, 0);
  const bool connected =
      connect(peer, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  Require(connected, "the channel takes connections");
  (void)!send(peer, data, std::min<std::size_t>(size, 100000), MSG_NOSIGNAL | MSG_DONTWAIT);
  shutdown(peer, SHUT_WR);
  listener.serve();
  close(peer);
  return 0;
}
