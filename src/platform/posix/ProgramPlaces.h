// Where the program's own files lie.
#pragma once

#include <string>

namespace velmoor::posix {

// The directory of the running program, whatever the current directory is.
[[nodiscard]] std::string ExecutableDirectory();

// The place of the catalogue's working copy: the program's directory where that can be written,
// else one of this process in the user's runtime directory, which goes with the object.
class CatalogueCopyPlace {
 public:
  explicit CatalogueCopyPlace(const std::string& appDirectory);
  ~CatalogueCopyPlace();
  CatalogueCopyPlace(const CatalogueCopyPlace&) = delete;
  CatalogueCopyPlace& operator=(const CatalogueCopyPlace&) = delete;

  [[nodiscard]] const std::string& Directory() const { return directory_; }

 private:
  std::string directory_;
  bool own_ = false;
};

}  // namespace velmoor::posix
