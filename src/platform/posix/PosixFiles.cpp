#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
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

#include "platform/Bounds.h"
#include "platform/WholeLines.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/Successor.h"

namespace velmoor::posix {
namespace {

namespace fs = std::filesystem;

// A working copy shows what its project may hide.
constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kReadByAll = 0644;

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

bool Status(const std::string& path, struct stat& status) {
  return !IsCutShort(path) && ::stat(path.c_str(), &status) == 0;
}

std::string Behind(const std::string& path) {
  return BehindLinks(path, [](const std::string& /*link*/) {});
}

// A file that is no pipe, which would be waited for, and no device.
FileDescriptor OpenRegular(const std::string& path) {
  if (IsCutShort(path)) Fail(path, ENOENT);
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  Check(file.IsValid(), path);
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    throw FileError(path + ": it is no regular file");
  }
  return file;
}

// A file under a name of ours, made where there is none.
FileDescriptor OpenWorkingFile(const HeldFolder& folder, const std::string& path, int flags) {
  FileDescriptor file = folder.Open(folder.Name(), flags | O_CREAT, kOwnerOnly);
  if (!IsOwn(file)) throw FileError(path + ": it is no file of this user alone");
  return file;
}

// Hands the file's contents to `take`, piece by piece, until that gives false. True: all of it.
bool ReadPieces(const FileDescriptor& file, const std::string& named,
                const std::function<bool(std::string_view)>& take) {
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t got = ::read(file.Get(), buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    Check(got >= 0, named);
    if (got == 0) return true;
    if (!take({buffer.data(), static_cast<std::size_t>(got)})) return false;
  }
}

std::string ReadBounded(const FileDescriptor& file, const std::string& path) {
  std::string bytes;
  ReadPieces(file, path, [&](std::string_view piece) {
    if (bytes.size() + piece.size() > bounds::kFile) {
      throw FileError(path + ": the file is larger than any file of this program");
    }
    bytes += piece;
    return true;
  });
  return bytes;
}

void Replace(const FileDescriptor& source, const std::string& named, Successor& successor) {
  ReadPieces(source, named, [&](std::string_view piece) {
    successor.Write(piece);
    return true;
  });
  successor.TakeOver();
}

// Who may read the file may also enter the folder.
mode_t FolderMode(mode_t file) {
  return (file & 0666U) | ((file & 0444U) >> 2U);
}

class Appended final : public GrowingFile {
 public:
  Appended(FileDescriptor file, std::string path)
      : file_(std::move(file)), path_(std::move(path)) {}

  void Add(std::string_view bytes) override { WriteAll(file_.Get(), bytes, path_); }

 private:
  FileDescriptor file_;
  std::string path_;
};

class Flock final : public FileLock {
 public:
  Flock(FileDescriptor file, bool kept) : file_(std::move(file)), kept_(kept) {}

  [[nodiscard]] bool IsKept() const override { return kept_; }

