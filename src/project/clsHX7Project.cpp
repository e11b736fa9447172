#include "project/clsHX7Project.h"

#include <vector>

#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/UnsavedWork.h"
#include "project/WorkingName.h"
#include "project/data/Schema.h"
#include "session/Session.h"

namespace velmoor {
clsHX7Project::clsHX7Project() : strTHDatabasePath_(gMainForm->THDatabasePath()) {
  ConnectTools();
}

clsHX7Project::~clsHX7Project() {
  connections_.Clear();
  RemoveWorkingFile();
}

void clsHX7Project::RemoveWorkingFile() {
  if (strProjectDatabasePath_.empty() || !workingFileLock_) return;
  world().databases->Release(strProjectDatabasePath_);
  try {
    world().files->Remove(strProjectDatabasePath_);
  } catch (const FileError&) {
    // The working file is disposable; a folder that became read-only keeps it until the next
    // opening.
  }
  workingFileLock_.reset();
}

bool clsHX7Project::OpenProject(const std::string& strFileName, const std::string& strFileTitle,
                                std::string& strError, NewerProject newer) {
  const auto refuse = [&strError](const std::string& words) {
    strError = words;
    return false;
  };
  Files& files = *world().files;
  if (!files.Exists(strTHDatabasePath_)) {
    return refuse("Helix VII database cannot be found at " + strTHDatabasePath_ + "!");
  }
  sFileName_ = strFileName;
  sFileTitle_ = strFileTitle;
  if (!files.Exists(sFileName_)) {
    return refuse("Project file " + sFileTitle_ + " cannot be found at " + sFileName_ + "!");
  }
  const std::string cannotCreate =
      "Cannot create temporary project file for project " + sFileTitle_ + "!";
  WorkingName working;
  try {
    const WorkingPlace place = WorkingPlaceOf(sWorkingDirectory_, sFileTitle_);
    savedElsewhere_ = place.elsewhere;
    working = ChooseWorkingName(place.directory, place.title, sFileName_);
    // A project whose name ends in "tmp" would be its own working file, and be deleted with it.
    if (files.IsSameFile(working.path, sFileName_)) return refuse(cannotCreate);
    workingFileLock_ = files.Lock(working.path);
    if (!workingFileLock_ || !TakeProjectFile()) {
      return refuse(InUseWords(sFileTitle_));
    }
    strProjectDatabasePath_ = working.path;
    world().databases->Release(working.path);
    keptWork_ = KeepUnsavedWork(working.path, sFileName_);
    files.LayWorkingCopy(sFileName_, working.path);
    KnowProjectFile(working.path);
    if (!recovered_.empty()) files.LayWorkingCopy(recovered_, working.path);
  } catch (const FileError& error) {
    return refuse(cannotCreate + "\r" + error.what());
  }
  if (!files.Exists(working.path)) return refuse(cannotCreate);
  RemoveMarksFile();
  const std::string refusal = ReadFile(newer);
  if (!refusal.empty()) return refuse(refusal);
  SetDatabasePaths();
  blnOpen_ = true;
  strError.clear();
  blnNeedsSaving_ = !laidAnew_.empty() || !recovered_.empty();
  ProjectOpened.Raise();
  if (!laidAnew_.empty()) {
    ShowInformation(
        "Project " + sFileTitle_ +
        " lacked records, which are as in a new project now and marked to download:" + laidAnew_);
  }
  if (tellsOfUnsaved_) TellOfKeptWork();
  TellOfPlace(working.remark);
  return true;
}

void clsHX7Project::TellOfKeptWork() const {
  if (keptWork_.empty()) return;
  ShowInformation("Velmoor ended last without saving project " + sFileTitle_ +
                  ".\rWhat was not saved is kept as " + keptWork_ +
                  ", a project that can be opened and compared.");
}

// A program that was killed may have left it. Where something else has its name, a download tells
// that its marks cannot be kept.
void clsHX7Project::RemoveMarksFile() {
  try {
    world().files->Remove(MarksFile());
  } catch (const FileError& error) {
    LogWarning("session", error.what());
  }
}

// What the user is to know of the folder in which the project lies.
void clsHX7Project::TellOfPlace(const std::string& remark) const {
  if (!remark.empty()) ShowInformation(remark);
  if (savedElsewhere_) {
    ShowInformation("The folder of project " + sFileTitle_ +
                    " cannot be written: changes can be saved in another folder only.");
  }
  if (!workingFileLock_->IsKept()) {
    ShowInformation(
        "The folder of the project takes locks and does not keep them: take care that no other "
        "program works on the project at the same time.");
  }
  const std::string network = world().files->NetworkOf(sFileName_);
  if (network.empty()) return;
  LogInformation("session", "The project lies in a network folder (" + network +
                                "): whether another computer works on it is not certain.");
}

void clsHX7Project::SetDatabasePaths() {
  parameters_.SetWorkingFile(strProjectDatabasePath_);
  for (MotionTable* const table : Tables()) table->SetDatabasePath(strProjectDatabasePath_);
  clsServoJog_.SetDatabasePath(strProjectDatabasePath_);
}

void clsHX7Project::FitFormat(NewerProject newer) {
  const std::string pattern = JoinPath(world().appDirectory, "Velmoor.spt");
  try {
    laidAnew_ = InWords(BringUpToDate(strProjectDatabasePath_, pattern));
  } catch (const NewerFormat&) {
    isNewer_ = true;
    if (newer == NewerProject::refuse) throw;
    CheckReadable(strProjectDatabasePath_, pattern);
  }
}

// The machine's units come with the parameters, before the tables that are read in them. Returns
// why the project cannot be opened; empty: it is read.
std::string clsHX7Project::ReadFile(NewerProject newer) {
  try {
    FitFormat(newer);
    ReadMotorSize();
    ReadTransfers();
    parameters_.Open({strTHDatabasePath_, gMainForm->ParametersTable(), gMainForm->NibbleTable(),
                      strProjectDatabasePath_, LimitsOfMotor(motorSize_)},
                     gMainForm->ComboList());
    SetDatabasePaths();
    (void)OpenForReading(strProjectDatabasePath_)->OpenTable(schema::Misc::kTable);
    for (MotionTable* const table : Tables()) table->ReadFromDB();
  } catch (const NewerFormat& refused) {
    return InWords(refused, sFileTitle_);
  } catch (const std::exception& error) {
    std::string reason = error.what();
    // Users know their file, not the one that is worked on in its stead.
    const std::string place = strProjectDatabasePath_ + ": ";
    if (reason.starts_with(place)) reason.erase(0, place.size());
    return "Error reading databases!\r" + reason;
  }
  for (ParameterToolBase* const tool : ParameterTools()) tool->TakeRows();
  clsServoJog_.ReadFromDB();
  return {};
}

std::string clsHX7Project::ReadOnlyWords(const std::string& consequence) const {
  return "Project " + sFileTitle_ +
         " was made by a newer version of Velmoor and is open for reading only.\r" + consequence;
}

void clsHX7Project::RefuseSaving() const {
  if (IsReadOnly()) throw FileError(ReadOnlyWords("It cannot be saved."));
}

void clsHX7Project::Save() {
  RefuseSaving();
  world().databases->Release(strProjectDatabasePath_);
  try {
    world().files->SaveDurably(strProjectDatabasePath_, sFileName_, sFileName_);
  } catch (const FileError& error) {
    if (!savedElsewhere_) throw;
    throw FileError("Project " + sFileTitle_ + " cannot be saved in its folder!\r" + error.what() +
                    "\rSave it in another one.");
  }
  blnNeedsSaving_ = false;
  KnowProjectFile(strProjectDatabasePath_);
  (void)TakeProjectFile();
}

void clsHX7Project::SaveAs(const std::string& strFile) {
  RefuseSaving();
  Files& files = *world().files;
  const std::string directory = GetFileDirectory(strFile);
  const std::string title = GetFileTitle(strFile);
  const WorkingPlace place = WorkingPlaceOf(directory, title);
  const WorkingName working =
      ChooseWorkingName(place.directory, place.title, strProjectDatabasePath_);
  const std::string& workingFile = working.path;
  if (files.IsSameFile(workingFile, strFile)) {
    throw FileError("Cannot create temporary project file for project " + title + "!");
  }
  world().databases->Release(strProjectDatabasePath_);
  const bool moves = !files.IsSameFile(workingFile, strProjectDatabasePath_);
  if (moves) {
    // Whoever works on the other file keeps it.
    const auto lock = files.Lock(workingFile);
    if (!lock) throw FileError(InUseWords(title));
  }
  if (files.Exists(strFile) && !files.IsSameFile(strFile, sFileName_)) {
    const auto lock = files.LockPresent(strFile);
    if (!lock) throw FileError(InUseWords(title));
  }
  files.SaveDurably(strProjectDatabasePath_, strFile, sFileName_);
  if (moves) {
    files.Rename(strProjectDatabasePath_, workingFile);
    // On another file system it is another file, which nobody holds yet.
    if (auto lock = files.Lock(workingFile)) workingFileLock_ = std::move(lock);
  }
  sFileName_ = strFile;
  sFileTitle_ = title;
  strProjectDatabasePath_ = workingFile;
  sWorkingDirectory_ = directory;
  savedElsewhere_ = place.elsewhere;
  KnowProjectFile(strProjectDatabasePath_);
  (void)TakeProjectFile();
  SetDatabasePaths();
  ProjectSavedAs.Raise();
  TellOfPlace(working.remark);
}

bool clsHX7Project::BackupExists() const {
  return world().files->Exists(DropRight(sFileName_, 3) + "bak");
}

}  // namespace velmoor
