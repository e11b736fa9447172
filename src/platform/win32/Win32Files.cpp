#include "platform/win32/Win32Files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "platform/Bounds.h"
#include "platform/WholeLines.h"
#include "platform/win32/FileIdentity.h"
#include "platform/win32/Handle.h"
#include "platform/win32/Text.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Windows.h"

namespace velmoor::win32 {
namespace {

namespace fs = std::filesystem;

// Whoever reads a file keeps nobody from writing, renaming or removing it: what is read is known.
constexpr DWORD kWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::array<const char*, 3> kJournals = {"-journal", "-wal", "-shm"};

[[noreturn]] void Fail(const std::string& path, DWORD error = GetLastError()) {
  throw FileError(path + ": " + SystemText(error));
}

void Check(bool succeeded, const std::string& path) {
  if (!succeeded) Fail(path);
}

// A name with a zero character would reach the system cut short and so mean another file.
bool IsCutShort(const std::string& path) {
  return path.find('\0') != std::string::npos;
}

// Absolute, with "\" alone, and in the form that may be longer than 260 characters.
std::wstring SystemPath(const std::string& path) {
  if (IsCutShort(path)) Fail(path, ERROR_FILE_NOT_FOUND);
  std::error_code error;
  std::wstring absolute = fs::absolute(Wide(path), error).lexically_normal().make_preferred();
  if (error) absolute = Wide(path);
  const bool isLong = absolute.size() >= MAX_PATH && !absolute.starts_with(LR"(\\)");
  return isLong ? LR"(\\?\)" + absolute : absolute;
}

Handle OpenFile(const std::string& path, DWORD access, DWORD share, DWORD disposition,
                DWORD flags = FILE_ATTRIBUTE_NORMAL) {
  return Handle(
      CreateFileW(SystemPath(path).c_str(), access, share, nullptr, disposition, flags, nullptr));
}

// Of the file itself, or of the link that bears the name.
std::optional<BY_HANDLE_FILE_INFORMATION> About(const std::string& path, DWORD flags = 0) {
  if (IsCutShort(path)) return std::nullopt;
  const Handle file = OpenFile(path, FILE_READ_ATTRIBUTES, kWithAll, OPEN_EXISTING,
                               FILE_FLAG_BACKUP_SEMANTICS | flags);
  BY_HANDLE_FILE_INFORMATION about{};
  if (!file.IsValid() || GetFileInformationByHandle(file.Get(), &about) == 0) return std::nullopt;
  return about;
}

bool IsFolder(const BY_HANDLE_FILE_INFORMATION& about) {
  return (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Handle OpenRegular(const std::string& path) {
  const auto about = About(path);
  if (about && IsFolder(*about)) throw FileError(path + ": it is no regular file");
  Handle file = OpenFile(path, GENERIC_READ, kWithAll, OPEN_EXISTING);
  Check(file.IsValid(), path);
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) {
    throw FileError(path + ": it is no regular file");
  }
  return file;
}

// Hands the file's contents to `take`, piece by piece, until that gives false.
void ReadPieces(const Handle& file, const std::string& named,
                const std::function<bool(std::string_view)>& take) {
  std::array<char, 65536> buffer{};
  for (;;) {
    DWORD got = 0;
    Check(ReadFile(file.Get(), buffer.data(), buffer.size(), &got, nullptr) != 0, named);
    if (got == 0 || !take({buffer.data(), got})) return;
  }
}

void WriteAll(const Handle& file, std::string_view bytes, const std::string& named) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 20U));
    Check(WriteFile(file.Get(), bytes.data(), size, &written, nullptr) != 0, named);
    bytes.remove_prefix(written);
  }
}

void RemoveOne(const std::string& path) {
  if (DeleteFileW(SystemPath(path).c_str()) != 0) return;
  const DWORD error = GetLastError();
  if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) Fail(path, error);
}

// The engine would play a journal into whatever database lies beside it under its name.
void RemoveJournals(const std::string& path) {
  for (const char* const journal : kJournals) RemoveOne(path + journal);
}

// The file behind a link, whose name stays.
std::string BehindLink(const std::string& path) {
  std::error_code error;
  if (!fs::is_symlink(SystemPath(path), error)) return path;
  const fs::path behind = fs::weakly_canonical(SystemPath(path), error);
  return error ? path : Narrow(behind.wstring());
}

