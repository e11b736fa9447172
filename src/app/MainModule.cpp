#include "app/MainModule.h"

#include <functional>

#include "app/clsHX7InitialSettings.h"
#include "app/clsHX7Splash.h"
#include "app/frmError.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/Mcatbase.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// Where the report of an error lies, or why there is none.
std::string ReportError(const UnhandledError& error, const std::string& strProject) {
  try {
    return "A report was written to\r" +
           WriteErrorReport(error, strProject, world().reportDirectory);
  } catch (const FileError& refused) {
    return std::string("No report could be written: ") + refused.what();
  }
}

constexpr const char* kMutexName = "vbVelmoor_APPLICATION_MUTEX";
constexpr std::chrono::milliseconds kHandOverLimit{5000};

}  // namespace

bool ElapsedNSeconds(const std::array<WallTime, 2>& dTime, std::int16_t iSeconds) {
  const int first = dTime[0].minute * 60 + dTime[0].second;
  const int minute = dTime[1].minute + (dTime[1].minute < dTime[0].minute ? 60 : 0);
  const int second = minute * 60 + dTime[1].second;
  // Intended: the limit is in minutes though both times are in seconds.
  return second - first >= iSeconds * 60;
}

MainModule::~MainModule() {
  Terminate();
}

bool MainModule::Main() {
  strRequiredCatalogPath = JoinPath(world().appDirectory, "IdeInfo.mdb");
  if (instance_.Claim(kMutexName)) return StartNewInstance();
  HandleExistingInstance();
  return false;
}

std::string MainModule::CommandLineFile() const {
  std::string name = strCommandLine;
  const bool quoted = name.size() >= 2 && name.front() == '"' && name.back() == '"';
  if (quoted) name = name.substr(1, name.size() - 2);
  // The process that opens it may stand in another directory.
  return name.empty() ? name : world().files->Absolute(name);
}

void MainModule::HandleExistingInstance() {
  const Running running = instance_.FindRunning();
  if (running == Running::silent) {
    ShowExclamation(
        "Velmoor is already running, but does not answer!\r"
        "Wait until it does, or end it, and start Velmoor again.");
  }
  if (running != Running::answers) return;
  const std::string file = CommandLineFile();
  const bool asks = !file.empty() || !instance_.IsRunningVisible();
  if (asks && AskOkCancel("Velmoor is already running!\rDo you wish to close any existing opened "
                          "project and open the selected project?")) {
    instance_.SendMessage(file.empty() ? std::string(1, '\0') : file, kHandOverLimit);
  }
  instance_.ActivateRunning();
}

bool MainModule::CheckRequiredFiles(std::string& strErrorFile) const {
  if (world().files->Exists(strRequiredCatalogPath)) return true;
  strErrorFile = strRequiredCatalogPath + " file was not found in its path!";
  return false;
}

bool MainModule::StartNewInstance() {
  std::string strErrorFile;
  if (!CheckRequiredFiles(strErrorFile)) {
    ShowCritical("Error!  " + strErrorFile);
    instance_.Release();
    return false;
  }
  clsHX7Splash splash;
  splash.Show(1);

  form_ = std::make_unique<frmMain>(comm_, instance_);
  gMainForm = form_.get();
  connections_ += form_->Closed.Connect([this] { Closed.Raise(); });
  form_->MDIForm_Initialize();
  form_->MDIForm_Load();
  form_->Show();
  form_->EnableInitialMenuOptions(false);

  clsHX7InitialSettings settings;
  settings.Show_Settings(form_->Axis(), form_->BaudRate(), form_->COM());
  std::array<WallTime, 2> dTime;
  dTime[0] = world().clock->Now();
  BuildSession();
  YieldEvents();
  form_->EnableInitialMenuOptions(true);
  splash.Unload_Splash();
  dTime[1] = world().clock->Now();
  if (!ElapsedNSeconds(dTime, 1)) PauseInSec(1);
  settings.Unload_Settings();

  OpenFirstProject();
  form_->StartFinished();
  return true;
}

// A failure of one step was shown; the start goes on, and what needs the step fails later.
void MainModule::BuildSession() {
  const auto step = [](const char* name, const std::function<void()>& work) {
    Trapped(std::string("MainModule.") + name + ": ", [&work] {
      work();
      return true;
    });
  };
  step("StartHelix7", [this] { form_->StartHelix7(); });
  step("BuildDatabase", [this] { (void)form_->BuildDatabase(); });
  YieldEvents();
  step("SetDBAndTables", [this] { form_->SetDBAndTables(); });
  step("GetComboLists", [this] { form_->GetComboLists(); });
  step("GetAlarmDefinitions", [this] { form_->GetAlarmDefinitions(); });
}

void MainModule::OpenFirstProject() {
  const std::string strFileName = CommandLineFile();
  if (strFileName.empty()) {
    form_->LaunchOpenProjectDialog();
  } else {
    form_->CommandLineOpenProject(strFileName);
  }
}

ErrorChoice MainModule::HandleUnhandledError(const UnhandledError& error) {
  if (handlesError_) {
    ShowCritical(kUnexpectedError + ("Description: " + error.description));
    return ErrorChoice::goOn;
  }
  const ScopedFlag handling(handlesError_);
  ErrorChoice choice = ErrorChoice::goOn;
  Trapped("MainModule.HandleUnhandledError: ", [&] {
    MakeSafe();
    const auto* const project =
        form_ ? dynamic_cast<const clsHX7Project*>(form_->CurrentProject()) : nullptr;
    const std::string strProject = project != nullptr ? project->Title() : std::string();
    LogWarning("session", "Unexpected error " + error.type + ": " + error.description);
    choice = frmError(error, strProject, ReportError(error, strProject)).Ask();
    if (choice == ErrorChoice::end && form_) {
      world().events->Post([this] {
        if (form_) form_->Close();
      });
    }
    return true;
  });
  return choice;
}

void MainModule::MakeSafe() {
  if (form_) form_->MakeSafe();
}

void MainModule::LeaveAtOnce() {
  const auto quietly = [](const std::function<void()>& work) {
    try {
      work();
    } catch (const std::exception& error) {
      LogWarning("session", error.what());
    }
  };
  quietly([this] { MakeSafe(); });
  quietly([this] {
    if (form_) form_->LeaveAtOnce();
  });
  quietly([] { (void)world().catalogue->McatRemove(); });
  quietly([this] {
    instance_.StopListening();
    instance_.Release();
  });
  LogInformation("session", "Velmoor is ended by a signal");
}

void MainModule::Terminate() {
  if (!form_) return;
  form_->MDIForm_Terminate();
  connections_.Clear();
  form_.reset();
  gMainForm = nullptr;
}

}  // namespace velmoor
