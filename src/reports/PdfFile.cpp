#include "reports/PdfFile.h"

#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Printing.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/clsHX7Project.h"

namespace velmoor {

bool WritePdf(const clsHX7Project& project, const PrintDocument& document, Paper paper,
              const std::string& path) {
  const Files& files = *world().files;
  if (files.IsSameFile(path, project.FileName()) ||
      files.IsSameFile(path, project.ProjectDatabasePath())) {
    ShowExclamation("The report would overwrite the project!");
    return false;
  }
  world().files->WriteDurably(path, world().pdf->Pdf(document, paper));
  return true;
}

bool SaveAsPdf(const clsHX7Project& project, const PrintDocument& document, Paper paper) {
  return Trapped("Save as PDF: ", [&] {
    const auto path = world().dialogs->SaveFile({.title = "Save as PDF",
                                                 .filter = "PDF Document (*.pdf)|*.pdf",
                                                 .defaultSuffix = "pdf",
                                                 .initialDirectory = project.WorkingDirectory(),
                                                 .initialName = project.Title() + ".pdf"},
                                                true);
    return path && WritePdf(project, document, paper, *path);
  });
}

}  // namespace velmoor
