// A folder that stays the same for as long as its files are worked on, whatever becomes of its
// path: they are opened, renamed and removed relative to its descriptor. No link within it is
// followed, and no pipe waited for.
#pragma once

#include <sys/stat.h>

#include <functional>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// The permissions of a new file that asks for these: without those that the process withholds.
[[nodiscard]] mode_t Masked(mode_t mode);
// A regular file of this user that has no other name. Whatever else lies under a name of ours was
// put there by somebody.
[[nodiscard]] bool IsOwn(const struct stat& status);
[[nodiscard]] bool IsOwn(const FileDescriptor& file);

// The folder of the path, "." where it names none.
[[nodiscard]] std::string FolderOf(const std::string& path);
// The file behind symbolic links, whether it exists or not; each link is shown to `onLink` first.
[[nodiscard]] std::string BehindLinks(const std::string& path,
                                      const std::function<void(const std::string&)>& onLink);

class HeldFolder {
 public:
  // The folder of `path`, whose failures name `named`. Throws FileError.
  HeldFolder(const std::string& path, std::string named);
  explicit HeldFolder(const std::string& path) : HeldFolder(path, path) {}

  // The last part of the path.
  [[nodiscard]] const std::string& Name() const { return name_; }

  // An invalid descriptor leaves the reason in errno.
  [[nodiscard]] FileDescriptor TryOpen(const std::string& name, int flags, mode_t mode = 0) const;
  // The same; throws FileError.
  [[nodiscard]] FileDescriptor Open(const std::string& name, int flags, mode_t mode = 0) const;
  // Of what lies under the name itself, a link for example. False: nothing does.
  [[nodiscard]] bool Status(const std::string& name, struct stat& status) const;
  // The name still leads to that file.
  [[nodiscard]] bool IsNamed(const FileDescriptor& file, const std::string& name) const;
  // A new file under `stem` and characters that nobody can foresee; `name` becomes that name.
  [[nodiscard]] FileDescriptor MakeUnguessable(const std::string& stem, mode_t mode,
                                               std::string& name) const;

  // A folder within; whatever lies under the name already stays. Throws FileError.
  void MakeFolder(const std::string& name, mode_t mode) const;
  // All throw FileError. A file that is not there counts as removed.
  void Remove(const std::string& name) const;
  void RemoveJournals(const std::string& name) const;
  // False: the other folder is of another file system.
  [[nodiscard]] bool Rename(const std::string& from, const HeldFolder& folder,
                            const std::string& to) const;
  // Makes the names that were given and taken last.
  void Sync() const;

 private:
  [[noreturn]] void Fail() const;

  std::string named_;
  std::string name_;
  FileDescriptor folder_;
};

}  // namespace velmoor::posix
