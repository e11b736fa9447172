// One instance a user: a file lock that a crash frees, and a local socket for what a second start
// has to say.
//
// Both lie in the user's runtime directory and carry the name that was claimed. The socket serves
// this user only. A connection carries one request and its answer: a letter, for a message followed
// by its length in four bytes, the lowest first, and its bytes.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/SingleInstance.h"
#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// Calls the function from the event loop whenever the descriptor has something to read, for as long
// as the result lives.
using DescriptorWatcher = std::function<std::shared_ptr<void>(int, std::function<void()>)>;

class PosixSingleInstance final : public SingleInstance {
 public:
  // `directory` empty: the user's runtime directory. `watcher` drives the listening.
  explicit PosixSingleInstance(DescriptorWatcher watcher, std::string directory = {});
  ~PosixSingleInstance() override;
  PosixSingleInstance(const PosixSingleInstance&) = delete;
  PosixSingleInstance& operator=(const PosixSingleInstance&) = delete;

  bool Claim(const std::string& name) override;
  void Release() override;
  void Listen(std::function<void(std::string)> onMessage, std::function<bool()> isVisible,
              std::function<void()> onActivate) override;
  void StopListening() override;

  Running FindRunning() override;
  bool IsRunningVisible() override;
  void SendMessage(const std::string& bytes, std::chrono::milliseconds limit) override;
  void ActivateRunning() override;

 private:
  void Serve();
  void Answer(int connection, const std::string& request);
  // The answer to a request, or nothing within `limit`.
  // To the instance that listens; invalid where none does.
  [[nodiscard]] FileDescriptor Connect() const;
  [[nodiscard]] std::optional<char> Ask(const std::string& request,
                                        std::chrono::milliseconds limit) const;
  [[nodiscard]] std::string PathOf(const char* ending) const;

  DescriptorWatcher watcher_;
  std::string directory_;
  std::string name_;
  FileDescriptor lock_;
  FileDescriptor socket_;
  std::shared_ptr<void> watch_;
  std::function<void(std::string)> onMessage_;
  std::function<bool()> isVisible_;
  std::function<void()> onActivate_;
};

// The directory for what lives as long as the user's session: $XDG_RUNTIME_DIR, else one of the
// user's own below the directory for temporary files, else, where another has taken that name, one
// below StateDirectory(); made when it is missing.
[[nodiscard]] std::string RuntimeDirectory();

}  // namespace velmoor::posix
