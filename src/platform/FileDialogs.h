// Port: the dialogs in which the user picks a file name.
#pragma once

#include <optional>
#include <string>

namespace velmoor {

struct FileDialogRequest {
  std::string title;             // caption of the dialog
  std::string filter;            // "Project File (*.spj)|*.spj", pairs joined by "|"
  std::string defaultSuffix;     // appended to a name without an ending, without the dot
  std::string initialDirectory;  // empty: where the last dialog ended
  std::string initialName;       // proposed file name, may be empty
};

class FileDialogs {
 public:
  virtual ~FileDialogs() = default;

  // The chosen absolute path, or nothing after Cancel. The file exists.
  virtual std::optional<std::string> OpenFile(const FileDialogRequest& request) = 0;
  // The same for a file to be written. `askBeforeOverwrite` lets the dialog itself ask about an
  // existing file; without it the caller tests and tells the user.
  virtual std::optional<std::string> SaveFile(const FileDialogRequest& request,
                                              bool askBeforeOverwrite) = 0;
};

}  // namespace velmoor
