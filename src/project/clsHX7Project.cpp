#include "project/clsHX7Project.h"

#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/data/ProjectFormat.h"
#include "project/data/Schema.h"
#include "session/Session.h"

namespace velmoor {
namespace {

// The words that refuse the working file of the project; none for one of the present format.
std::string RefusalOf(const std::string& workingFile, const std::string& title) {
  try {
    BringUpToDate(workingFile, JoinPath(world().appDirectory, "Velmoor.spt"));
    return {};
  } catch (const NewerFormat& newer) {
    return "Project " + title + " was made by a newer version of Velmoor!\r" + newer.what();
  } catch (const std::exception&) {
    return "Error reading databases!";
  }
}

}  // namespace

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
  workingFileLock_.reset();
  try {
    world().files->Remove(strProjectDatabasePath_);
  } catch (const FileError&) {
    // The working file is disposable; a folder that became read-only keeps it until the next
    // opening.
  }
}

std::string clsHX7Project::WorkingFileOf(const std::string& directory,
                                         const std::string& title) const {
  // The ending is cut by characters, not by the dot: "line1.spjx" is worked on as "line1.stmp".
  return JoinPath(directory, DropRight(title, 3) + "tmp");
}

bool clsHX7Project::OpenProject(const std::string& strFileName, const std::string& strFileTitle,
                                std::string& strError) {
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
  const std::string workingFile = WorkingFileOf(sWorkingDirectory_, sFileTitle_);
  // A project whose name ends in "tmp" would be its own working file, and be deleted with it.
  if (files.IsSameFile(workingFile, sFileName_)) return refuse(cannotCreate);
  try {
    workingFileLock_ = files.Lock(workingFile);
    if (!workingFileLock_) {
      return refuse("Project " + sFileTitle_ + " is in use by another program!");
    }
    strProjectDatabasePath_ = workingFile;
    world().databases->Release(workingFile);
    files.LayWorkingCopy(sFileName_, workingFile);
  } catch (const FileError& error) {
    return refuse(cannotCreate + "\r" + error.what());
  }
  if (!files.Exists(workingFile)) return refuse(cannotCreate);
  const std::string refusal = RefusalOf(workingFile, sFileTitle_);
  if (!refusal.empty()) return refuse(refusal);
  SetDatabasePaths();
  SetDatabaseTables();
  if (!ReadFile()) return refuse("Error reading databases!");
  blnOpen_ = true;
  MarkPendingDownloads();
  strError.clear();
  ProjectOpened.Raise();
  return true;
}

void clsHX7Project::SetDatabasePaths() {
  for (ParameterToolBase* const tool : ParameterTools()) {
    tool->SetDatabasePath(strTHDatabasePath_);
    tool->SetSaveDBPath(strProjectDatabasePath_);
  }
  clsMechanicalSystem_.SetDatabasePath(strTHDatabasePath_);
  clsMechanicalSystem_.SetSaveDBPath(strProjectDatabasePath_);
  for (MotionTable* const table : Tables()) table->SetDatabasePath(strProjectDatabasePath_);
  clsServoJog_.SetDatabasePath(strProjectDatabasePath_);
}

void clsHX7Project::SetDatabaseTables() {
  for (ParameterToolBase* const tool : ParameterTools()) {
    tool->SetParametersTable(gMainForm->ParametersTable());
  }
  clsMechanicalSystem_.SetParametersTable(gMainForm->ParametersTable());
  clsTuning_.SetNibbleTable(gMainForm->NibbleTable());
  clsEditor_.SetNibbleTable(gMainForm->NibbleTable());
}

// A foreign or damaged file is found before any tool reads: each tool would otherwise show its own
// box and leave an empty project open.
bool clsHX7Project::ReadFile() {
  try {
    const auto probe = OpenForReading(strProjectDatabasePath_);
    for (const std::string_view table :
         {schema::Parameters::kTable, schema::Misc::kTable, schema::Position::kTable,
          schema::Zone::kTable, schema::Jog::kTable}) {
      (void)probe->OpenTable(table);
    }
  } catch (const std::exception&) {
    return false;
  }
  return Trapped("clsProject.ReadFile: ", [this] {
    ReadTools();
    return true;
  });
}

// The machine comes before the others: they read in its units and at its resolution.
void clsHX7Project::ReadTools() {
  const ComboLists& lists = gMainForm->ComboList();
  clsServoJog_.ReadFromDB();
  clsMechanicalSystem_.ReadFromDB();
  clsMechanicalSystem_.UpdateProjectMechanicalSystemValues();
  UpdateMechanicalSystemValues(false);
  clsTuning_.ReadFromDB();
  for (ParameterToolBase* const tool : std::initializer_list<ParameterToolBase*>{
           &clsEditor_, &clsFlexibleIO_, &clsHoming_, &clsInterface_, &clsOverTravel_}) {
    tool->ReadFromDB();
    tool->SetComboLists(lists);
  }
  clsOverTravel_.InitOverTravelLimits();
  clsJog_.ReadFromDB();
  clsPosition_.ReadFromDB();
  clsZone_.ReadFromDB();
}

// Work that was saved but not yet downloaded is still offered after a restart.
void clsHX7Project::MarkPendingDownloads() {
  const auto mark = [this](auto& tool) {
    if (tool.GetNumberOfNewRows() == 0) return;
    tool.SetIsDirty(true);
    blnIsDirty_ = true;
  };
  mark(clsEditor_);
  mark(clsMechanicalSystem_);
  mark(clsPosition_);
  mark(clsJog_);
  mark(clsZone_);
}

void clsHX7Project::Save() {
  world().databases->Release(strProjectDatabasePath_);
  world().files->ReplaceDurably(strProjectDatabasePath_, sFileName_);
  ResetNeedsSaving();
}

void clsHX7Project::SaveAs(const std::string& strFile) {
  Files& files = *world().files;
  const std::string directory = GetFileDirectory(strFile);
  const std::string title = GetFileTitle(strFile);
  const std::string workingFile = WorkingFileOf(directory, title);
  if (files.IsSameFile(workingFile, strFile)) {
    throw FileError("Cannot create temporary project file for project " + title + "!");
  }
  world().databases->Release(strProjectDatabasePath_);
  const bool moves = !files.IsSameFile(workingFile, strProjectDatabasePath_);
  if (moves) {
    // Whoever works on the other file keeps it.
    const auto lock = files.Lock(workingFile);
    if (!lock) throw FileError("Project " + title + " is in use by another program!");
  }
  files.ReplaceDurably(strProjectDatabasePath_, strFile);
  if (moves) files.Rename(strProjectDatabasePath_, workingFile);
  sFileName_ = strFile;
  sFileTitle_ = title;
  strProjectDatabasePath_ = workingFile;
  sWorkingDirectory_ = directory;
  SetDatabasePaths();
  ProjectSavedAs.Raise();
}

bool clsHX7Project::BackupExists() const {
  return world().files->Exists(DropRight(sFileName_, 3) + "bak");
}

}  // namespace velmoor
