// A folder whose file system has no locks, or does not keep them: in the place of the system's
// call, for a program that is started with this module loaded first. Other folders have theirs.
#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>

namespace {

std::string PathOf(int file) {
  std::array<char, 4096> path{};
  const std::string name = "/proc/self/fd/" + std::to_string(file);
  const ssize_t length = readlink(name.c_str(), path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string Setting(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

}  // namespace

extern "C" int flock(int file, int operation) {
  const std::string folder = Setting("VELMOOR_TEST_FOLDER");
  if (folder.empty() || !PathOf(file).starts_with(folder)) {
    using Flock = int (*)(int, int);
    return reinterpret_cast<Flock>(dlsym(RTLD_NEXT, "flock"))(file, operation);
  }
  if (Setting("VELMOOR_TEST_LOCKS") != "refused") return 0;
  errno = ENOLCK;
  return -1;
}
