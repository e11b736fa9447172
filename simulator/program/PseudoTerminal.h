// The far end of a pseudo-terminal: the end at which the amplifier sits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace velmoor {

class PseudoTerminal {
 public:
  // Opens a pseudo-terminal, raw. Throws std::system_error.
  PseudoTerminal();

  // The near end, where a host opens its port.
  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] int Descriptor() const { return master_.Get(); }
  // The speed that the host has set, in bits per second; 0 for one that no amplifier has.
  [[nodiscard]] std::int32_t HostBaudRate() const;
  // What the host has sent; empty when nothing waits.
  [[nodiscard]] std::string Read();
  // Gives bytes to the host. What the host's full buffer does not take is lost, as on a wire.
  void Write(std::string_view bytes);

 private:
  posix::FileDescriptor master_;
  // Held open so that the terminal outlives each host that opens and closes it.
  posix::FileDescriptor keeper_;
  std::string path_;
};

// A symbolic link that vanishes with its owner. An older link of that name is replaced; a file of
// another kind is not: std::system_error.
class TerminalLink {
 public:
  explicit TerminalLink(std::string name) : name_(std::move(name)) {}
  ~TerminalLink() { Remove(); }
  TerminalLink(const TerminalLink&) = delete;
  TerminalLink& operator=(const TerminalLink&) = delete;

  void PointTo(const std::string& path);
  void Remove();

 private:
  std::string name_;  // empty for no link
  std::string target_;
};

}  // namespace velmoor
