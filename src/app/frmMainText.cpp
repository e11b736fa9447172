// Projects as text, and two projects side by side.

#include "app/frmCompare.h"
#include "app/frmMain.h"
#include "app/frmResults.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/ProjectText.h"
#include "project/TextProject.h"
#include "project/WorkingName.h"

namespace velmoor {
namespace {

FileDialogRequest TextDialog(const std::string& title, const std::string& directory) {
  return {.title = title,
          .filter = "Project as Text (*.toml)|*.toml",
          .defaultSuffix = "toml",
          .initialDirectory = directory,
          .initialName = {}};
}

FileDialogRequest ComparedDialog(const std::string& title, const std::string& directory) {
  return {.title = title,
          .filter = "Project or Its Text (*.spj *.toml)|*.spj *.toml",
          .defaultSuffix = "spj",
          .initialDirectory = directory,
          .initialName = {}};
}

void ShowRefusals(const std::string& title, const std::vector<std::string>& faults) {
  std::vector<CsvRow> rows{{"What Was Refused"}};
  for (const std::string& fault : faults) rows.push_back({fault});
  (void)frmResults({.caption = "Refused: " + title,
                    .summary = title + " was not taken, and nothing was changed.  Each line names "
                                       "the file, its line, and the reason.",
                    .rows = std::move(rows),
                    .widths = {110}})
      .Show(FormMode::modal);
}

}  // namespace

// ---- projects as text

void frmMain::mnuFileExportText_Click() {
  if (!clsProject) return;
  Trapped("Export as Text failed!\r", [this] {
    BoxTick everything{"Values of a new project &too"};
    if (!AskOkCancel("The project is written as text: what differs from a new project.\rEdits that "
                     "were not applied are none of it.",
                     everything)) {
      return false;
    }
    FileDialogRequest request = TextDialog("Export as Text", clsProject->WorkingDirectory());
    request.initialName = clsProject->Title() + ".toml";
    const auto chosen = world().dialogs->SaveFile(request, true);
    if (!chosen) return false;
    if (world().files->IsSameFile(clsProject->FileName(), *chosen)) {
      ShowExclamation("The text would replace the project!");
      return false;
    }
    const BusyPointer busy;
    world().files->WriteDurably(
        *chosen,
        ExportText(*clsProject, everything.on ? TextScope::everything : TextScope::changed));
    UpdateStatusText("Project exported as '" + GetFileTitle(*chosen) + "'");
    return true;
  });
}

// The user agrees to lose what windows of the tables hold.
bool frmMain::MayDropTableEdits() {
  std::string edited;
  for (const Tool tool : {Tool::position, Tool::zone, Tool::jog}) {
    if (!clsProject->TableOf(tool)->HoldsEdits()) continue;
    edited += (edited.empty() ? "" : ", ") + std::string(InfoOf(tool).item);
  }
  return edited.empty() || AskGraveYesNo("Modified values that were not applied will be lost: " +
                                         edited + "\rDo you wish to go on?");
}

void frmMain::mnuFileImportText_Click() {
  if (!clsProject) return;
  Trapped("Import from Text failed!\r", [this] {
    const auto chosen =
        world().dialogs->OpenFile(TextDialog("Import from Text", clsProject->WorkingDirectory()));
    if (!chosen || !MayDropTableEdits()) return false;
    std::vector<std::string> faults;
    {
      const std::string text = world().files->ReadAll(*chosen);
      const BusyPointer busy;
      faults = ImportText(*clsProject, text, GetFileTitle(*chosen));
    }
    if (!faults.empty()) {
      ShowRefusals(GetFileTitle(*chosen), faults);
      return false;
    }
    const std::string dirty = clsProject->WhatIsDirty();
    ShowInformation("'" + GetFileTitle(*chosen) + "' was taken into the project." +
                    (dirty.empty() ? "" : "\rTo download: " + dirty));
    return true;
  });
}

// ---- side by side

// The project's file that stands for what was chosen; empty: refused, and told.
std::string frmMain::ComparedFile(const std::string& path) {
  if (LowerCase(Right(path, 5)) != ".toml") {
    const std::string refusal = WhyNoProject(path);
    if (!refusal.empty()) ShowExclamation(refusal);
    return refusal.empty() ? path : std::string();
  }
  const BusyPointer busy;
  const TextProject made = MakeTextProject(*this, path);
  if (made.faults.empty()) return made.path;
  ShowRefusals(GetFileTitle(path), made.faults);
  return {};
}

void frmMain::mnuFileCompare_Click() {
  Trapped("Compare Projects failed!\r", [this] {
    const bool open = projectShown_;
    std::string first = open ? clsProject->ProjectDatabasePath() : std::string();
    std::string title = open ? clsProject->FileTitle() : std::string();
    if (!open) {
      const auto chosen =
          world().dialogs->OpenFile(ComparedDialog("Compare: First Project", initialDirectory_));
      if (!chosen) return false;
      title = GetFileTitle(*chosen);
      first = ComparedFile(*chosen);
      if (first.empty()) return false;
    }
    const auto chosen = world().dialogs->OpenFile(
        ComparedDialog(open ? "Compare with Project" : "Compare: Second Project",
                       open ? clsProject->WorkingDirectory() : initialDirectory_));
    if (!chosen) return false;
    const std::string second = ComparedFile(*chosen);
    if (second.empty()) return false;
    ShowCompared({title, first}, {GetFileTitle(*chosen), second}, open);
    return true;
  });
}

// Values are taken into an open project alone, which keeps them until it is saved or closed.
void frmMain::ShowCompared(const ComparedSide& first, const ComparedSide& second, bool takes) {
  const auto look = [&] {
    const BusyPointer busy;
    return CompareProjects(first.path, second.path, CompareScope::everything);
  };
  CompareActions actions{.look = look};
  const MachineDescription theirs = MachineAt(second.path);
  const MachineDescription ours = MachineAt(first.path);
  if (takes && !clsProject->IsReadOnly() && MayDropTableEdits()) {
    actions.take = [&](const std::vector<WantedValue>& values, bool back) {
      return TakeValues(*clsProject, values, back ? ours : theirs);
    };
  }
  (void)frmCompare(look(), {"Compare Projects", first.title, second.title}, actions)
      .Show(FormMode::modal);
}

}  // namespace velmoor
