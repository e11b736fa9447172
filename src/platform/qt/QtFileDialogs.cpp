#include "platform/qt/QtFileDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>

#include "platform/qt/QtText.h"

namespace velmoor::qt {
namespace {

// "Project File (*.spj)|*.spj|All Files (*)|*": every second part is the pattern, which the part
// before shows already.
QStringList NameFilters(const std::string& filter) {
  QStringList names;
  const QStringList parts = ToQt(filter).split(QLatin1Char('|'));
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString words = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
    names.append(words + QStringLiteral(" (") + parts[i + 1] + QLatin1Char(')'));
  }
  return names;
}

}  // namespace

std::optional<std::string> QtFileDialogs::OpenFile(const FileDialogRequest& request) {
  QFileDialog dialog(QApplication::activeWindow());
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  Prepare(dialog, request);
  return Run(dialog);
}

std::optional<std::string> QtFileDialogs::SaveFile(const FileDialogRequest& request,
                                                   bool askBeforeOverwrite) {
  QFileDialog dialog(QApplication::activeWindow());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !askBeforeOverwrite);
  Prepare(dialog, request);
  return Run(dialog);
}

void QtFileDialogs::Prepare(QFileDialog& dialog, const FileDialogRequest& request) const {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setWindowTitle(ToQt(request.title));
  dialog.setNameFilters(NameFilters(request.filter));
  dialog.setDefaultSuffix(ToQt(request.defaultSuffix));
  const QString directory =
      request.initialDirectory.empty() ? lastDirectory_ : ToQt(request.initialDirectory);
  if (!directory.isEmpty()) dialog.setDirectory(directory);
  // selectFile leaves the field empty while it has the focus.
  if (auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    edit->setText(ToQt(request.initialName));
  }
}

std::optional<std::string> QtFileDialogs::Run(QFileDialog& dialog) {
  QApplication::setOverrideCursor(Qt::ArrowCursor);
  const bool accepted = dialog.exec() == QFileDialog::Accepted;
  QApplication::restoreOverrideCursor();
  const QStringList files = dialog.selectedFiles();
  if (!accepted || files.isEmpty()) return std::nullopt;
  lastDirectory_ = QFileInfo(files[0]).absolutePath();
  return FromQt(QFileInfo(files[0]).absoluteFilePath());
}

}  // namespace velmoor::qt
