#include "platform/sqlcipher/SystemFiles.h"

#include <fcntl.h>
#include <sqlcipher/sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/Database.h"

namespace velmoor::sqlcipher {
namespace {

[[noreturn]] void Fail(const std::string& path, int error) {
  throw std::system_error(error, std::generic_category(), path);
}

// In the place of the system's open, in the form in which the engine calls it.
int OpenOwn(const char* path, int flags, int mode) {
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  if (!writes) return ::open(path, flags, mode);
  const int file = ::open(path, flags | O_NOFOLLOW | O_NONBLOCK, mode);
  if (file < 0) return file;
  struct stat status {};
  const bool own = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
                   status.st_uid == ::geteuid() && status.st_nlink == 1;
  if (own) return file;
  ::close(file);
  errno = EACCES;
  return -1;
}

}  // namespace

void LeaveNoMemoryImage() {
  constexpr rlimit kNoCore{0, 0};
  (void)::setrlimit(RLIMIT_CORE, &kNoCore);
}

void WriteOwnFilesAlone() {
  sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
  if (vfs == nullptr || vfs->xSetSystemCall == nullptr) return;
  (void)vfs->xSetSystemCall(vfs, "open", reinterpret_cast<sqlite3_syscall_ptr>(OpenOwn));
}

bool MeansFull(int error) {
  return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

std::string SystemReason(int error) {
  return std::strerror(error);
}

FileHead ReadHead(const std::string& path, std::size_t most) {
  // A name with a zero character would reach the system cut short and so mean another file.
  if (path.find('\0') != std::string::npos) Fail(path, ENOENT);
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) Fail(path, errno);
  FileHead head;
  head.bytes.resize(most);
  const ssize_t got = ::read(file, head.bytes.data(), most);
  const int error = errno;
  struct stat status {};
  const bool known = ::fstat(file, &status) == 0;
  ::close(file);
  if (got < 0 || !known) Fail(path, error);
  head.bytes.resize(static_cast<std::size_t>(got));
  head.size = static_cast<std::uintmax_t>(status.st_size);
  head.identity = std::to_string(status.st_dev) + "/" + std::to_string(status.st_ino);
  return head;
}

void EmptyFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_TRUNC);
  if (file < 0) Fail(path, errno);
  ::close(file);
}

FileImage::FileImage() {
  for (const char* const folder : {"/dev/shm", "/tmp"}) {
    std::string name = std::string(folder) + "/velmoor-XXXXXX";
    file_ = mkostemp(name.data(), O_CLOEXEC);
    if (file_ < 0) continue;
    path_ = name;
    return;
  }
  throw DatabaseError(DatabaseError::Kind::other, "There is no place for the unsealed database");
}
FileImage::FileImage(FileImage&& other) noexcept
    : path_(std::exchange(other.path_, {})), file_(std::exchange(other.file_, -1)) {}
FileImage::~FileImage() {
  if (file_ >= 0) ::close(static_cast<int>(file_));
  if (!path_.empty()) ::unlink(path_.c_str());
}

bool FileImage::Append(std::span<const unsigned char> bytes) {
  return ::write(static_cast<int>(file_), bytes.data(), bytes.size()) == std::ssize(bytes);
}

}  // namespace velmoor::sqlcipher
