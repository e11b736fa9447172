#include "project/TextProject.h"

#include <memory>

#include "platform/Files.h"
#include "platform/World.h"
#include "project/ProjectText.h"
#include "project/SessionState.h"

namespace velmoor {
namespace {

// A project of its own in the session, and the session's one again at the end.
class Aside {
 public:
  explicit Aside(SessionState& session)
      : session_(session), before_(session.SwapProject(std::make_unique<clsHX7Project>())) {}
  ~Aside() { (void)session_.SwapProject(std::move(before_)); }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;
  clsHX7Project& project() { return *session_.OwnProject(); }

 private:
  SessionState& session_;
  std::unique_ptr<clsHX7Project> before_;
};

}  // namespace

TextProject MakeTextProject(SessionState& session, const std::string& textPath) {
  Files& files = *world().files;
  const std::string text = files.ReadAll(textPath);
  const std::string folder = JoinPath(world().catalogueCopyDirectory, "compare");
  const std::string title = GetFileTitle(textPath) + ".spj";
  TextProject result{JoinPath(folder, title), {}};
  files.MakeDirectories(folder);
  files.ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), result.path);
  Aside aside(session);
  aside.project().SetWorkingDirectory(folder);
  std::string reason;
  if (!aside.project().OpenProject(result.path, title, reason)) {
    result.faults.push_back(reason);
    return result;
  }
  result.faults = ImportText(aside.project(), text, GetFileTitle(textPath));
  if (result.faults.empty()) aside.project().Save();
  return result;
}

}  // namespace velmoor
