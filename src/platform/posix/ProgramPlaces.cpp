#include "platform/posix/ProgramPlaces.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "platform/posix/PosixSingleInstance.h"

namespace velmoor::posix {

std::string ExecutableDirectory() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

std::string ProgramDirectory() {
  const char* const named = std::getenv("VELMOOR_DIRECTORY");
  if (named != nullptr && *named != '\0') {
    return std::filesystem::absolute(named).lexically_normal().string();
  }
  return ExecutableDirectory();
}

std::string StateDirectory() {
  const char* const state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') return JoinPath(state, "velmoor");
  const char* const home = std::getenv("HOME");
  return JoinPath(home != nullptr ? home : "/tmp", ".local/state/velmoor");
}

CatalogueCopyPlace::CatalogueCopyPlace()
    : directory_(JoinPath(RuntimeDirectory(), "velmoor-" + std::to_string(::getpid()))),
      own_(true) {
  ::mkdir(directory_.c_str(), 0700);
}

CatalogueCopyPlace::CatalogueCopyPlace(const std::string& appDirectory) : CatalogueCopyPlace() {
  if (::access(appDirectory.c_str(), W_OK) != 0) return;
  ::rmdir(directory_.c_str());
  directory_ = appDirectory;
  own_ = false;
}

CatalogueCopyPlace::~CatalogueCopyPlace() {
  std::error_code ignored;
  if (own_) std::filesystem::remove_all(directory_, ignored);
}

}  // namespace velmoor::posix
