#include "operations/ProjectAside.h"

#include "platform/Files.h"
#include "platform/MessageBoxes.h"

namespace velmoor {

ProjectAside::ProjectAside(SessionState& session, std::function<void()> follow,
                           std::function<void()> forget)
    : session_(session), follow_(std::move(follow)), forget_(std::move(forget)) {}

ProjectAside::~ProjectAside() {
  if (!own_) return;
  forget_();
  (void)session_.SwapProject(std::move(own_));
  follow_();
}

bool ProjectAside::Open(const std::string& path) {
  auto project = std::make_unique<clsHX7Project>();
  project->SetWorkingDirectory(GetFileDirectory(path));
  std::string reason;
  if (!project->OpenProject(path, GetFileTitle(path), reason)) {
    ShowExclamation(reason + "\r'" + GetFileTitle(path) + "' cannot be opened.");
    return false;
  }
  forget_();
  own_ = session_.SwapProject(std::move(project));
  follow_();
  return true;
}

}  // namespace velmoor
