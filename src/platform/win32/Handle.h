// An open thing of the system, closed with its owner.
#pragma once

#include <utility>

#include "platform/win32/Windows.h"

namespace velmoor::win32 {

class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      Reset();
      handle_ = std::exchange(other.handle_, INVALID_HANDLE_VALUE);
    }
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Reset(); }

  [[nodiscard]] bool IsValid() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE Get() const { return handle_; }
  void Reset() {
    if (IsValid()) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace velmoor::win32
