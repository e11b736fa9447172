// A file beside a target that takes the target's name when it is complete: until then the old file
// is there, whole, and behind it the new one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/HeldFolder.h"

namespace velmoor::posix {

// Its name is always the same, so what a crash left is used up by the next one; a lock keeps two
// processes apart that replace the same target. Where something lies under it that is not ours,
// that stays, and the file has a name that nobody can foresee. Failures throw FileError and name
// the target.
class Successor {
 public:
  // A link keeps pointing, and its target is replaced. The new file has the permissions of the old
  // one, or those of any new file; with `most`, none beyond these.
  explicit Successor(const std::string& target, std::optional<mode_t> most = std::nullopt);
  Successor(const Successor&) = delete;
  Successor& operator=(const Successor&) = delete;
  ~Successor();

  void Write(std::string_view bytes);
  // Flushes, and takes the target's name; a journal beside the target goes first.
  void TakeOver();

 private:
  [[nodiscard]] std::optional<mode_t> ModeToKeep() const;
  [[nodiscard]] FileDescriptor OpenOwn(mode_t mode);

  std::string target_;
  HeldFolder folder_;
  std::string name_;
  FileDescriptor file_;
  bool done_ = false;
};

// The permissions of the file; nothing where there is none.
[[nodiscard]] std::optional<mode_t> PermissionsOf(const std::string& path);

// Writes all of it, or throws FileError that names `named`.
void WriteAll(int file, std::string_view bytes, const std::string& named);
// False: another process has it. Throws FileError where the file system has no locks.
[[nodiscard]] bool TakeLock(int file, const std::string& named);

}  // namespace velmoor::posix
