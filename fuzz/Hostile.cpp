// Opens hostile projects as velmoorctl does: checks, shows, edits and saves each of them.
//
//   fuzz_hostile COUNT [FIRST]
//
// Each must be refused with a reason and stay as it is, or be worked on: nothing of it changes but
// what was asked for, or told. No command takes 2 s of the processor's time, and the process no 100
// MB beyond its beginning. A failure names the number of the project, which makes it again.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Folder.h"
#include "HostileProject.h"
#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "platform/cli/RunProgram.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/posix/PosixFiles.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "project/data/CatalogueLibrary.h"
#include "project/data/Schema.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"

namespace velmoor::fuzz {
namespace {

constexpr std::chrono::milliseconds kLimit{2000};
constexpr unsigned kHangSeconds = 300;  // then the process is ended, and its last line tells where
// An address sanitizer keeps books of every byte, and what was freed for a while.
#ifdef __SANITIZE_ADDRESS__
constexpr long kMostMegabytes = 1000;
#else
constexpr long kMostMegabytes = 100;
#endif

// Table, key of the record and column, with the text.
using Contents = std::map<std::string, std::string>;

std::string Read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Of a file of any size, in little memory: FNV-1a.
std::uint64_t Digest(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::uint64_t digest = 14695981039346656037U;
  std::array<char, 65536> piece{};
  while (file.read(piece.data(), piece.size()) || file.gcount() > 0) {
    for (std::streamsize i = 0; i < file.gcount(); ++i) {
      digest ^= static_cast<unsigned char>(piece[static_cast<std::size_t>(i)]);
      digest *= 1099511628211U;
    }
  }
  return digest;
}

// The processor's time of this process: other programs make none of it.
std::chrono::milliseconds Worked() {
  constexpr std::int64_t kNanoseconds = 1'000'000;
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::milliseconds(now.tv_nsec / kNanoseconds);
}

// The resident memory now.
long Megabytes() {
  long pages = 0;
  std::ifstream statm("/proc/self/statm");
  statm >> pages >> pages;
  return pages * sysconf(_SC_PAGESIZE) / (1024 * 1024);
}

class Trial {
 public:
  Trial() : maker_(JoinPath(VELMOOR_CATALOGUE_DIRECTORY, "Velmoor.spt")), port_(line_) {
    world_.world.files = &files_;
    world_.world.databases = &databases_;
    world_.world.catalogue = &catalogue_;
    world_.world.rx900Utils = &utils_;
    world_.world.appDirectory = VELMOOR_CATALOGUE_DIRECTORY;
    world_.world.catalogueCopyDirectory = folder_.path;
    table_ = folder_.path + "/jog.csv";
    std::ofstream(table_) << "jog,speed\n0,10\n";
    Make(1);
    (void)Run({"check", path_});
    beginning_ = Megabytes();
  }

  // Nothing: all was as it must be.
  std::string Look(std::uint32_t number) {
    Make(number);
    databases_.Release(path_);
    const std::uint64_t before = Digest(path_);
    faults_.clear();
    const int checked = Run({"check", path_});
    bool opened = err_.str().find("cannot be opened.") == std::string::npos;
    Require(checked == 0 || checked == 1, "check ends with its status");
    for (const char* const what : {"index", "zone", "jog", "system", "parameters"}) {
      const bool shown = Run({"show", path_, what}) == 0;
      Require(shown == opened || std::string(what) == "system", "what opens is shown");
    }
    Require(Digest(path_) == before, "showing changes nothing");
    if (opened) {
      Edit({"set", path_, "Pn100=77"}, {"tblParameters/Pn100/"});
      Edit({"import", path_, "jog", table_}, {"tblJog/0/"});
      ++worked_;
    } else {
      Require(!err_.str().empty(), "a refusal has a reason");
      Require(Run({"set", path_, "Pn100=77"}) != 0, "what does not open is not edited");
      Require(Digest(path_) == before, "a refused file stays");
    }
    Require(access((folder_.path + "/line1.tmp").c_str(), F_OK) != 0, "no working file is left");
    const long grown = Megabytes() - beginning_;
    largest_ = std::max(largest_, grown);
    Require(grown < kMostMegabytes, "the memory has a bound");
    return faults_;
  }

  [[nodiscard]] const std::string& Made() const { return made_; }
  [[nodiscard]] std::string Figures() const {
    return NumberText(worked_) + " opened, the slowest command " + NumberText(slowest_.count()) +
           " ms, memory grown by " + NumberText(static_cast<std::int64_t>(largest_)) +
           " MB at most";
  }