// Gives the open file a name, in the place of one of that name, even while others read that one.
// The system before Windows 10 1709, and some file systems, cannot: there it is an ordinary move.
bool TakeName(const Handle& file, const std::wstring& name) {
  constexpr DWORD kReplace = 1;          // FILE_RENAME_FLAG_REPLACE_IF_EXISTS
  constexpr DWORD kWhileOthersRead = 2;  // FILE_RENAME_FLAG_POSIX_SEMANTICS
  constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
  struct Rename {
    DWORD flags;
    HANDLE root;
    DWORD length;
    WCHAR name[1];
  };
  std::vector<unsigned char> buffer(sizeof(Rename) + name.size() * sizeof(WCHAR));
  auto* const rename = reinterpret_cast<Rename*>(buffer.data());
  rename->flags = kReplace | kWhileOthersRead;
  rename->root = nullptr;
  rename->length = static_cast<DWORD>(name.size() * sizeof(WCHAR));
  std::ranges::copy(name, rename->name);
  return SetFileInformationByHandle(file.Get(), kRenameInfoEx, rename,
                                    static_cast<DWORD>(buffer.size())) != 0;
}

// A file beside a target that takes the target's name when it is complete: until then the old file
// is there, whole, and behind it the new one.
class Successor {
 public:
  explicit Successor(const std::string& target)
      : named_(target), target_(BehindLink(target)), path_(NameBeside(target_, ".new")) {
    const auto present = About(target_);
    if (present && IsFolder(*present)) Fail(named_, ERROR_ACCESS_DENIED);
    if (present && (present->dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
      Fail(named_, ERROR_ACCESS_DENIED);
    }
    // Held against others: two processes that replace the same file are kept apart by it.
    file_ = OpenFile(path_, GENERIC_WRITE | DELETE, 0, CREATE_ALWAYS);
    Check(file_.IsValid(), named_);
  }
  Successor(const Successor&) = delete;
  Successor& operator=(const Successor&) = delete;
  ~Successor() {
    if (done_) return;
    file_.Reset();
    DeleteFileW(SystemPath(path_).c_str());
  }

  void Write(std::string_view bytes) { WriteAll(file_, bytes, named_); }

  void TakeOver(bool flushes) {
    if (flushes) Check(FlushFileBuffers(file_.Get()) != 0, named_);
    RemoveJournals(target_);
    const std::wstring target = SystemPath(target_);
    if (!TakeName(file_, target)) {
      file_.Reset();
      if (!Move(SystemPath(path_), target)) SetAside(target);
    }
    done_ = true;
  }

 private:
  static bool Move(const std::wstring& from, const std::wstring& to) {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  }

  // Where an open file can be renamed and not replaced: a crash between the two renames leaves both
  // files, the old one as ".NAME.old" and the new one as ".NAME.new".
  void SetAside(const std::wstring& target) const {
    const std::wstring old = SystemPath(NameBeside(target_, ".old"));
    DeleteFileW(old.c_str());
    Check(Move(target, old), named_);
    if (!Move(SystemPath(path_), target)) {
      const DWORD error = GetLastError();
      (void)Move(old, target);
      Fail(named_, error);
    }
    DeleteFileW(old.c_str());
  }

  static std::string NameBeside(const std::string& target, const char* ending) {
    const std::string folder = GetFileDirectory(target);
    const std::string name = "." + GetFileTitle(target) + ending;
    return folder.empty() ? name : JoinPath(folder, name);
  }

  std::string named_, target_, path_;
  Handle file_;
  bool done_ = false;
};

void Replace(const Handle& source, const std::string& named, const std::string& target) {
  Successor successor(target);
  ReadPieces(source, named, [&](std::string_view piece) {
    successor.Write(piece);
    return true;
  });
  successor.TakeOver(true);
}

std::string ReadBounded(const Handle& file, const std::string& path) {
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

class Appended final : public GrowingFile {
 public:
  Appended(Handle file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}
  void Add(std::string_view bytes) override { WriteAll(file_, bytes, path_); }

 private:
  Handle file_;
  std::string path_;
};

// Whatever else lies under a name of ours was put there by somebody.
void RefuseForeign(const Files& files, const std::string& path) {
  if (files.StateOf(path) != NameState::foreign) return;
  throw FileError(path + ": it is no file of this user alone");
}

// Locks here keep others from reading too, so one byte is locked that no file ever has.
bool TakeLock(const Handle& file) {
  OVERLAPPED place{};
  place.OffsetHigh = 0x7FFFFFFF;
  constexpr DWORD kHow = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  return LockFileEx(file.Get(), kHow, 0, 1, 0, &place) != 0;
}

class HeldLock final : public FileLock {
 public:
  HeldLock(Handle file, bool kept) : file_(std::move(file)), kept_(kept) {}
  [[nodiscard]] bool IsKept() const override { return kept_; }

 private:
  Handle file_;
  bool kept_;
};

}  // namespace

bool Win32Files::Exists(const std::string& path) const {
  const auto about = About(path);
  return about && !IsFolder(*about);
}

bool Win32Files::IsSameFile(const std::string& a, const std::string& b) const {
  const auto first = About(a);
  const auto second = About(b);
  if (first && second) return IdentityOf(*first) == IdentityOf(*second);
  if (first || second || IsCutShort(a) || IsCutShort(b)) return false;
  const std::wstring left = SystemPath(a);
  const std::wstring right = SystemPath(b);
  return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

std::string Win32Files::Identity(const std::string& path) const {
  const auto about = About(path);
  return about ? IdentityOf(*about) : std::string();
}

std::optional<WallTime> Win32Files::ChangedAt(const std::string& path) const {
  const auto about = About(path);
  if (!about) return std::nullopt;
  return LocalMoment(about->ftLastWriteTime);
}

bool Win32Files::IsWritableDirectory(const std::string& directory) const {
  const auto about = About(directory);
  if (!about || !IsFolder(*about)) return false;
  // Rights come from many places here: whether a file can be made is seen by making one.
  const std::string trial =
      JoinPath(directory, ".velmoor-" + std::to_string(GetCurrentProcessId()));
  return OpenFile(trial, GENERIC_WRITE | DELETE, 0, CREATE_NEW,
                  FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE)
      .IsValid();
}

std::string Win32Files::Absolute(const std::string& path) const {
  std::error_code error;
  const fs::path absolute = fs::absolute(Wide(path), error);
  return error ? path : Narrow(absolute.lexically_normal().make_preferred().wstring());
}

bool Win32Files::HasOtherNames(const std::string& path) const {
  const auto about = About(path);
  return about && !IsFolder(*about) && about->nNumberOfLinks > 1;
}

NameState Win32Files::StateOf(const std::string& path) const {
  const auto about = About(path, FILE_FLAG_OPEN_REPARSE_POINT);
  if (!about) return NameState::free;
  constexpr DWORD kOthers =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
  const bool own = (about->dwFileAttributes & kOthers) == 0 && about->nNumberOfLinks == 1;
  return own ? NameState::own : NameState::foreign;
}

std::string Win32Files::NetworkOf(const std::string& path) const {
  std::wstring root(MAX_PATH + 1, L'\0');
  const std::wstring place = SystemPath(path);
  const auto size = static_cast<DWORD>(root.size());
  if (GetVolumePathNameW(place.c_str(), root.data(), size) == 0) return {};
  return GetDriveTypeW(root.c_str()) == DRIVE_REMOTE ? "SMB" : std::string();
}

void Win32Files::ReplaceDurably(const std::string& source, const std::string& target) {
  Replace(OpenRegular(source), source, target);
}

void Win32Files::SaveDurably(const std::string& working, const std::string& target,
                             const std::string& /*like*/) {
  RefuseForeign(*this, working);
  Replace(OpenRegular(working), working, target);
}

void Win32Files::LayWorkingCopy(const std::string& source, const std::string& target) {
  if (IsSameFile(source, target)) throw FileError(target + ": the file would overwrite itself");
  const std::string bytes = ReadBounded(OpenRegular(source), source);
  RemoveJournals(target);
  RefuseForeign(*this, target);
  const Handle file = OpenFile(target, GENERIC_WRITE, kWithAll, OPEN_ALWAYS);
  Check(file.IsValid() && SetEndOfFile(file.Get()) != 0, target);
  WriteAll(file, bytes, target);
}

void Win32Files::WriteDurably(const std::string& target, const std::string& bytes) {
  Successor successor(target);
  successor.Write(bytes);
  successor.TakeOver(true);
}

std::string Win32Files::ReadAll(const std::string& path) const {
  return ReadBounded(OpenRegular(path), path);
}

void Win32Files::Rename(const std::string& from, const std::string& to) {
  if (Exists(from) && IsSameFile(from, to)) return;
  RemoveJournals(to);
  const std::wstring target = SystemPath(to);
  const Handle file = OpenFile(from, DELETE, kWithAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  if (file.IsValid() && TakeName(file, target)) return;
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH | MOVEFILE_COPY_ALLOWED;
  Check(MoveFileExW(SystemPath(from).c_str(), target.c_str(), kHow) != 0, from);
}

void Win32Files::Remove(const std::string& path) {
  RemoveJournals(path);
  RemoveOne(path);
}

void Win32Files::MakeDirectories(const std::string& directory) {
  std::error_code error;
  fs::create_directories(SystemPath(directory), error);
  if (error) Fail(directory, static_cast<DWORD>(error.value()));
}

void Win32Files::MakeOwnFolder(const std::string& folder, const std::string& /*like*/) {
  if (CreateDirectoryW(SystemPath(folder).c_str(), nullptr) != 0) return;
  if (GetLastError() != ERROR_ALREADY_EXISTS) Fail(folder);
  const auto about = About(folder, FILE_FLAG_OPEN_REPARSE_POINT);
  const bool link = about && (about->dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (!about || link || !IsFolder(*about)) {
    throw FileError(folder + ": a link or a file lies in the place of the folder");
  }
}

std::vector<std::string> Win32Files::NamesIn(const std::string& folder) const {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(SystemPath(folder), error)) {
    if (entry.symlink_status(error).type() == fs::file_type::regular) {
      names.push_back(Narrow(entry.path().filename().wstring()));
    }
  }
  std::ranges::sort(names);
  return names;
}

std::unique_ptr<GrowingFile> Win32Files::Begin(const std::string& path,
                                               const std::string& /*like*/) {
  Handle file = OpenFile(path, FILE_APPEND_DATA, kWithAll, CREATE_NEW);
  Check(file.IsValid(), path);
  return std::make_unique<Appended>(std::move(file), path);
}

std::unique_ptr<GrowingFile> Win32Files::Continue(const std::string& path,
                                                  const std::string& /*like*/) {
  RefuseForeign(*this, path);
  Handle file = OpenFile(path, GENERIC_READ | FILE_APPEND_DATA, kWithAll, OPEN_ALWAYS);
  Check(file.IsValid(), path);
  LARGE_INTEGER back{};
  back.QuadPart = -1;
  char last = '\n';
  DWORD got = 0;
  // An empty file has no last character to go to.
  if (SetFilePointerEx(file.Get(), back, nullptr, FILE_END) != 0) {
    Check(ReadFile(file.Get(), &last, 1, &got, nullptr) != 0, path);
  }
  if (last != '\n') WriteAll(file, "\n", path);
  return std::make_unique<Appended>(std::move(file), path);
}

std::size_t Win32Files::SizeOf(const std::string& path) const {
  const auto about = About(path);
  if (!about || IsFolder(*about)) return 0;
  return std::size_t{about->nFileSizeHigh} << 32U | about->nFileSizeLow;
}

void Win32Files::WriteWhole(const std::string& path, const std::string& bytes) {
  Successor successor(path);
  successor.Write(bytes);
  successor.TakeOver(false);
}

std::string Win32Files::ReadSecret(const std::string& path) const {
  throw FileError(path + ": passwords in files are not read on this system");
}

void Win32Files::ReadLines(const std::string& path,
                           const std::function<bool(std::string_view)>& take) const {
  WholeLines lines(path, take);
  ReadPieces(OpenRegular(path), path, [&](std::string_view piece) { return lines.Add(piece); });
}

void Win32Files::ChangeDirectory(const std::string& directory) {
  Check(SetCurrentDirectoryW(SystemPath(directory).c_str()) != 0, directory);
}

std::unique_ptr<FileLock> Win32Files::Lock(const std::string& path) {
  RefuseForeign(*this, path);
  Handle file = OpenFile(path, GENERIC_READ | GENERIC_WRITE, kWithAll, OPEN_ALWAYS);
  Check(file.IsValid(), path);
  if (!TakeLock(file)) {
    if (GetLastError() == ERROR_LOCK_VIOLATION) return nullptr;
    throw FileError(path +
                    ": the folder keeps no locks, so two programs could write the file at once."
                    " Work on a copy in a folder of this computer.");
  }
  BY_HANDLE_FILE_INFORMATION held{};
  const auto named = About(path);
  // Whoever had it may have removed it between the opening and the lock.
  if (!named || GetFileInformationByHandle(file.Get(), &held) == 0 ||
      IdentityOf(*named) != IdentityOf(held)) {
    return Lock(path);
  }
  const Handle second = OpenFile(path, GENERIC_READ | GENERIC_WRITE, kWithAll, OPEN_EXISTING);
  const bool kept = second.IsValid() && !TakeLock(second);
  return std::make_unique<HeldLock>(std::move(file), kept);
}

std::unique_ptr<FileLock> Win32Files::LockPresent(const std::string& path) {
  Handle file = OpenFile(path, GENERIC_READ, kWithAll, OPEN_EXISTING);
  const bool locked = file.IsValid() && TakeLock(file);
  if (file.IsValid() && !locked && GetLastError() == ERROR_LOCK_VIOLATION) return nullptr;
  return std::make_unique<HeldLock>(std::move(file), locked);
}

}  // namespace velmoor::win32
