#include "Limits.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <stdexcept>

#include "BenchMain.h"
#include "Child.h"
#include "Figure.h"
#include "Timing.h"
#include "platform/World.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFiles.h"
#include "platform/sqlcipher/KeyRing.h"
#include "project/data/Schema.h"

namespace velmoor::bench {
namespace {

void Check(bool done, const std::string& path) {
  if (!done) throw std::runtime_error(path + ": " + std::strerror(errno));
}

constexpr const char* kDerived = "key derived in: ";

}  // namespace

double FlushSeconds(const std::filesystem::path& folder, const std::string& model) {
  constexpr int kRuns = 21;
  const std::string bytes = posix::PosixFiles().ReadAll(model);
  const std::string written = folder / "flushed.new";
  const std::string target = folder / "flushed";
  return MedianOf(Times(kRuns, [&] {
    {
      const posix::FileDescriptor file(open(written.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644));
      Check(write(file.Get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            written);
      Check(fsync(file.Get()) == 0, written);
    }
    Check(std::rename(written.c_str(), target.c_str()) == 0, target);
    const posix::FileDescriptor directory(open(folder.c_str(), O_RDONLY | O_DIRECTORY));
    Check(fsync(directory.Get()) == 0, folder);
  }));
}

double KeySeconds() {
  constexpr int kRuns = 7;
  std::vector<double> times;
  for (int i = 0; i < kRuns; ++i) {
    Child child(ProgramBeside("velmoor-bench"), {kKeyWord});
    times.push_back(child.WaitForNumber(kDerived));
    child.WaitForSuccess();
  }
  return MedianOf(times);
}

int DeriveKey() {
  const Stopwatch watch;
  sqlcipher::KeyRing keys;
  (void)keys.KeyForFile(schema::kPassword, sqlcipher::KeyRing::RandomSalt());
  std::cerr << kDerived << watch.Seconds() << std::endl;
  return 0;
}

double MedianOf(std::vector<double> times) {
  return Figure{.what = {}, .unit = kSeconds, .samples = std::move(times), .goal = {}, .limit = {}}
      .Median();
}

}  // namespace velmoor::bench
