#include "platform/posix/HeldFolder.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

#include "platform/Files.h"
#include "platform/Numbers.h"

namespace velmoor::posix {
namespace {

// For a name that anybody who may write to the folder can have taken.
constexpr int kMistrustful = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
constexpr std::array<std::string_view, 3> kJournals = {"-journal", "-wal", "-shm"};

// The process's mask of permissions, which can only be read by setting it.
mode_t Mask() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return mask;
}

}  // namespace

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

std::string BehindLinks(const std::string& path,
                        const std::function<void(const std::string&)>& onLink) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::path place = path;
  // A chain of links that never ends is refused by the system when the file is opened.
  for (int links = 0; links < 40 && fs::is_symlink(place, error); ++links) {
    onLink(place.string());
    const fs::path next = fs::read_symlink(place, error);
    place = next.is_absolute() ? next : place.parent_path() / next;
  }
  return place.string();
}

mode_t Masked(mode_t mode) {
  return mode & ~Mask();
}

bool IsOwn(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
}

bool IsOwn(const FileDescriptor& file) {
  struct stat status {};
  return ::fstat(file.Get(), &status) == 0 && IsOwn(status);
}

HeldFolder::HeldFolder(const std::string& path, std::string named)
    : named_(std::move(named)), name_(std::filesystem::path(path).filename().string()) {
  // A name with a zero character would reach the system cut short and so mean another file.
  if (path.find('\0') != std::string::npos) {
    errno = ENOENT;
    Fail();
  }
  folder_ = FileDescriptor(::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder_.IsValid()) Fail();
}

void HeldFolder::Fail() const {
  throw FileError(named_ + ": " + std::strerror(errno));
}

FileDescriptor HeldFolder::TryOpen(const std::string& name, int flags, mode_t mode) const {
  return FileDescriptor(::openat(folder_.Get(), name.c_str(), flags | kMistrustful, mode));
}

FileDescriptor HeldFolder::Open(const std::string& name, int flags, mode_t mode) const {
  FileDescriptor file = TryOpen(name, flags, mode);
  if (!file.IsValid()) Fail();
  return file;
}

bool HeldFolder::Status(const std::string& name, struct stat& status) const {
  return ::fstatat(folder_.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

FileDescriptor HeldFolder::MakeUnguessable(const std::string& stem, mode_t mode,
                                           std::string& name) const {
  constexpr int kTries = 10;
  for (int i = 0; i < kTries; ++i) {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof(number), 0) != sizeof(number)) Fail();
    name = stem + HexText(static_cast<std::uint32_t>(number), 8) +
           HexText(static_cast<std::uint32_t>(number >> 32U), 8);
    FileDescriptor file = TryOpen(name, O_WRONLY | O_CREAT | O_EXCL, mode);
    if (file.IsValid()) {
      if (::fchmod(file.Get(), Masked(mode)) != 0) Fail();
      return file;
    }
    if (errno != EEXIST) Fail();
  }
  Fail();
}

void HeldFolder::MakeFolder(const std::string& name, mode_t mode) const {
  if (::mkdirat(folder_.Get(), name.c_str(), mode) != 0 && errno != EEXIST) Fail();
}

void HeldFolder::Remove(const std::string& name) const {
  if (::unlinkat(folder_.Get(), name.c_str(), 0) != 0 && errno != ENOENT) Fail();
}

// The engine would play a journal into whatever database lies beside it under its name.
void HeldFolder::RemoveJournals(const std::string& name) const {
  for (const std::string_view journal : kJournals) Remove(name + std::string(journal));
}

bool HeldFolder::Rename(const std::string& from, const HeldFolder& folder,
                        const std::string& to) const {
  if (::renameat(folder_.Get(), from.c_str(), folder.folder_.Get(), to.c_str()) == 0) return true;
  if (errno != EXDEV) Fail();
  return false;
}

bool HeldFolder::IsNamed(const FileDescriptor& file, const std::string& name) const {
  struct stat here {};
  struct stat named {};
  return ::fstat(file.Get(), &here) == 0 && Status(name, named) && here.st_dev == named.st_dev &&
         here.st_ino == named.st_ino;
}

void HeldFolder::Sync() const {
  // Some file systems know no flush of a directory; the rename stands all the same.
  if (::fsync(folder_.Get()) != 0 && errno != EINVAL) Fail();
}

}  // namespace velmoor::posix
