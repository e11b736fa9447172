#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0644;
constexpr mode_t kPermissions = 0777;
// A working copy shows what its project may hide.
constexpr mode_t kOwnerOnly = 0600;
// For a name that anybody who may write to the folder can have taken: no link is followed, and no
// pipe waited for.
constexpr int kMistrustful = O_NOFOLLOW | O_NONBLOCK;
constexpr std::array<std::string_view, 3> kJournals = {"-journal", "-wal", "-shm"};

[[noreturn]] void Fail(const std::string& path, int error) {
  throw FileError(path + ": " + std::strerror(error));
}

void Check(bool succeeded, const std::string& path) {
  if (!succeeded) Fail(path, errno);
}

// A name with a zero character would reach the system cut short and so mean another file.
bool IsCutShort(const std::string& path) {
  return path.find('\0') != std::string::npos;
}

// A failure names `named`.
FileDescriptor OpenFor(const std::string& named, const std::string& path, int flags, mode_t mode) {
  if (IsCutShort(path)) Fail(named, ENOENT);
  FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC, mode));
  Check(file.IsValid(), named);
  return file;
}

FileDescriptor OpenFile(const std::string& path, int flags, mode_t mode = 0) {
  return OpenFor(path, path, flags, mode);
}

bool Status(const std::string& path, struct stat& status) {
  return !IsCutShort(path) && ::stat(path.c_str(), &status) == 0;
}

// A regular file of this user that has no other name. Whatever else lies under a name of ours was
// put there by somebody.
bool IsOwn(const FileDescriptor& file) {
  struct stat status {};
  return ::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid() && status.st_nlink == 1;
}

// The process's mask of permissions, which can only be read by setting it.
mode_t Mask() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return mask;
}

// The working file, made where there is none.
FileDescriptor OpenWorkingFile(const std::string& path, int flags) {
  FileDescriptor file = OpenFile(path, flags | O_CREAT | kMistrustful, kOwnerOnly);
  if (!IsOwn(file)) throw FileError(path + ": it is no file of this user alone");
  return file;
}

void WriteAll(int file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    Check(written >= 0, path);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// Hands the file's contents to `take`, piece by piece.
void ReadPieces(const std::string& path, const std::function<void(std::string_view)>& take) {
  const FileDescriptor file = OpenFile(path, O_RDONLY);
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t got = ::read(file.Get(), buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    Check(got >= 0, path);
    if (got == 0) return;
    take({buffer.data(), static_cast<std::size_t>(got)});
  }
}

void Delete(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) Fail(path, errno);
}

// The engine would play a journal into whatever database lies beside it under its name.
void DeleteJournals(const std::string& path) {
  for (const std::string_view journal : kJournals) Delete(path + std::string(journal));
}

// The file behind symbolic links, whether it exists or not.
std::string Resolved(const std::string& path) {
  std::error_code error;
  fs::path place = path;
  // A chain of links that never ends is refused by the system when the file is opened.
  for (int links = 0; links < 40 && fs::is_symlink(place, error); ++links) {
    const fs::path next = fs::read_symlink(place, error);
    place = next.is_absolute() ? next : place.parent_path() / next;
  }
  return place.string();
}

std::string DirectoryOf(const std::string& path) {
  const std::string directory = fs::path(path).parent_path().string();
  return directory.empty() ? "." : directory;
}

void SyncDirectory(const std::string& directory) {
  const FileDescriptor handle = OpenFile(directory, O_RDONLY | O_DIRECTORY);
  // Some file systems know no flush of a directory; the rename stands all the same.
  if (::fsync(handle.Get()) != 0 && errno != EINVAL) Fail(directory, errno);
}

// False: another process has it.
bool TakeLock(int file, const std::string& path) {
  while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return false;
    if (errno != EINTR) Fail(path, errno);
  }
  return true;
}

// The permissions of the file that is to be replaced, where there is one. The replacement would
// get round a write protection and take the place of a device, so both are refused here.
std::optional<mode_t> ModeToKeep(const std::string& target) {
  struct stat present {};
  if (!Status(target, present)) return std::nullopt;
  if (S_ISDIR(present.st_mode)) Fail(target, EISDIR);
  if (!S_ISREG(present.st_mode)) throw FileError(target + ": it is no regular file");
  Check(::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0, target);
  return present.st_mode & kPermissions;
}

// A file beside the target that takes the target's name, and the permissions of a file that had it,
// when it is complete. Failures name the target.
//
// Its name is always the same, so what a crash left is used up by the next one; a lock keeps two
// processes apart that replace the same target. Where something lies under it that is not ours,
// that stays, and the file has a name that nobody can foresee.
class Successor {
 public:
  explicit Successor(const std::string& target)
      : target_(Resolved(target)),
        name_(JoinPath(DirectoryOf(target_), "." + GetFileTitle(target_) + ".new")),
        mode_(ModeToKeep(target_)),
        file_(OpenOwn(mode_.value_or(kNewFileMode))) {
    // The name may have gone to the target between the opening and the lock.
    if (!TakeLock(file_.Get(), target_) || !IsStillNamed()) Fail(target_, EBUSY);
    Check(::ftruncate(file_.Get(), 0) == 0, target_);
    // The mask of the process may have taken from what the file had.
    if (mode_) Check(::fchmod(file_.Get(), *mode_) == 0, target_);
  }
  Successor(const Successor&) = delete;
  Successor& operator=(const Successor&) = delete;
  ~Successor() {
    if (!done_) ::unlink(name_.c_str());
  }

