// A folder for the files of one process, which goes with its owner.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

namespace velmoor::fuzz {

class Folder {
 public:
  explicit Folder(const std::string& name)
      : path((std::filesystem::temp_directory_path() /
              ("velmoor-fuzz-" + name + "-" + std::to_string(getpid())))
                 .string()) {
    std::filesystem::create_directories(path);
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string path;
};

}  // namespace velmoor::fuzz
