// File dialogs.
#pragma once

#include <QString>

#include "platform/FileDialogs.h"

class QFileDialog;

namespace velmoor::qt {

class QtFileDialogs final : public FileDialogs {
 public:
  std::optional<std::string> OpenFile(const FileDialogRequest& request) override;
  std::optional<std::string> SaveFile(const FileDialogRequest& request,
                                      bool askBeforeOverwrite) override;

 private:
  void Prepare(QFileDialog& dialog, const FileDialogRequest& request) const;
  std::optional<std::string> Run(QFileDialog& dialog);
  QString lastDirectory_;
};

}  // namespace velmoor::qt
