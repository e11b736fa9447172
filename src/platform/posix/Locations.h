// Where a program's own files lie.
#pragma once

#include <string>

namespace velmoor::posix {

// The directory of the running executable, or the one that VELMOOR_DIRECTORY names. Never the
// current directory.
[[nodiscard]] std::string ProgramDirectory();

// A directory of this process alone, for files that end with it.
class PrivateDirectory {
 public:
  // Made under $XDG_RUNTIME_DIR, else $TMPDIR, else /tmp. Throws FileError.
  PrivateDirectory();
  // Removes the directory and the files in it.
  ~PrivateDirectory();
  PrivateDirectory(const PrivateDirectory&) = delete;
  PrivateDirectory& operator=(const PrivateDirectory&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace velmoor::posix