 private:
  // In a process of its own: what the making takes is not the program's. The engine, which the
  // maker lets do everything, may fall over what it makes, by a signal or ended by a sanitizer, or
  // never end with it: then the file is as far as it came, journal and all.
  void Make(std::uint32_t number) {
    const std::string note = folder_.path + "/made";
    unlink((path_ + "-journal").c_str());
    const pid_t child = fork();
    if (child == 0) {
      constexpr rlimit kTime{5, 5};  // s
      constexpr rlimit kSize{200'000'000, 200'000'000};
      setrlimit(RLIMIT_CPU, &kTime);
      setrlimit(RLIMIT_FSIZE, &kSize);
      std::ofstream(note) << maker_.Make(path_, number);
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    made_ = status == 0 ? Read(note) : "half made";
  }

  void Require(bool holds, const std::string& what) {
    if (!holds) faults_ += "  broken: " + what + "\n  " + err_.str() + "\n";
  }

  int Run(const std::vector<std::string>& words) {
    out_.str("");
    err_.str("");
    ConsoleBoxes boxes(err_);
    world_.world.boxes = &boxes;
    const std::chrono::milliseconds begin = Worked();
    const int status = RunProgram(ConsoleTable(), words, out_, err_, [&](const CommandLine& line) {
      return RunCommand(line, {out_, err_, boxes, port_, [](SerialPort&, const std::string&) {},
                               nullptr, [] { return false; }});
    });
    const std::chrono::milliseconds took = Worked() - begin;
    slowest_ = std::max(slowest_, took);
    Require(took < kLimit, words.front() + " ends in time");
    world_.world.boxes = &world_.boxes;
    return status;
  }

  // An edit that is done changes those fields and what the user is told of; one that is not changes
  // nothing.
  void Edit(const std::vector<std::string>& words, const std::vector<std::string>& asked) {
    const std::uint64_t bytes = Digest(path_);
    const Contents before = ContentsNow();
    const bool done = Run(words) == 0;
    if (!done) {
      Require(Digest(path_) == bytes, words.front() + " that failed changes nothing");
      return;
    }
    const Contents after = ContentsNow();
    const std::string told = err_.str();
    std::set<std::string> places;
    for (const auto& [place, text] : before) places.insert(place);
    for (const auto& [place, text] : after) places.insert(place);
    for (const std::string& place : places) {
      const auto was = before.find(place);
      const auto is = after.find(place);
      const bool same = was != before.end() && is != after.end() && was->second == is->second;
      const bool laid = was == before.end() && told.find("lacked records") != std::string::npos;
      const bool format = place.starts_with("tblMisc/format/");
      const bool wanted = place.starts_with(asked.front());
      Require(same || laid || format || wanted, words.front() + " changed " + place);
    }
  }

  Contents ContentsNow() {
    Contents contents;
    try {
      const auto database = OpenForReading(path_);
      for (const schema::ProjectTable& table : schema::ProjectTables()) {
        const auto records = database->OpenTable(table.definition.name);
        for (; !records->AtEnd(); records->MoveNext()) {
          const std::string record = table.definition.name + "/" + records->Text(table.key) + "/";
          for (const ColumnDefinition& column : table.definition.columns) {
            contents[record + column.name] = records->Text(column.name);
          }
        }
      }
    } catch (const DatabaseError& error) {
      Require(false, std::string("what was worked on can be read: ") + error.what());
    }
    databases_.Release(path_);
    return contents;
  }

  Folder folder_{"hostile"};
  const std::string path_ = folder_.path + "/line1.spj";
  std::string table_;
  HostileMaker maker_;
  SimulatedLine line_;
  InProcessPort port_;
  StandardRx900Utils utils_;
  posix::PosixFiles files_;
  sqlcipher::SqlcipherDatabases databases_;
  CatalogueLibrary catalogue_;
  headless::HeadlessWorld world_;
  std::ostringstream out_, err_;
  std::string made_, faults_;
  std::chrono::milliseconds slowest_{0};
  long beginning_ = 0;
  long largest_ = 0;
  int worked_ = 0;
};

}  // namespace
}  // namespace velmoor::fuzz

int main(int argc, char** argv) {
  using namespace velmoor;
  const auto count = ParseWhole(argc > 1 ? argv[1] : "200");
  const auto first = ParseWhole(argc > 2 ? argv[2] : "1");
  if (!count || !first) return 2;
  fuzz::Trial trial;
  int failed = 0;
  for (std::int64_t i = 0; i < *count; ++i) {
    const auto number = static_cast<std::uint32_t>(*first + i);
    // A project that ends the process is named by the last line.
    if (i % 100 == 0) std::cout << number << " ...\n" << std::flush;
    alarm(fuzz::kHangSeconds);
    const std::string faults = trial.Look(number);
    if (faults.empty()) continue;
    ++failed;
    std::cout << number << ": " << trial.Made().substr(0, 1000) << "\n" << faults << std::flush;
  }
  alarm(0);
  std::cout << *count << " hostile projects, " << failed << " broke something; " << trial.Figures()
            << "\n";
  return failed == 0 ? 0 : 1;
}
