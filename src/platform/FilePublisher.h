// Messages as lines of a file, "topic text", for those who carry them on by themselves.
#pragma once

#include <memory>
#include <string>

#include "platform/Files.h"
#include "platform/Publisher.h"

namespace velmoor {

class FilePublisher final : public Publisher {
 public:
  // The file grows to `mostBytes`; then it becomes "NAME.1", in the place of an older one, and a
  // new one is begun.
  FilePublisher(std::string path, Publication birth, std::size_t mostBytes);

  [[nodiscard]] bool Hand(const Publication& message) override;
  [[nodiscard]] Progress Take() override;
  [[nodiscard]] std::string Trouble() const override { return trouble_; }
  void End(const Publication& last, std::chrono::milliseconds limit) override;

 private:
  // Begins, and begins anew a second behind a failure.
  void Open();

  std::string path_;
  Publication birth_;
  std::size_t mostBytes_;
  std::unique_ptr<GrowingFile> file_;
  std::size_t bytes_ = 0;
  Progress progress_;
  bool ended_ = false;
  std::string trouble_;
  std::chrono::milliseconds nextOpen_{0};
};

}  // namespace velmoor
