#include "platform/posix/PortHolder.h"

#include <grp.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

#include "platform/Numbers.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

// "00:18:5": the device of the file system in hexadecimal, then the file's number, as the kernel
// lists its locks.
bool IsFileOf(std::string_view place, const struct stat& file) {
  const std::size_t first = place.find(':');
  const std::size_t last = place.rfind(':');
  if (first == std::string_view::npos || first == last) return false;
  return ParseHex(place.substr(0, first)) == major(file.st_dev) &&
         ParseHex(place.substr(first + 1, last - first - 1)) == minor(file.st_dev) &&
         ParseWhole(place.substr(last + 1)) == static_cast<std::int64_t>(file.st_ino);
}

std::optional<std::int64_t> LockOwner(const struct stat& file) {
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    // "1: FLOCK  ADVISORY  WRITE 4711 00:18:5 0 EOF"
    std::istringstream words(line);
    std::string number;
    std::string kind;
    std::string mode;
    std::string access;
    std::string process;
    std::string place;
    if (!(words >> number >> kind >> mode >> access >> process >> place)) continue;
    if (kind == "FLOCK" && IsFileOf(place, file)) return ParseWhole(process);
  }
  return std::nullopt;
}

bool HasOpen(const fs::path& process, const fs::path& device) {
  std::error_code error;
  for (fs::directory_iterator it(process / "fd", error), end; !error && it != end;
       it.increment(error)) {
    std::error_code unreadable;
    if (fs::read_symlink(it->path(), unreadable) == device) return true;
  }
  return false;
}

std::optional<std::int64_t> Opener(const std::string& path) {
  std::error_code error;
  const fs::path device = fs::canonical(path, error);
  if (error) return std::nullopt;
  for (fs::directory_iterator it("/proc", error), end; !error && it != end; it.increment(error)) {
    const auto process = ParseWhole(it->path().filename().string());
    if (process && *process != getpid() && HasOpen(it->path(), device)) return process;
  }
  return std::nullopt;
}

std::string WordsOn(std::optional<std::int64_t> holder, const std::string& path) {
  if (!holder) holder = Opener(path);
  if (!holder || *holder <= 0) return {};
  std::ifstream comm("/proc/" + NumberText(*holder) + "/comm");
  std::string program;
  std::getline(comm, program);
  if (program.empty()) program = "another program";
  return " by " + program + " (process " + NumberText(*holder) + ")";
}

}  // namespace

std::string DescribeHolder(int descriptor, const std::string& path) {
  struct stat file {};
  const bool known = fstat(descriptor, &file) == 0;
  return WordsOn(known ? LockOwner(file) : std::nullopt, path);
}

std::string DescribeHolder(const std::string& path) {
  struct stat file {};
  const bool known = stat(path.c_str(), &file) == 0;
  return WordsOn(known ? LockOwner(file) : std::nullopt, path);
}

std::string DescribeAccess(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return {};
  constexpr mode_t kBoth = S_IRGRP | S_IWGRP;
  if ((file.st_mode & kBoth) != kBoth || file.st_gid == 0) return {};
  std::vector<char> buffer(4096);
  group entry{};
  group* found = nullptr;
  if (getgrgid_r(file.st_gid, &entry, buffer.data(), buffer.size(), &found) != 0 || !found) {
    return {};
  }
  const std::string name = entry.gr_name;
  return " Members of the group \"" + name + "\" may use it: add your user to the group (sudo " +
         "usermod -aG " + name + " $USER) and log in again.";
}

}  // namespace velmoor::posix