 private:
  FileDescriptor file_;
  bool kept_;
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
  const fs::path left = fs::weakly_canonical(Behind(Absolute(a)), error);
  const fs::path right = fs::weakly_canonical(Behind(Absolute(b)), error);
  return !error && left == right;
}

std::string PosixFiles::Identity(const std::string& path) const {
  struct stat status {};
  if (!Status(path, status)) return {};
  return std::to_string(status.st_dev) + "/" + std::to_string(status.st_ino);
}

std::optional<WallTime> PosixFiles::ChangedAt(const std::string& path) const {
  struct stat status {};
  if (!Status(path, status)) return std::nullopt;
  return LocalMoment(status.st_mtime);
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

bool PosixFiles::HasOtherNames(const std::string& path) const {
  struct stat status {};
  return Status(path, status) && S_ISREG(status.st_mode) && status.st_nlink > 1;
}

NameState PosixFiles::StateOf(const std::string& path) const {
  struct stat status {};
  if (IsCutShort(path) || ::lstat(path.c_str(), &status) != 0) return NameState::free;
  if (IsOwn(status)) return NameState::own;
  const bool anothers = S_ISREG(status.st_mode) && status.st_uid != ::geteuid();
  return anothers ? NameState::anothers : NameState::foreign;
}

std::string PosixFiles::NetworkOf(const std::string& path) const {
  struct statfs status {};
  if (::statfs(FolderOf(path).c_str(), &status) != 0) return {};
  return NetworkFileSystem(static_cast<std::uint32_t>(status.f_type));
}

void PosixFiles::ReplaceDurably(const std::string& source, const std::string& target) {
  const FileDescriptor file = OpenRegular(source);
  Successor successor(target);
  Replace(file, source, successor);
}

void PosixFiles::SaveDurably(const std::string& working, const std::string& target,
                             const std::string& like) {
  const HeldFolder folder(working);
  const FileDescriptor file = folder.Open(folder.Name(), O_RDONLY);
  if (!IsOwn(file)) throw FileError(working + ": it is no file of this user alone");
  Successor successor(target, PermissionsOf(like).value_or(kOwnerOnly));
  Replace(file, working, successor);
}

void PosixFiles::LayWorkingCopy(const std::string& source, const std::string& target) {
  if (IsSameFile(source, target)) throw FileError(target + ": the file would overwrite itself");
  const std::string bytes = ReadBounded(OpenRegular(source), source);
  const HeldFolder folder(target);
  folder.RemoveJournals(folder.Name());
  const FileDescriptor file = OpenWorkingFile(folder, target, O_WRONLY);
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
  if (IsCutShort(path)) Fail(path, ENOENT);
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  Check(file.IsValid(), path);
  return ReadBounded(file, path);
}

void PosixFiles::Rename(const std::string& from, const std::string& to) {
  if (IsCutShort(from) || IsCutShort(to)) Fail(from, ENOENT);
  if (Exists(from) && IsSameFile(from, to)) return;
  const HeldFolder source(from);
  const HeldFolder target(to, from);
  target.RemoveJournals(target.Name());
  if (source.Rename(source.Name(), target, target.Name())) return;
  SaveDurably(from, to, from);
  Remove(from);
}

void PosixFiles::Remove(const std::string& path) {
  if (IsCutShort(path)) Fail(path, ENOENT);
  struct stat status {};
  if (!Status(FolderOf(path), status)) return;
  const HeldFolder folder(path);
  folder.RemoveJournals(folder.Name());
  folder.Remove(folder.Name());
}

void PosixFiles::MakeDirectories(const std::string& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) Fail(directory, error.value());
}

void PosixFiles::MakeOwnFolder(const std::string& folder, const std::string& like) {
  struct stat file {};
  const bool known = Status(like, file);
  const HeldFolder parent(folder);
  parent.MakeFolder(parent.Name(), known ? FolderMode(file.st_mode) : 0700);
  struct stat status {};
  if (!parent.Status(parent.Name(), status) || !S_ISDIR(status.st_mode)) {
    throw FileError(folder + ": a link or a file lies in the place of the folder");
  }
  if (status.st_uid != ::geteuid() && !(known && status.st_uid == file.st_uid)) {
    throw FileError(folder + ": it is another user's folder");
  }
}

std::vector<std::string> PosixFiles::NamesIn(const std::string& folder) const {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.symlink_status(error).type() == fs::file_type::regular) {
      names.push_back(entry.path().filename().string());
    }
  }
  std::ranges::sort(names);
  return names;
}

std::unique_ptr<GrowingFile> PosixFiles::Begin(const std::string& path, const std::string& like) {
  const HeldFolder folder(path);
  const mode_t mode = PermissionsOf(like).value_or(kOwnerOnly) & 0666U;
  return std::make_unique<Appended>(
      folder.Open(folder.Name(), O_WRONLY | O_APPEND | O_CREAT | O_EXCL, mode), path);
}

