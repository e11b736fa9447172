// A loss of power at any step of a save. The system's calls of this program come by here first:
// each is carried out and written down, and a model of a disk that loses what was not flushed tells
// what a cut behind each of them may leave.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/posix/PosixFiles.h"
#include "support/TemporaryFolder.h"

namespace {

enum class Call { open, write, truncate, sync, rename, unlink };
struct Step {
  Call call;
  int file = -1;           // of open, write, truncate and sync
  std::string name{};      // of open, rename and unlink
  std::string to{};        // of rename
  std::string bytes{};     // of write
  bool directory = false;  // opened
};
std::vector<Step>* gSteps = nullptr;

void Note(Step step) {
  if (gSteps != nullptr) gSteps->push_back(std::move(step));
}

// The whole name of a file in a folder that is held open.
std::string Whole(int folder, const char* name) {
  if (folder == AT_FDCWD || *name == '/') return name;
  char path[4096] = {};
  const std::string link = "/proc/self/fd/" + std::to_string(folder);
  const ssize_t length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path, sizeof(path) - 1);
  return std::string(path, static_cast<size_t>(length > 0 ? length : 0)) + "/" + name;
}

int Opened(int folder, const char* name, int flags, unsigned mode) {
  const auto file = static_cast<int>(syscall(SYS_openat, folder, name, flags, mode));
  if (file >= 0) {
    Note({.call = Call::open,
          .file = file,
          .name = Whole(folder, name),
          .to = {},
          .bytes = {},
          .directory = (flags & O_DIRECTORY) != 0});
    if ((flags & O_TRUNC) != 0) Note({.call = Call::truncate, .file = file});
  }
  return file;
}

}  // namespace

extern "C" {

int open(const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
  va_end(rest);
  return Opened(AT_FDCWD, name, flags, mode);
}
int openat(int folder, const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
  va_end(rest);
  return Opened(folder, name, flags, mode);
}
ssize_t write(int file, const void* bytes, size_t count) {
  const ssize_t written = syscall(SYS_write, file, bytes, count);
  if (written > 0) {
    Note({.call = Call::write,
          .file = file,
          .name = {},
          .to = {},
          .bytes = std::string(static_cast<const char*>(bytes), static_cast<size_t>(written))});
  }
  return written;
}
int ftruncate(int file, off_t length) noexcept {
  Note({.call = Call::truncate, .file = file});
  return static_cast<int>(syscall(SYS_ftruncate, file, length));
}
int fsync(int file) {
  Note({.call = Call::sync, .file = file});
  return static_cast<int>(syscall(SYS_fsync, file));
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  const auto result = static_cast<int>(syscall(SYS_renameat, fromFolder, from, toFolder, to));
  if (result == 0) {
    Note({.call = Call::rename, .name = Whole(fromFolder, from), .to = Whole(toFolder, to)});
  }
  return result;
}
int unlinkat(int folder, const char* name, int flags) noexcept {
  const auto result = static_cast<int>(syscall(SYS_unlinkat, folder, name, flags));
  if (result == 0) Note({.call = Call::unlink, .name = Whole(folder, name)});
  return result;
}

}  // extern "C"

namespace velmoor::posix {
namespace {

// A disk with one directory. What is written, and which name leads to which file, is on it for
// certain only behind a flush of the file, or of the directory; before, it may or may not be.
class Disk {
 public:
  using Names = std::map<std::string, int>;  // to the number of a file

  void Put(const std::string& name, const std::string& bytes) {
    files_.push_back({bytes, bytes});
    names_[name] = static_cast<int>(files_.size()) - 1;
    flushed_ = names_;
  }
  void Do(const Step& step) {
    switch (step.call) {
      case Call::open:
        open_[step.file] = step.directory ? kDirectory : FileOf(step.name);
        break;
      case Call::write:
        if (File* const file = Opened(step.file)) file->bytes += step.bytes;
        break;
      case Call::truncate:
        if (File* const file = Opened(step.file)) file->bytes.clear();
        break;
      case Call::sync:
        if (File* const file = Opened(step.file)) file->flushed = file->bytes;
        if (open_[step.file] == kDirectory) {
          flushed_ = names_;
          pending_.clear();
        }
        break;
      case Call::rename:
        Change([step](Names& names) {
          if (const auto from = names.extract(step.name)) names[step.to] = from.mapped();
        });
        break;
      case Call::unlink:
        Change([step](Names& names) { names.erase(step.name); });
        break;
    }
  }
  // What may lie under the name after a cut now; "torn" for a file that was not flushed, "none".
  [[nodiscard]] std::set<std::string> AfterCut(const std::string& name) const {
    std::set<std::string> found;
    Names names = flushed_;
    found.insert(Contents(names, name));
    // The system may have written any number of the changes of names by itself.
    for (const auto& change : pending_) {
      change(names);
      found.insert(Contents(names, name));
    }
    return found;
  }

