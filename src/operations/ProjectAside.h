// Another project in the place of the session's for as long as the object lives: a state of the
// history, into which is read or from which is sent. The session's own project and its windows stay
// as they are meanwhile; no command of the user runs.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "project/SessionState.h"

namespace velmoor {

class ProjectAside {
 public:
  // `follow` and `forget` tell the operations that the session's project is another, or is about to
  // be. All must outlive the object.
  ProjectAside(SessionState& session, std::function<void()> follow, std::function<void()> forget);
  ~ProjectAside();
  ProjectAside(const ProjectAside&) = delete;
  ProjectAside& operator=(const ProjectAside&) = delete;

  // False after a failure, of which the user was told; the session's own project is in place then.
  [[nodiscard]] bool Open(const std::string& path);

 private:
  void Exchange(std::unique_ptr<clsHX7Project> next);

  SessionState& session_;
  std::function<void()> follow_;
  std::function<void()> forget_;
  std::unique_ptr<clsHX7Project> own_;  // while another is in its place
};

}  // namespace velmoor
