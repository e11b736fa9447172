#include "platform/posix/ProgramPlaces.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/Files.h"
#include "platform/posix/PosixSingleInstance.h"

namespace velmoor::posix {

std::string ExecutableDirectory() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

CatalogueCopyPlace::CatalogueCopyPlace(const std::string& appDirectory) : directory_(appDirectory) {
  if (::access(appDirectory.c_str(), W_OK) == 0) return;
  directory_ = JoinPath(RuntimeDirectory(), "velmoor-" + std::to_string(::getpid()));
  own_ = true;
  ::mkdir(directory_.c_str(), 0700);
}

CatalogueCopyPlace::~CatalogueCopyPlace() {
  std::error_code ignored;
  if (own_) std::filesystem::remove_all(directory_, ignored);
}

}  // namespace velmoor::posix
