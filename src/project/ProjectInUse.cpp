// The project's own file while it is open: nobody else opens it, and what others make of it is
// noticed.

#include <functional>

#include "platform/World.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

// One number for one content.
std::size_t StateOfContents(const std::string& path) {
  return std::hash<std::string>()(world().files->ReadAll(path));
}

}  // namespace

// Whoever cannot save there keeps nobody off.
bool clsHX7Project::TakeProjectFile() {
  projectFileLock_.reset();
  if (savedElsewhere_) return true;
  projectFileLock_ = world().files->LockPresent(sFileName_);
  return projectFileLock_ != nullptr;
}

void clsHX7Project::KnowProjectFile(const std::string& copy) {
  projectFileState_ = StateOfContents(copy);
}

bool clsHX7Project::HoldsWhatIsKnown(const std::string& copy) const {
  return StateOfContents(copy) == projectFileState_;
}

// By a copy: what lies under the file's name by now may be a pipe.
bool clsHX7Project::KnowsProjectFile() const {
  Files& files = *world().files;
  const std::string copy = JoinPath(world().catalogueCopyDirectory, "saved.tmp");
  try {
    files.LayWorkingCopy(sFileName_, copy);
    const bool known = HoldsWhatIsKnown(copy);
    files.Remove(copy);
    return known;
  } catch (const FileError&) {
    return false;
  }
}

std::string clsHX7Project::SaveConcern() const {
  const Files& files = *world().files;
  if (!files.Exists(sFileName_)) return {};
  if (!KnowsProjectFile()) {
    return "Another program has changed " + sFileTitle_ +
           " since it was opened!\rSaving replaces what it has written.";
  }
  if (files.HasOtherNames(sFileName_)) {
    return sFileTitle_ +
           " has another name (a hard link)!\rSaving gives this name alone what is new; the other "
           "keeps what was saved before.";
  }
  return {};
}

}  // namespace velmoor
