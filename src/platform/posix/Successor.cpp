#include "platform/posix/Successor.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/Files.h"

namespace velmoor::posix {
namespace {

constexpr mode_t kNewFileMode = 0644;
constexpr mode_t kPermissions = 0777;

[[noreturn]] void Fail(const std::string& path, int error) {
  throw FileError(path + ": " + std::strerror(error));
}

void Check(bool succeeded, const std::string& path) {
  if (!succeeded) Fail(path, errno);
}

// The file that the path leads to. A link of another user's may have been laid since the file was
// opened, and would lead a save out of its folder.
std::string PlaceOf(const std::string& path) {
  return BehindLinks(path, [&path](const std::string& link) {
    struct stat status {};
    const bool known = ::lstat(link.c_str(), &status) == 0;
    if (known && (status.st_uid == ::geteuid() || status.st_uid == 0)) return;
    throw FileError(path + ": it is a link that another user has made");
  });
}

}  // namespace

std::optional<mode_t> PermissionsOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return status.st_mode & kPermissions;
}

void WriteAll(int file, std::string_view bytes, const std::string& named) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    Check(written >= 0, named);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool TakeLock(int file, const std::string& named) {
  while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return false;
    if (errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL) {
      throw FileError(named +
                      ": the folder keeps no locks, so two programs could write the file at once."
                      " Work on a copy in a folder of this computer.");
    }
    if (errno != EINTR) Fail(named, errno);
  }
  return true;
}

Successor::Successor(const std::string& target, std::optional<mode_t> most)
    : target_(target), folder_(PlaceOf(target), target), name_("." + folder_.Name() + ".new") {
  const std::optional<mode_t> kept = ModeToKeep();
  const mode_t allowed = most.value_or(kPermissions);
  const mode_t mode = kept || most ? kept.value_or(kPermissions) & allowed : Masked(kNewFileMode);
  file_ = OpenOwn(mode);
  // The name may have gone to the target between the opening and the lock.
  if (!TakeLock(file_.Get(), target_) || !folder_.IsNamed(file_, name_)) Fail(target_, EBUSY);
  Check(::ftruncate(file_.Get(), 0) == 0, target_);
  // The mask of the process may have taken from it, and what a crash left may have any.
  Check(::fchmod(file_.Get(), mode) == 0, target_);
}

Successor::~Successor() {
  if (done_) return;
  try {
    folder_.Remove(name_);
  } catch (const FileError&) {
    // The folder has become read-only; the next save uses it up.
  }
}

// Of the file that is to be replaced, where there is one. The replacement would get round a write
// protection and take the place of a device, so both are refused here.
std::optional<mode_t> Successor::ModeToKeep() const {
  struct stat present {};
  if (!folder_.Status(folder_.Name(), present)) return std::nullopt;
  if (S_ISDIR(present.st_mode)) Fail(target_, EISDIR);
  if (!S_ISREG(present.st_mode)) throw FileError(target_ + ": it is no regular file");
  Check(::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) == 0, target_);
  return present.st_mode & kPermissions;
}

FileDescriptor Successor::OpenOwn(mode_t mode) {
  FileDescriptor file = folder_.TryOpen(name_, O_WRONLY | O_CREAT, mode);
  if (file.IsValid() && IsOwn(file)) return file;
  const int error = errno;
  struct stat taken {};
  // Nothing is in the way: the folder itself refuses.
  if (!file.IsValid() && !folder_.Status(name_, taken)) Fail(target_, error);
  return folder_.MakeUnguessable(name_ + ".", mode, name_);
}

void Successor::Write(std::string_view bytes) {
  WriteAll(file_.Get(), bytes, target_);
}

void Successor::TakeOver() {
  Check(::fsync(file_.Get()) == 0, target_);
  folder_.RemoveJournals(folder_.Name());
  (void)folder_.Rename(name_, folder_, folder_.Name());
  done_ = true;
  folder_.Sync();
}

}  // namespace velmoor::posix
