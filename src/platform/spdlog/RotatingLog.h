// The log as a file of limited size, with a few older ones beside it.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/Log.h"

namespace velmoor::rotating {

class RotatingLog final : public Log {
 public:
  // A file reaches this many bytes before it becomes the first of the older ones.
  static constexpr std::size_t kLargest = 1'000'000;
  static constexpr std::size_t kOlderFiles = 4;
  static constexpr std::size_t kRecent = 200;  // entries

  // Appends to "velmoor.log" in `directory`, which is made when missing; what is moved aside
  // becomes "velmoor.1.log" and so on. Where that cannot be written the newest entries are kept in
  // memory alone. Throws nothing.
  explicit RotatingLog(const std::string& directory, std::size_t largest = kLargest);
  ~RotatingLog() override;

  void Write(LogLevel level, std::string_view subject, std::string_view text) override;
  [[nodiscard]] bool KeepsTraffic() const override;
  void SetKeepsTraffic(bool keeps) override;
  [[nodiscard]] std::vector<std::string> Recent() const override;
  [[nodiscard]] std::string Path() const override { return path_; }

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
  std::string path_;
};

}  // namespace velmoor::rotating
