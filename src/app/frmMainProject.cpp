// Project files: new, open, save, the recent files, and a project's coming and going.

#include "app/frmMain.h"
#include "app/frmRecovery.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/Form.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/ProjectCompare.h"
#include "project/WorkingName.h"

namespace velmoor {
namespace {

FileDialogRequest ProjectDialog(const std::string& title, const std::string& directory) {
  return {.title = title,
          .filter = "Project File (*.spj)|*.spj",
          .defaultSuffix = "spj",
          .initialDirectory = directory,
          .initialName = {}};
}

std::string Quoted(const std::string& text) {
  return "'" + text + "'";
}

}  // namespace

// ---- commands

void frmMain::mnuFileNew_Click() {
  (void)MakeNewProject("");
}

bool frmMain::MakeNewProject(const std::string& proposedName) {
  return Trapped("New Project File Error: ", [this, &proposedName] {
    FileDialogRequest request = ProjectDialog("New Project", initialDirectory_);
    request.initialName = proposedName;
    const auto chosen = world().dialogs->SaveFile(request, false);
    if (!chosen) return false;
    if (world().files->Exists(*chosen)) {
      ShowExclamation("Project name already exists!  Cannot create new project!");
      return false;
    }
    // The new file is there before the old project closes, and stays when that is refused.
    world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), *chosen);
    OpenChosenProject(*chosen, " Project ", false);
    return projectShown_ && clsProject->FileName() == *chosen;
  });
}

void frmMain::mnuFileOpen_Click() {
  Trapped("Open Project File Error: ", [this] {
    const auto chosen = world().dialogs->OpenFile(ProjectDialog("Open Project", initialDirectory_));
    if (chosen) OpenChosenProject(*chosen, "Project ", true);
    return true;
  });
}

void frmMain::mnuFileClose_Click() {
  if (!projectShown_) return;
  const std::string title = clsProject->Title();
  if (!RemoveActiveProject()) return;
  DropProject();
  UpdateStatusText("Project " + Quoted(title) + " closed.");
}

void frmMain::mnuFileSave_Click() {
  if (!clsProject) return;
  clsProject->RefuseSaving();
  if (!ApplyPending("Do you wish to apply and save it?  No saves the project without it.")) return;
  if (!clsProject->NeedsSaving()) return;
  if (!SaveProject()) return;
  UpdateStatusText("Project " + Quoted(clsProject->Title()) + " saved.");
}

bool frmMain::SaveProject() {
  const std::string concern = clsProject->SaveConcern();
  if (!concern.empty() && !AskExclamationYesNo(concern + "\r\rDo you wish to save all the same?")) {
    return false;
  }
  const BusyPointer busy;
  clsProject->Save();
  return true;
}

void frmMain::mnuFileSaveAs_Click() {
  if (!clsProject) return;
  Trapped("SaveAs Project File Error: ", [this] {
    clsProject->RefuseSaving();
    FileDialogRequest request = ProjectDialog("Save Project As", clsProject->WorkingDirectory());
    request.initialName = clsProject->FileTitle();
    const auto chosen = world().dialogs->SaveFile(request, true);
    if (chosen) clsProject->SaveAs(*chosen);
    return true;
  });
}

void frmMain::mnuFilePrint_Click() {
  if (!clsProject) return;
  if (!clsPrint) clsPrint = std::make_unique<clsHX7Print>();
  clsPrint->Show_PrintProject(*clsProject);
}

void frmMain::mnuFileExit_Click() {
  // Once this command is over.
  world().events->Post([this] { window_->Close(); });
}

void frmMain::OpenRecent(int place) {
  RunCommand("frmMain.mnuFileMRU_Click: ", [this, place] {
    mnuFileMRU_Click(place);
    return true;
  });
}

void frmMain::mnuFileMRU_Click(int Index) {
  const std::string path = RecentFile.At(static_cast<std::size_t>(Index));
  if (FileInput(path)) RemoveRecentFile(Index);
}

void frmMain::LaunchOpenProjectDialog() {
  initialDirectory_ = GetFileDirectory(RecentFile.At(0));
  RunCommand("frmMain.LaunchOpenProjectDialog: ", [this] {
    mnuFileOpen_Click();
    return true;
  });
  initialDirectory_.clear();
}

void frmMain::ParseCommand(const std::string& sCommand) {
  std::string name(Trim(sCommand));
  const bool quoted = name.size() >= 2 && name.front() == '"' && name.back() == '"';
  if (quoted) name = name.substr(1, name.size() - 2);
  CommandLineOpenProject(name);
}

void frmMain::CommandLineOpenProject(const std::string& strFileName) {
  if (LowerCase(Right(strFileName, 5)) == ".toml") return OpenLine(strFileName);
  RunCommand("frmMain.CommandLineOpenProject: ", [this, &strFileName] {
    std::optional<std::string> reason;
    if (!OpenInPlace(strFileName, true, reason)) return false;
    if (reason) TellNotOpened(*reason, "Project ", strFileName);
    return !reason;
  });
}

