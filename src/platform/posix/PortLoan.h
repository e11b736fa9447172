// A port that one program holds for long, and lends to another when a person wants it.
//
// The lender listens at a name of the kernel's that is made of the device's number. Whoever finds
// the device taken asks there, and holds the port for as long as that connection lasts: also where
// it crashes the lender hears of its end. Only who may use the device is heard.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

class PortLender {
 public:
  explicit PortLender(std::string device) : device_(std::move(device)) {}

  // Somebody wants the port, or has it.
  [[nodiscard]] bool IsWanted();
  // It is closed: whoever waits may open it.
  void TellFree();

 private:
  struct Asker {
    FileDescriptor connection;
    bool told = false;
  };
  void Listen();
  void TakeAskers();

  std::string device_;
  unsigned long number_ = 0;  // of the device, while `listener_` is valid
  FileDescriptor listener_;
  std::vector<Asker> askers_;
};

// Asks the lender of a device for it, and waits until it is free. Valid: it may be opened now, and
// is lent until the result is destroyed. Otherwise nobody lends it, or not in that time.
[[nodiscard]] FileDescriptor BorrowPort(const std::string& device, std::chrono::milliseconds limit);

}  // namespace velmoor::posix
