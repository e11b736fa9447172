// The last-resort window: an error that no procedure handled, where its report lies, and the user's
// choice how to go on.
#pragma once

#include <string>

#include "layouts/frmError.h"
#include "platform/UnhandledError.h"
#include "windows/Window.h"

namespace velmoor {

class frmError final : public WindowOf<layouts::frmError> {
 public:
  // `strProject` may be empty. `strReport` is the report's file, or why there is none.
  frmError(const UnhandledError& error, const std::string& strProject, std::string strReport);
  // Returns when the window has closed; by its frame it goes on.
  [[nodiscard]] ErrorChoice Ask();

  // The words of the window: what failed, where, in which project and version.
  [[nodiscard]] static std::string Words(const UnhandledError& error,
                                         const std::string& strProject);

 protected:
  void FormLoad() override;

 private:
  std::string strWords_, strReport_;
  ErrorChoice choice_ = ErrorChoice::goOn;
};

// Writes the words and the calls into a file of its own under "Error Report Files" of `directory`.
// Returns its path. Throws FileError.
std::string WriteErrorReport(const UnhandledError& error, const std::string& strProject,
                             const std::string& directory);

}  // namespace velmoor
