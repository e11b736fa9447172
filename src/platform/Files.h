// Port: files. Every operation that can lose a user's data is safe against a crash at any instant.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Events.h"

namespace velmoor {

// A refused file operation. what() names the file and the system's reason.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Holds a file against other processes until destroyed.
class FileLock {
 public:
  virtual ~FileLock() = default;
  // False: the folder's file system takes locks and does not keep them.
  [[nodiscard]] virtual bool IsKept() const = 0;
};

// A file that grows. Everything that was added is in the file at once, also where the program is
// killed, though not yet on the disk.
class GrowingFile {
 public:
  virtual ~GrowingFile() = default;
  // Throws FileError.
  virtual void Add(std::string_view bytes) = 0;
};

// What lies under a name: nothing; a regular file of this user that has no other name; a regular
// file of another user; a link, a pipe, a folder or the like, or a file that has a second name.
enum class NameState { free, own, anothers, foreign };

class Files {
 public:
  virtual ~Files() = default;

  // True when a file of that name exists. A name with an embedded zero character does not exist.
  [[nodiscard]] virtual bool Exists(const std::string& path) const = 0;
  // True when both names lead to one file (or would, where it does not exist yet).
  [[nodiscard]] virtual bool IsSameFile(const std::string& a, const std::string& b) const = 0;
  // Tells one file from another of the same name: it survives a rename and differs after a
  // replacement. Empty where there is no file.
  [[nodiscard]] virtual std::string Identity(const std::string& path) const = 0;
  // When its contents were written last, in local time; nothing where there is no file.
  [[nodiscard]] virtual std::optional<WallTime> ChangedAt(const std::string& path) const = 0;
  [[nodiscard]] virtual bool IsWritableDirectory(const std::string& directory) const = 0;
  // An absolute form of `path`, taken from the current directory.
  [[nodiscard]] virtual std::string Absolute(const std::string& path) const = 0;

  // The file is there under other names too: hard links, which a replacement parts.
  [[nodiscard]] virtual bool HasOtherNames(const std::string& path) const = 0;
  [[nodiscard]] virtual NameState StateOf(const std::string& path) const = 0;
  // The network's file system on which the file lies, "NFS"; empty: one of this computer.
  [[nodiscard]] virtual std::string NetworkOf(const std::string& path) const = 0;

  // Copies the contents (not the permissions) over `target` such that at any instant the old file
  // or the new one is there, whole and on the disk: temporary file beside the target, flush,
  // rename, flush of the directory. A symbolic link keeps pointing; its target is replaced. A
  // journal that lies beside the target is deleted first. The permissions are those of the old
  // file. Throws FileError, also for a target that is write-protected or no regular file; the
  // target is then the old one.
  virtual void ReplaceDurably(const std::string& source, const std::string& target) = 0;
  // The same for a working file, which must be this user's alone. The target has no permission
  // beyond those of `like`, and none but the owner's where there is no such file.
  virtual void SaveDurably(const std::string& working, const std::string& target,
                           const std::string& like) = 0;
  // Lays a disposable working copy, which its owner alone can read: deletes a journal left beside
  // `target`, then writes it in place. Throws FileError, also for a source that is no regular file
  // and for a target that is a link, a pipe, or another user's.
  virtual void LayWorkingCopy(const std::string& source, const std::string& target) = 0;
  // Writes `bytes` as ReplaceDurably does.
  virtual void WriteDurably(const std::string& target, const std::string& bytes) = 0;
  // Refuses a file that is larger than bounds::kFile.
  [[nodiscard]] virtual std::string ReadAll(const std::string& path) const = 0;
  // Renames, with copy and delete where the two lie on different file systems. Onto itself:
  // nothing.
  virtual void Rename(const std::string& from, const std::string& to) = 0;
  // Deletes the file and a journal beside it, if they exist.
  virtual void Remove(const std::string& path) = 0;
  virtual void MakeDirectories(const std::string& directory) = 0;

  // Makes a folder of the program's own beside the file `like`, open to whom that file is open. One
  // that is there stays. Throws FileError where a link or a file lies in its place, or a folder
  // that is neither this user's nor the file's owner's.
  virtual void MakeOwnFolder(const std::string& folder, const std::string& like) = 0;
  // The names of the regular files in a folder, sorted; none where there is no such folder.
  [[nodiscard]] virtual std::vector<std::string> NamesIn(const std::string& folder) const = 0;
  // Begins a new file, with the permissions of `like` at most. Throws FileError where the name is
  // taken.
  [[nodiscard]] virtual std::unique_ptr<GrowingFile> Begin(const std::string& path,
                                                           const std::string& like) = 0;
  // The same, or goes on with the file of that name that is there, behind a line end where its last
  // line has none. Throws FileError where it is no regular file of this user alone.
  [[nodiscard]] virtual std::unique_ptr<GrowingFile> Continue(const std::string& path,
                                                              const std::string& like) = 0;
  // Bytes of a file; 0 where there is none.
  [[nodiscard]] virtual std::size_t SizeOf(const std::string& path) const = 0;
  // Puts `bytes` in the place of the file, which all may read: whoever reads it finds the old one
  // or the new one, whole. It is not flushed to the disk. Throws FileError.
  virtual void WriteWhole(const std::string& path, const std::string& bytes) = 0;
  // The contents of a file that nobody but its owner may read or write. Throws FileError also where
  // others may.
  [[nodiscard]] virtual std::string ReadSecret(const std::string& path) const = 0;
  // Hands the lines of a file of any size to `take`, one by one and without their ends, until that
  // gives false. A last line without an end may be half of one, and is left out. Throws FileError,
  // also for a line beyond bounds::kLine and for no regular file.
  virtual void ReadLines(const std::string& path,
                         const std::function<bool(std::string_view)>& take) const = 0;

  virtual void ChangeDirectory(const std::string& directory) = 0;

  // Takes the file for this process, creating it empty where it does not exist; null when another
  // process holds it. Throws FileError when the file cannot be opened at all, or is a link, a pipe
  // or another user's.
  [[nodiscard]] virtual std::unique_ptr<FileLock> Lock(const std::string& path) = 0;
  // Takes a file that is there, whoever owns it, against others that take it so, by whatever name
  // or link they come; null when one of them holds it. Whoever cannot read it, or finds no locks on
  // its file system, keeps nobody off. A replacement of the file is another file.
  [[nodiscard]] virtual std::unique_ptr<FileLock> LockPresent(const std::string& path) = 0;
};

// Splitting of names at the last "/" or "\".
// The part behind the last separator; the whole name where there is none.
[[nodiscard]] std::string GetFileTitle(const std::string& fileName);
// The part before the last separator, without it; empty where there is none.
[[nodiscard]] std::string GetFileDirectory(const std::string& fileName);
[[nodiscard]] std::string JoinPath(const std::string& directory, const std::string& name);
// `text` without its last `count` characters; empty when it is shorter.
[[nodiscard]] std::string DropRight(const std::string& text, std::size_t count);

}  // namespace velmoor
