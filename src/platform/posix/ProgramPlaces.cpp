#include "platform/posix/ProgramPlaces.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

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

std::string SettingsFile() {
  const char* const configured = std::getenv("XDG_CONFIG_HOME");
  if (configured != nullptr && *configured == '/') {
    return JoinPath(configured, "velmoor/velmoor.ini");
  }
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') {
    const passwd* const user = ::getpwuid(::getuid());
    home = user == nullptr ? "/" : user->pw_dir;
  }
  return JoinPath(home, ".config/velmoor/velmoor.ini");
}

namespace {

const std::string kPlacePrefix = "velmoor-";

FileDescriptor LockedDirectory(const std::string& path) {
  FileDescriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (directory.IsValid() && ::flock(directory.Get(), LOCK_EX | LOCK_NB) == 0) return directory;
  return FileDescriptor();
}

bool IsPlace(const std::filesystem::directory_entry& entry) {
  const std::string name = entry.path().filename().string();
  return name.starts_with(kPlacePrefix) && name.size() > kPlacePrefix.size() &&
         name.find_first_not_of("0123456789", kPlacePrefix.size()) == std::string::npos;
}

// A place that no process holds was left by one that was killed.
void ClearForsakenPlaces(const std::string& runtimeDirectory) {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(runtimeDirectory, ignored)) {
    if (!IsPlace(entry)) continue;
    const FileDescriptor free = LockedDirectory(entry.path().string());
    if (free.IsValid()) std::filesystem::remove_all(entry.path(), ignored);
  }
}

}  // namespace

CatalogueCopyPlace::CatalogueCopyPlace() {
  const std::string runtimeDirectory = RuntimeDirectory();
  ClearForsakenPlaces(runtimeDirectory);
  const std::string own = JoinPath(runtimeDirectory, kPlacePrefix + std::to_string(::getpid()));
  // Another process that clears may take a new place for a forsaken one, once; and one of another
  // container may have this process's number.
  constexpr int kTries = 3;
  constexpr int kNames = 10;
  for (int i = 0; i < kTries * kNames && !lock_.IsValid(); ++i) {
    directory_ = i < kTries ? own : own + std::to_string(i / kTries);
    ::mkdir(directory_.c_str(), 0700);
    lock_ = LockedDirectory(directory_);
  }
  if (!lock_.IsValid()) {
    throw std::runtime_error("There is no place for the catalogue's copy in " + runtimeDirectory);
  }
}

CatalogueCopyPlace::~CatalogueCopyPlace() {
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

}  // namespace velmoor::posix