bool frmMain::FileInput(const std::string& fname) {
  std::optional<std::string> reason;
  if (!OpenInPlace(fname, true, reason)) return false;
  const std::string title = GetFileTitle(fname);
  if (reason) {
    UpdateStatusText("Project " + Quoted(title) + " cannot be opened.");
    TellNotOpened(*reason, "Project ", fname);
    // One that is merely in use can be opened another time.
    return !reason->empty() && *reason != InUseWords(title);
  }
  AddRecentFile(fname);
  world().files->ChangeDirectory(GetFileDirectory(clsProject->FileName()));
  UpdateStatusText("Project " + Quoted(clsProject->Title()) + " opened.");
  return false;
}

// ---- from one project to the next

bool frmMain::RemoveActiveProject() {
  if (!world().forms->Shown().empty()) {
    if (!AskOkCancel("All module forms will be unloaded.\rDo you wish to proceed?")) return false;
    if (!UnloadAllForms()) return false;
  }
  if (clsProject && clsProject->NeedsSaving()) {
    const BoxAnswer answer = AskYesNoCancel("Project " + clsProject->Title() +
                                            " has not been saved yet.\rDo you wish to save?");
    if (answer == BoxAnswer::cancel) return false;
    if (answer == BoxAnswer::yes && !SaveProject()) return false;
  }
  clsProject_ProjectClosed();
  return true;
}

bool frmMain::CloseForAnother(const std::string& strFileName, bool askIfSame) {
  if (!clsProject) return true;
  // A link to it is the same project.
  const bool same = clsProject->FileName() == strFileName ||
                    (world().files->Exists(strFileName) &&
                     world().files->IsSameFile(clsProject->FileName(), strFileName));
  if (askIfSame && same &&
      !AskOkCancel("Reopening active project will restore any unsaved changes to previously saved "
                   "values!\rDo you wish to continue?")) {
    return false;
  }
  const std::string strOldProjectTitle = DropRight(clsProject->FileTitle(), 4);
  const std::string oldDirectory = clsProject->WorkingDirectory();
  if (!RemoveActiveProject()) {
    if (!oldDirectory.empty()) world().files->ChangeDirectory(oldDirectory);
    return false;
  }
  UpdateStatusText("Project " + Quoted(strOldProjectTitle) + " closed.");
  return true;
}

void frmMain::DropProject() {
  projectConnections_.Clear();
  rehearsal_.Forget();
  recordings_.Unload();
  instruments_.Forget();
  operations_.ForgetProject();
  compared_.reset();
  clsProject.reset();
}

void frmMain::MakeProject() {
  // The old project's end deletes its working file, which the new one may bear the name of.
  DropProject();
  DisplayFullModuleToolBar(false);
  clsProject = std::make_unique<clsHX7Project>();
  ConnectProject();
}

// What is open stays for a file that cannot be.
bool frmMain::OpenInPlace(const std::string& strFileName, bool askIfSame,
                          std::optional<std::string>& reason) {
  std::string refusal = clsProject ? WhyNoProject(strFileName) : std::string();
  if (!refusal.empty()) {
    reason = std::move(refusal);
    return true;
  }
  if (!CloseForAnother(strFileName, askIfSame)) return false;
  reason = OpenInNewProject(strFileName);
  return true;
}

std::optional<std::string> frmMain::OpenInNewProject(const std::string& strFileName) {
  const std::optional<std::string> reason = TryToOpen(strFileName, NewerProject::refuse);
  if (!reason || !clsProject->IsNewer()) return reason;
  const bool reads = AskYesNo(*reason +
                              "\r\rDo you wish to read it?  What this version does not know is not "
                              "shown, and nothing of it can be saved or downloaded.");
  return reads ? TryToOpen(strFileName, NewerProject::readOnly) : std::string();
}

std::optional<std::string> frmMain::TryToOpen(const std::string& strFileName, NewerProject newer,
                                              const std::string& unsaved) {
  std::string strError;
  {
    const BusyPointer busy;
    MakeProject();
    const std::string strTitle = GetFileTitle(strFileName);
    clsProject->SetWorkingDirectory(DropRight(strFileName, strTitle.size() + 1));
    clsProject->LeaveUnsavedToCaller();
    clsProject->TakeUnsaved(unsaved);
    if (!clsProject->OpenProject(strFileName, strTitle, strError, newer)) return strError;
  }
  if (!clsProject->KeptWork().empty()) return SettleUnsaved(strFileName, newer);
  TellOfOpened();
  return std::nullopt;
}

