// The settings of one user in a readable file of "name=value" lines.
//
// The file is read anew for each question and replaced whole for each answer, under a lock, so that
// both programs may use it at once. Lines that mean nothing here, comments too, stay as they are.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Settings.h"

namespace velmoor {

class Files;

class IniSettings final : public Settings {
 public:
  // The file need not exist; its directory is made at the first Write, and the file is its owner's
  // alone. `files` must outlive the object.
  IniSettings(Files& files, std::string path) : files_(files), path_(std::move(path)) {}

  [[nodiscard]] std::optional<std::string> Read(std::string_view name) const override;
  void Write(std::string_view name, std::string_view value) override;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  // The whole text of the file with that entry.
  [[nodiscard]] std::string With(std::string_view name, std::string_view value) const;

  Files& files_;
  std::string path_;
};

}  // namespace velmoor