 private:
  static constexpr int kDirectory = -2;
  struct File {
    std::string bytes;
    std::string flushed;
  };
  int FileOf(const std::string& name) {
    if (!names_.contains(name)) {
      files_.push_back({});
      const int number = static_cast<int>(files_.size()) - 1;
      Change([name, number](Names& names) { names[name] = number; });
    }
    return names_.at(name);
  }
  void Change(const std::function<void(Names&)>& change) {
    change(names_);
    pending_.push_back(change);
  }
  File* Opened(int file) {
    const auto found = open_.find(file);
    const bool is = found != open_.end() && found->second >= 0;
    return is ? &files_[static_cast<std::size_t>(found->second)] : nullptr;
  }
  [[nodiscard]] std::string Contents(const Names& names, const std::string& name) const {
    const auto found = names.find(name);
    if (found == names.end()) return "none";
    const File& file = files_[static_cast<std::size_t>(found->second)];
    return file.bytes == file.flushed ? file.bytes : "torn";
  }

  std::vector<File> files_;
  Names names_;
  Names flushed_;
  std::vector<std::function<void(Names&)>> pending_;
  std::map<int, int> open_;
};

class PowerCut : public testing::Test {
 protected:
  PowerCut() {
    files.WriteDurably(source, "new");
    files.WriteDurably(target, "old");
  }
  ~PowerCut() override { gSteps = nullptr; }
  std::vector<Step> Record(const std::function<void()>& work) {
    std::vector<Step> steps;
    gSteps = &steps;
    work();
    gSteps = nullptr;
    return steps;
  }
  // What the target may be after a cut behind each step.
  std::vector<std::set<std::string>> Outcomes(const std::vector<Step>& steps) {
    Disk disk;
    disk.Put(source, "new");
    disk.Put(target, "old");
    std::vector<std::set<std::string>> outcomes;
    for (const Step& step : steps) {
      disk.Do(step);
      outcomes.push_back(disk.AfterCut(target));
    }
    return outcomes;
  }
  static bool IsSafe(const std::vector<std::set<std::string>>& outcomes) {
    for (const auto& outcome : outcomes) {
      for (const std::string& text : outcome) {
        if (text != "old" && text != "new") return false;
      }
    }
    return outcomes.back() == std::set<std::string>{"new"};
  }

  TemporaryFolder folder;
  PosixFiles files;
  std::string source = folder.At("line1.tmp");
  std::string target = folder.At("line1.spj");
};

TEST_F(PowerCut, ASaveIsTheOldOrTheNewFileAtEachStepAndTheNewOneAtItsEnd) {
  const auto steps = Record([this] { files.ReplaceDurably(source, target); });
  const auto outcomes = Outcomes(steps);
  EXPECT_EQ(outcomes.front(), std::set<std::string>{"old"});
  EXPECT_TRUE(IsSafe(outcomes));
  EXPECT_TRUE(IsSafe(Outcomes(Record([this] { files.WriteDurably(target, "new"); }))));
}

// The model would find a save that flushes too little, or that writes in place.
TEST_F(PowerCut, ASaveWithoutOneOfItsFlushesIsFound) {
  const auto steps = Record([this] { files.ReplaceDurably(source, target); });
  int flushes = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (steps[i].call != Call::sync) continue;
    ++flushes;
    auto fewer = steps;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_FALSE(IsSafe(Outcomes(fewer))) << "without flush " << flushes;
  }
  EXPECT_EQ(flushes, 2);
  EXPECT_FALSE(IsSafe(Outcomes(Record([this] { files.LayWorkingCopy(source, target); }))));
}

}  // namespace
}  // namespace velmoor::posix