  void Write(std::string_view bytes) { WriteAll(file_.Get(), bytes, target_); }
  void TakeOver() {
    Check(::fsync(file_.Get()) == 0, target_);
    DeleteJournals(target_);
    Check(::rename(name_.c_str(), target_.c_str()) == 0, target_);
    done_ = true;
    SyncDirectory(DirectoryOf(target_));
  }

 private:
  FileDescriptor OpenOwn(mode_t mode) {
    if (IsCutShort(name_)) Fail(target_, ENOENT);
    FileDescriptor file(::open(name_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | kMistrustful, mode));
    if (file.IsValid() && IsOwn(file)) return file;
    const int error = errno;
    struct stat taken {};
    // Nothing is in the way: the folder itself refuses.
    if (!file.IsValid() && ::lstat(name_.c_str(), &taken) != 0) Fail(target_, error);
    std::string name = JoinPath(DirectoryOf(target_), "." + GetFileTitle(target_) + ".new.XXXXXX");
    FileDescriptor other(::mkostemp(name.data(), O_CLOEXEC));
    Check(other.IsValid(), target_);
    name_ = name;
    Check(::fchmod(other.Get(), mode & ~Mask()) == 0, target_);
    return other;
  }
  [[nodiscard]] bool IsStillNamed() const {
    struct stat here {};
    struct stat named {};
    return ::fstat(file_.Get(), &here) == 0 && ::stat(name_.c_str(), &named) == 0 &&
           here.st_dev == named.st_dev && here.st_ino == named.st_ino;
  }

  std::string target_;
  std::string name_;
  std::optional<mode_t> mode_;
  FileDescriptor file_;
  bool done_ = false;
};

class Flock final : public FileLock {
 public:
  explicit Flock(FileDescriptor file) : file_(std::move(file)) {}

 private:
  FileDescriptor file_;
};

}  // namespace

bool PosixFiles::Exists(const std::string& path) const {
  struct stat status {};
  return Status(path, status) && !S_ISDIR(status.st_mode);
}

bool PosixFiles::IsSameFile(const std::string& a, const std::string& b) const {
  struct stat first {};
  struct stat second {};
  const bool firstExists = Status(a, first);
  const bool secondExists = Status(b, second);
  if (firstExists && secondExists) {
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
  }
  if (firstExists != secondExists || IsCutShort(a) || IsCutShort(b)) return false;
  std::error_code error;
  const fs::path left = fs::weakly_canonical(Resolved(Absolute(a)), error);
  const fs::path right = fs::weakly_canonical(Resolved(Absolute(b)), error);
  return !error && left == right;
}

std::string PosixFiles::Identity(const std::string& path) const {
  struct stat status {};
  if (!Status(path, status)) return {};
  return std::to_string(status.st_dev) + "/" + std::to_string(status.st_ino);
}

bool PosixFiles::IsWritableDirectory(const std::string& directory) const {
  struct stat status {};
  return Status(directory, status) && S_ISDIR(status.st_mode) &&
         ::faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::string PosixFiles::Absolute(const std::string& path) const {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

void PosixFiles::ReplaceDurably(const std::string& source, const std::string& target) {
  Successor successor(target);
  ReadPieces(source, [&](std::string_view piece) { successor.Write(piece); });
  successor.TakeOver();
}

void PosixFiles::LayWorkingCopy(const std::string& source, const std::string& target) {
  if (IsSameFile(source, target)) throw FileError(target + ": the file would overwrite itself");
  struct stat status {};
  if (Status(source, status) && !S_ISREG(status.st_mode)) {
    throw FileError(source + ": it is no regular file");
  }
  const std::string bytes = ReadAll(source);
  DeleteJournals(Resolved(target));
  const FileDescriptor file = OpenWorkingFile(target, O_WRONLY);
  // One that a crash left may be open to others, from its former contents' time.
  Check(::fchmod(file.Get(), kOwnerOnly) == 0, target);
  Check(::ftruncate(file.Get(), 0) == 0, target);
  WriteAll(file.Get(), bytes, target);
}

void PosixFiles::WriteDurably(const std::string& target, const std::string& bytes) {
  Successor successor(target);
  successor.Write(bytes);
  successor.TakeOver();
}

std::string PosixFiles::ReadAll(const std::string& path) const {
  std::string bytes;
  ReadPieces(path, [&](std::string_view piece) { bytes += piece; });
  return bytes;
}

void PosixFiles::Rename(const std::string& from, const std::string& to) {
  if (IsCutShort(from) || IsCutShort(to)) Fail(from, ENOENT);
  if (Exists(from) && IsSameFile(from, to)) return;
  DeleteJournals(to);
  if (::rename(from.c_str(), to.c_str()) == 0) return;
  if (errno != EXDEV) Fail(from, errno);
  ReplaceDurably(from, to);
  Remove(from);
}

void PosixFiles::Remove(const std::string& path) {
  if (IsCutShort(path)) Fail(path, ENOENT);
  DeleteJournals(path);
  Delete(path);
}

void PosixFiles::MakeDirectories(const std::string& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) Fail(directory, error.value());
}

void PosixFiles::ChangeDirectory(const std::string& directory) {
  Check(!IsCutShort(directory) && ::chdir(directory.c_str()) == 0, directory);
}

std::unique_ptr<FileLock> PosixFiles::Lock(const std::string& path) {
  FileDescriptor file = OpenWorkingFile(path, O_RDWR);
  if (!TakeLock(file.Get(), path)) return nullptr;
  return std::make_unique<Flock>(std::move(file));
}

}  // namespace velmoor::posix