std::unique_ptr<GrowingFile> PosixFiles::Continue(const std::string& path,
                                                  const std::string& like) {
  const HeldFolder folder(path);
  const mode_t mode = PermissionsOf(like).value_or(kOwnerOnly) & 0666U;
  FileDescriptor file = folder.Open(folder.Name(), O_RDWR | O_APPEND | O_CREAT, mode);
  if (!IsOwn(file)) throw FileError(path + ": it is no file of this user alone");
  const off_t end = ::lseek(file.Get(), 0, SEEK_END);
  char last = '\n';
  if (end > 0) Check(::pread(file.Get(), &last, 1, end - 1) == 1, path);
  if (last != '\n') WriteAll(file.Get(), "\n", path);
  return std::make_unique<Appended>(std::move(file), path);
}

std::size_t PosixFiles::SizeOf(const std::string& path) const {
  struct stat status {};
  return Status(path, status) && S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size)
                                                         : 0;
}

void PosixFiles::WriteWhole(const std::string& path, const std::string& bytes) {
  const HeldFolder folder(path);
  std::string name;
  const FileDescriptor file = folder.MakeUnguessable(folder.Name(), kReadByAll, name);
  try {
    WriteAll(file.Get(), bytes, path);
    (void)folder.Rename(name, folder, folder.Name());
  } catch (const FileError&) {
    folder.Remove(name);
    throw;
  }
}

std::string PosixFiles::ReadSecret(const std::string& path) const {
  const FileDescriptor file = OpenRegular(path);
  struct stat status {};
  Check(::fstat(file.Get(), &status) == 0, path);
  if ((status.st_mode & 0077U) != 0) {
    throw FileError(path + ": others may read it.  Take that from them: chmod 600");
  }
  return ReadBounded(file, path);
}

void PosixFiles::ReadLines(const std::string& path,
                           const std::function<bool(std::string_view)>& take) const {
  const FileDescriptor file = OpenRegular(path);
  WholeLines lines(path, take);
  (void)ReadPieces(file, path, [&](std::string_view piece) { return lines.Add(piece); });
}

void PosixFiles::ChangeDirectory(const std::string& directory) {
  Check(!IsCutShort(directory) && ::chdir(directory.c_str()) == 0, directory);
}

std::unique_ptr<FileLock> PosixFiles::Lock(const std::string& path) {
  const HeldFolder folder(path);
  FileDescriptor file = OpenWorkingFile(folder, path, O_RDWR);
  if (!TakeLock(file.Get(), path)) return nullptr;
  // Whoever had it may have removed it between the opening and the lock.
  if (!folder.IsNamed(file, folder.Name())) return Lock(path);
  const FileDescriptor second = folder.Open(folder.Name(), O_RDWR);
  const bool kept = !TakeLock(second.Get(), path);
  return std::make_unique<Flock>(std::move(file), kept);
}

std::unique_ptr<FileLock> PosixFiles::LockPresent(const std::string& path) {
  if (IsCutShort(path)) Fail(path, ENOENT);
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  int result = -1;
  do {
    result = file.IsValid() ? ::flock(file.Get(), LOCK_EX | LOCK_NB) : -1;
  } while (result != 0 && file.IsValid() && errno == EINTR);
  if (result != 0 && file.IsValid() && errno == EWOULDBLOCK) return nullptr;
  return std::make_unique<Flock>(std::move(file), result == 0);
}

std::string NetworkFileSystem(std::uint32_t type) {
  constexpr std::pair<std::uint32_t, const char*> kNames[] = {
      {0x6969, "NFS"},      {0x517B, "SMB"},     {0xFF534D42, "SMB"}, {0xFE534D42, "SMB"},
      {0x73757245, "Coda"}, {0x5346414F, "AFS"}, {0x01021997, "9P"},  {0x00C36400, "Ceph"}};
  for (const auto& [number, name] : kNames) {
    if (number == type) return name;
  }
  return {};
}

}  // namespace velmoor::posix
