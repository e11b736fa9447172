#include "platform/posix/Locations.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/Files.h"

namespace velmoor::posix {
namespace {

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string TemporaryRoot() {
  for (const char* name : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
    const std::string directory = Environment(name);
    if (!directory.empty() && ::access(directory.c_str(), W_OK) == 0) return directory;
  }
  return "/tmp";
}

}  // namespace

std::string ProgramDirectory() {
  const std::string named = Environment("VELMOOR_DIRECTORY");
  if (!named.empty()) return std::filesystem::absolute(named).lexically_normal().string();
  return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

PrivateDirectory::PrivateDirectory() {
  const std::string pattern = JoinPath(TemporaryRoot(), "velmoor-XXXXXX");
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  if (::mkdtemp(name.data()) == nullptr) {
    throw FileError("Cannot create a directory like " + pattern + ": " +
                    std::generic_category().message(errno));
  }
  path_ = name.data();
}

PrivateDirectory::~PrivateDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace velmoor::posix
