// The settings of one user in a readable file of "name=value" lines.
//
// The file is read anew for each question and replaced whole for each answer, under a lock, so that
// both programs may use it at once. Lines that mean nothing here, comments too, stay as they are.
#pragma once

#include "platform/Settings.h"

namespace velmoor::posix {

class IniSettings final : public Settings {
 public:
  // The file need not exist; its directory is made at the first Write.
  explicit IniSettings(std::string path) : path_(std::move(path)) {}
  // "velmoor/velmoor.ini" in the user's directory for settings.
  [[nodiscard]] static std::string DefaultPath();

  [[nodiscard]] std::optional<std::string> Read(std::string_view name) const override;
  void Write(std::string_view name, std::string_view value) override;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace velmoor::posix
