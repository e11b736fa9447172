#include "console/ConsoleSession.h"

#include <algorithm>
#include <ostream>

#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/UploadFlow.h"

namespace velmoor {

ConsoleSession::ConsoleSession(SerialPort& comm, std::ostream* progress, bool (*ends)())
    : SessionState(comm), progress_(progress), ends_(ends) {
  gMainForm = this;
}

ConsoleSession::~ConsoleSession() {
  connections_.Clear();
  if (clsHelix7) GoOffline();
  ReleaseObjects();
  clsAlarm.reset();
  gMainForm = nullptr;
}

bool ConsoleSession::Start(const std::string& strMotorSize) {
  const std::string catalogue = JoinPath(world().appDirectory, "IdeInfo.mdb");
  if (!world().files->Exists(catalogue)) {
    ShowCritical("Error!  " + catalogue + " file was not found in its path!");
    return false;
  }
  StartHelix7();
  if (!BuildDatabase(strMotorSize)) return false;
  return Trapped("Main.SetDBAndTables: ", [this] {
    SetDBAndTables();
    GetComboLists();
    GetAlarmDefinitions();
    return true;
  });
}

bool ConsoleSession::Open(const std::string& fileName) {
  const std::string path = world().files->Absolute(fileName);
  connections_.Clear();
  clsProject.reset();
  clsProject = std::make_unique<clsHX7Project>();
  clsProject->SetWorkingDirectory(GetFileDirectory(path));
  std::string strError;
  if (!clsProject->OpenProject(path, GetFileTitle(path), strError)) {
    ShowCritical(strError + "\rProject '" + GetFileTitle(path) + "' cannot be opened.");
    return false;
  }
  const auto inform = [this](const char* words) {
    return [this, words] {
      EndProgress();
      ShowInformation(words);
    };
  };
  connections_ += clsProject->MechanicalSystemCheckSumFailed.Connect(inform(kCheckSumFailedWords));
  connections_ += clsProject->MechanicalSystemNoCheckSum.Connect(inform(kNoCheckSumWords));
  connections_ += clsProject->MechanicalSystemZeroSystem.Connect(inform(kZeroSystemWords));
  const auto show = [this](const char* verb) {
    return [this, verb](Tool tool, std::int16_t row, std::int16_t total) {
      ShowProgress(verb + std::string(InfoOf(tool).item) + ": " + NumberText(row) + " of " +
                   NumberText(total));
    };
  };
  connections_ += clsProject->ToolDownloading.Connect(show("Downloading "));
  connections_ += clsProject->ToolUploading.Connect(show("Uploading "));
  connections_ += clsProject->ToolStatus.Connect([this](Tool tool, const std::string& text) {
    EndProgress();
    // Where a transfer ended is worth a line, its success is not.
    if (text.find("Complete") == std::string::npos) {
      ShowInformation(std::string(InfoOf(tool).item) + " " + text + " (" + lastProgress_ + ")");
    }
  });
  return true;
}

// One line that is rewritten; blanks cover what a longer one left.
void ConsoleSession::ShowProgress(const std::string& text) {
  lastProgress_ = text;
  if (progress_ == nullptr) return;
  const std::size_t width = std::max(progressWidth_, text.size());
  *progress_ << '\r' << text << std::string(width - text.size(), ' ') << std::flush;
  progressWidth_ = width;
}

void ConsoleSession::EndProgress() {
  if (progress_ == nullptr || progressWidth_ == 0) return;
  *progress_ << '\n';
  progressWidth_ = 0;
}

bool ConsoleSession::GoOnline(const std::string& failure) {
  if (clsHelix7->GoOnline(false) == kSuccess) {
    blnIsOnline = true;
    return true;
  }
  std::string words = failure +
                      "\rHardware is not ready, or communication\r"
                      "process settings are not set correctly.";
  if (!Comm().LastError().empty()) words += "\r" + Comm().LastError();
  ShowExclamation(words);
  clsHelix7->GoOffline();
  return false;
}

void ConsoleSession::GoOffline() {
  clsHelix7->GoOffline();
  blnIsOnline = false;
}

void ConsoleSession::WaitForRestart() {
  (void)clsHelix7->GoOnlineAfterRestart();
  GoOffline();
}

}  // namespace velmoor
