#include "console/ConsoleSession.h"

#include <algorithm>
#include <ostream>

#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/Doubts.h"

namespace velmoor {

ConsoleSession::ConsoleSession(SerialPort& comm, std::ostream& notes, std::ostream* progress,
                               bool (*ends)())
    : SessionState(comm), notes_(notes), progress_(progress), ends_(ends) {
  gMainForm = this;
}

ConsoleSession::~ConsoleSession() {
  operations_.ForgetProject();
  if (clsHelix7) {
    clsHelix7->GoOffline();
    blnIsOnline = false;
  }
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
  operations_.FollowDevice();
  if (!BuildDatabase(strMotorSize)) return false;
  return Trapped("Main.SetDBAndTables: ", [this] {
    SetDBAndTables();
    GetComboLists();
    GetAlarmDefinitions();
    return true;
  });
}

bool ConsoleSession::Open(const std::string& fileName, NewerProject newer,
                          const std::string& watts) {
  const std::string path = world().files->Absolute(fileName);
  operations_.ForgetProject();
  clsProject.reset();
  clsProject = std::make_unique<clsHX7Project>();
  clsProject->SetWorkingDirectory(GetFileDirectory(path));
  std::string strError;
  if (!clsProject->OpenProject(path, GetFileTitle(path), strError, newer)) {
    const bool hint = clsProject->IsNewer() && newer == NewerProject::refuse;
    ShowCritical(strError + "\rProject '" + GetFileTitle(path) + "' cannot be opened." +
                 (hint ? kReadOnlyHint : ""));
    return false;
  }
  operations_.FollowProject();
  if (!watts.empty()) clsProject->UseLimitsOf(watts);
  const std::size_t doubts = clsProject->Doubts().size();
  if (doubts > 0) {
    ShowInformation(NumberText(doubts) + (doubts == 1 ? " value of " : " values of ") +
                    GetFileTitle(path) + " in doubt: velmoorctl check lists them.");
  }
  return true;
}

void ConsoleSession::WorkGoesOn(const WorkStep& step) {
  ShowProgress(step.current.empty() ? step.total : step.current);
}

void ConsoleSession::SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int) {
  ShowProgress("Asking axis " + axis + " at " + NumberText(bitsPerSecond) + " bit/s");
}

// What goes well is worth no line: the last words tell it.
void ConsoleSession::StatusTold(const std::string& text) {
  EndProgress();
  const bool ends = text.ends_with("Failed") || text.ends_with("Terminated");
  if (ends || text.starts_with("Reset ") || text.starts_with("The ")) notes_ << text << '\n';
}

// One line that is rewritten; blanks cover what a longer one left.
void ConsoleSession::ShowProgress(const std::string& text) {
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

void ConsoleSession::DoubtsFound(clsHX7Project& project) {
  EndProgress();
  ShowInformation("Values in doubt:\r" + InWords(project.Doubts()));
}

}  // namespace velmoor
