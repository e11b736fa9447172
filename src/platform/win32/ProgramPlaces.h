// Where the program's own files lie.
#pragma once

#include <string>

#include "platform/win32/Handle.h"

namespace velmoor::win32 {

// The directory of the running program, with the programs and modules that belong to it.
[[nodiscard]] std::string ExecutableDirectory();
// The directory with the catalogue and the template: the one that VELMOOR_DIRECTORY names, else
// that of the running program, whatever the current directory is.
[[nodiscard]] std::string ProgramDirectory();
// The user's directory for what the program leaves behind on this computer.
[[nodiscard]] std::string StateDirectory();
// "Velmoor/velmoor.ini" in the user's directory for settings, which goes with him.
[[nodiscard]] std::string SettingsFile();

// The place of the catalogue's working copy: a directory of this process alone, which goes with the
// object. What killed processes left is cleared first.
class CatalogueCopyPlace {
 public:
  // Throws std::runtime_error where there is none to be had.
  CatalogueCopyPlace();
  ~CatalogueCopyPlace();
  CatalogueCopyPlace(const CatalogueCopyPlace&) = delete;
  CatalogueCopyPlace& operator=(const CatalogueCopyPlace&) = delete;

  [[nodiscard]] const std::string& Directory() const { return directory_; }

 private:
  std::string directory_;
  Handle lock_;  // of a file in the directory, for itself: it tells that the process lives
};

}  // namespace velmoor::win32
