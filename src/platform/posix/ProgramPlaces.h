// Where the program's own files lie.
#pragma once

#include <string>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// The directory of the running program, with the programs and modules that belong to it.
[[nodiscard]] std::string ExecutableDirectory();

// The directory with the catalogue and the template: the one that VELMOOR_DIRECTORY names, else
// that of the running program, whatever the current directory is.
[[nodiscard]] std::string ProgramDirectory();

// The user's directory for what the program leaves behind: "velmoor" in XDG_STATE_HOME, else in
// ~/.local/state.
[[nodiscard]] std::string StateDirectory();

// "velmoor/velmoor.ini" in the user's directory for settings.
[[nodiscard]] std::string SettingsFile();

// The place of the catalogue's working copy: a directory of this process alone in the user's
// runtime directory, which goes with the object. What killed processes left there is cleared first.
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
  FileDescriptor lock_;  // of the directory: it tells that its process lives
};

}  // namespace velmoor::posix