// The work lies in a file of its own by now, which is what stays where nobody decides.
std::optional<std::string> frmMain::SettleUnsaved(const std::string& strFileName,
                                                  NewerProject newer) {
  const std::string kept = clsProject->KeptWork();
  std::vector<PartComparison> differences;
  Trapped("frmMain.SettleUnsaved: ", [&] {
    differences = CompareProjects(strFileName, kept);
    return true;
  });
  switch (frmRecovery(clsProject->FileTitle(), std::move(differences)).Ask()) {
    case frmRecovery::Choice::recover: {
      auto reason = TryToOpen(strFileName, newer, kept);
      if (!reason) world().files->Remove(kept);
      return reason;
    }
    case frmRecovery::Choice::discard:
      world().files->Remove(kept);
      break;
    case frmRecovery::Choice::later:
      clsProject->TellOfKeptWork();
      break;
  }
  TellOfOpened();
  return std::nullopt;
}

void frmMain::TellOfOpened() {
  operations_.connection.Motor().Tell();
  if (!clsProject->Doubts().empty()) DoubtsFound(*clsProject);
}

void frmMain::TellNotOpened(const std::string& reason, const std::string& boxLead,
                            const std::string& strFileName) {
  if (reason.empty()) return;
  ShowCritical(reason + "\r" + boxLead + Quoted(GetFileTitle(strFileName)) + " cannot be opened.");
}

void frmMain::OpenChosenProject(const std::string& strFileName, const std::string& boxLead,
                                bool askIfSame) {
  std::optional<std::string> reason;
  if (!OpenInPlace(strFileName, askIfSame, reason) || !reason) return;
  TellNotOpened(*reason, boxLead, strFileName);
  // Intended: two blanks.
  UpdateStatusText("Project  " + Quoted(strFileName) + " cannot be opened.");
}

// ---- the project's events

void frmMain::ConnectProject() {
  Connections& held = projectConnections_;
  held += clsProject->ProjectOpened.Connect([this] { clsProject_ProjectOpened(); });
  held += clsProject->ProjectSavedAs.Connect([this] { clsProject_ProjectSavedAs(); });
  held += clsProject->ResolutionDataInvalidated.Connect(
      [this](const std::string& items) { clsProject_ResolutionDataInvalidated(items); });
  held += clsProject->ToolRequested.Connect(
      [this](Tool tool, WindowRequest what) { RunRequest(tool, what); });
  operations_.FollowProject();
  ConnectEditMenu();
  ConnectOnlineTools();
}

void frmMain::clsProject_ProjectOpened() {
  Trapped("frmMain.clsProject_ProjectOpened: ", [this] {
    DisplayFullMenuBar(true);
    DisplayFullModuleToolBar(true);
    mnuModuleIndexer_Click();
    eSelectedModule = Module::indexer;
    window_->SetCaption("Velmoor - " + clsProject->Title() +
                        (clsProject->IsReadOnly() ? " (read only)" : ""));
    UpdateStatusText("Project " + Quoted(clsProject->Title()) + " opened.");
    AddRecentFile(clsProject->FileName());
    world().files->ChangeDirectory(clsProject->WorkingDirectory());
    return true;
  });
}

void frmMain::clsProject_ProjectClosed() {
  DisplayFullMenuBar(false);
  DisplayFullModuleToolBar(false);
  window_->SetCaption("Velmoor");
}

void frmMain::clsProject_ProjectSavedAs() {
  Trapped("frmMain.clsProject_ProjectSavedAs: ", [this] {
    window_->SetCaption("Velmoor - " + clsProject->Title());
    UpdateStatusText("Project Saved As " + Quoted(clsProject->Title()));
    AddRecentFile(clsProject->FileName());
    world().files->ChangeDirectory(clsProject->WorkingDirectory());
    return true;
  });
}

// ---- recent files

void frmMain::LoadRecentFiles() {
  Trapped("Main::LoadRecentFiles ", [this] {
    RecentFile.Load();
    return true;
  });
  UpdateRecentFileMenu();
}

void frmMain::AddRecentFile(const std::string& fname) {
  Trapped("frmMain.AddRecentFile: ", [this, &fname] {
    RecentFile.Add(fname);
    return true;
  });
  SaveRecentFiles();
  UpdateRecentFileMenu();
}

void frmMain::RemoveRecentFile(int Index) {
  Trapped("Main::RemoveRecentFile ", [this, Index] {
    RecentFile.Remove(static_cast<std::size_t>(Index));
    return true;
  });
  SaveRecentFiles();
  UpdateRecentFileMenu();
}

void frmMain::SaveRecentFiles() {
  Trapped("Main::SaveRecentFiles ", [this] {
    RecentFile.Save();
    return true;
  });
}

void frmMain::UpdateRecentFileMenu() {
  window_->SetRecentEntries(RecentFile.Captions());
}

}  // namespace velmoor
