#include "platform/sqlcipher/OwnFilesAlone.h"

#include <fcntl.h>
#include <sqlcipher/sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace velmoor::sqlcipher {
namespace {

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

void WriteOwnFilesAlone() {
  sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
  if (vfs == nullptr || vfs->xSetSystemCall == nullptr) return;
  (void)vfs->xSetSystemCall(vfs, "open", reinterpret_cast<sqlite3_syscall_ptr>(OpenOwn));
}

}  // namespace velmoor::sqlcipher
