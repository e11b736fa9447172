#include "crash_campaign/CrashCampaign.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>

#include "fault_campaign/Kinds.h"
#include "fault_campaign/Program.h"
#include "fault_campaign/Truth.h"
#include "fault_campaign/Wiring.h"
#include "platform/Numbers.h"

namespace velmoor::campaign {
namespace {

namespace fs = std::filesystem;

struct Work {
  const char* name;
  void (*once)(Program& program, const std::string& folder, int generation);
};

// Every row of the three tables tells its generation.
void Fill(int generation) {
  clsHX7Project& project = Program::Project();
  const std::string n = NumberText(generation);
  for (int row = 1; row <= project.Position().RowsInArray(); ++row) {
    const std::array<std::string, 9> cells{"step" + NumberText(row),
                                           "I+" + n + ".000",
                                           "1.000",
                                           "-",
                                           "1.000",
                                           ":::::",
                                           "IT0",
                                           "1",
                                           "END"};
    for (std::size_t i = 0; i < cells.size(); ++i) {
      project.Position().SetText(row, static_cast<int>(i), cells[i]);
    }
  }
  for (int row = 1; row <= project.Zone().RowsInArray(); ++row) {
    project.Zone().SetText(row, 0, n + ".000");
    project.Zone().SetText(row, 1, NumberText(generation + 1) + ".000");
  }
  for (int row = 1; row <= project.Jog().RowsInArray(); ++row) {
    project.Jog().SetText(row, 0, n + ".000");
  }
  const bool stored = project.Position().ChangeAccepted() && project.Zone().ChangeAccepted() &&
                      project.Jog().ChangeAccepted();
  if (!stored) throw std::runtime_error("a commit fails");
}

void SaveOnce(Program& /*program*/, const std::string& /*folder*/, int generation) {
  Fill(generation);
  Program::Project().Save();
}

void SaveAsOnce(Program& /*program*/, const std::string& folder, int generation) {
  Fill(generation);
  Program::Project().SaveAs(folder + (generation % 2 == 0 ? "/campaign.spj" : "/other.spj"));
}

void CommitOnce(Program& /*program*/, const std::string& /*folder*/, int generation) {
  Fill(generation);
}

void TransferOnce(Program& program, const std::string& /*folder*/, int generation) {
  Fill(generation);
  program.Choose(generation % 2 == 0 ? "mnuToolsDownloadNew" : "mnuToolsDownloadAll");
  Program::Project().Save();
  program.Choose("mnuToolsUploadAll");
}

constexpr std::array<Work, 4> kWorks{{{"Save", SaveOnce},
                                      {"Save As", SaveAsOnce},
                                      {"commit", CommitOnce},
                                      {"transfer", TransferOnce}}};

// The generation of a file whose rows all tell the same one. Throws where they do not, and where
// the file is no project.
int GenerationOf(const std::string& path) {
  std::set<std::string> values;
  for (const FileRow& row : ReadRows(path)) {
    if (row.table == "tblParameters" || row.shown[0].empty()) continue;
    const std::string& shown = row.shown[0];
    values.insert(shown.substr(shown.find_first_of("0123456789")));
  }
  if (values.size() > 1)
    throw std::runtime_error(path + " mixes " + *values.begin() + " and others");
  if (values.empty()) return 0;
  return static_cast<int>(ParseFloat(*values.begin()).value_or(-1));
}

// ---- in the child processes

// Tells of its readiness by "r", of each work that is done by "d", of its failure by "x".
[[noreturn]] void WorkUntilKilled(const Work& work, const std::string& folder, int ready) {
  try {
    const auto wiring = WireInProcess();
    Program program(wiring->Port(), folder, Begin::presentProject);
    int generation = GenerationOf(Program::Path(folder));
    if (write(ready, "r", 1) != 1) _exit(1);
    for (;;) {
      work.once(program, folder, ++generation);
      if (write(ready, "d", 1) != 1) _exit(1);
    }
  } catch (const std::exception& error) {
    (void)!write(ready, "x", 1);
    _exit(1);
  }
}

// What is wrong with what a killed process has left; the generation of the project behind it.
std::string Look(const std::string& folder) {
  const auto wiring = WireInProcess();
  int generation = 0;
  {
    Program program(wiring->Port(), folder, Begin::presentProject);
    generation = GenerationOf(Program::Path(folder));
    if (fs::exists(folder + "/other.spj")) (void)GenerationOf(folder + "/other.spj");
    const std::vector<FileRow> rows = ReadRows(folder + "/campaign.tmp");
    const std::vector<std::string> wrong = Inconsistencies(Program::Project(), rows);
    if (!wrong.empty()) return "the project is inconsistent: " + wrong.front();
    if (program.user.failures > 0) return "the start told of " + program.user.texts.front();
    if (GenerationOf(folder + "/campaign.tmp") != generation) return "another working file";
    Program::Project().Save();
    if (GenerationOf(Program::Path(folder)) != generation) return "the next save fails";
    // What a killed Save As has left beside the other file is used up by the next one.
    Program::Project().SaveAs(folder + "/other.spj");
    Program::Project().SaveAs(Program::Path(folder));
    // What was not saved is kept, and opens. The campaign's edit is several commits, of which some
    // may be there.
    for (const fs::path& path : std::vector<fs::path>(fs::directory_iterator(folder), {})) {
      if (path.filename().string().find(".unsaved") == std::string::npos) continue;
      if (ReadRows(path.string()).empty()) return path.filename().string() + " is no project";
      fs::remove(path);
    }
  }
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const bool known = name == "campaign.spj" || name == "other.spj" || name == "tempIdeInfo.mdb" ||
                       name.ends_with(".history");
    if (!known) return name + " stays behind";
  }
  return "=" + std::to_string(generation);
}

std::string LookInChild(const std::string& folder) {
  std::array<int, 2> tell{};
  if (pipe(tell.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) {
    std::string found;
    try {
      found = Look(folder);
    } catch (const std::exception& error) {
      found = error.what();
    }
    (void)!write(tell[1], found.data(), found.size());
    _exit(0);
  }
  close(tell[1]);
  std::string found(2000, '\0');
  const ssize_t got = read(tell[0], found.data(), found.size());
  close(tell[0]);
  waitpid(child, nullptr, 0);
  found.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  return found.empty() ? "the next start dies" : found;
}

// The generation that a look has found, or -1.
int GenerationIn(const std::string& found) {
  if (!found.starts_with('=')) return -1;
  return static_cast<int>(ParseWhole(found.substr(1)).value_or(-1));
}

// Starts a worker and kills it behind `wait`, which may listen to it. False: it did not come to
// work, or failed.
bool KillBehind(const Work& work, const std::string& folder,
                const std::function<void(int ready)>& wait) {
  std::array<int, 2> ready{};
  if (pipe(ready.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) WorkUntilKilled(work, folder, ready[1]);
  close(ready[1]);
  char sign = 0;
  const bool works = read(ready[0], &sign, 1) == 1 && sign == 'r';
  if (works) wait(ready[0]);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  close(ready[0]);
  return works && WIFSIGNALED(status);
}

bool KillOne(const Work& work, const std::string& folder, std::chrono::microseconds moment) {
  return KillBehind(work, folder, [moment](int) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    const timespec until{.tv_sec = seconds.count(),
                         .tv_nsec = std::chrono::nanoseconds(moment - seconds).count()};
    ppoll(nullptr, 0, &until, nullptr);
  });
}

// How long the work takes here, under whatever load.
std::chrono::microseconds DurationOf(const Work& work, const std::string& folder) {
  std::chrono::microseconds duration{0};
  (void)KillBehind(work, folder, [&duration](int ready) {
    const auto start = std::chrono::steady_clock::now();
    char sign = 0;
    (void)!read(ready, &sign, 1);
    duration = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - start);
  });
  return duration;
}

void MakeProject(const std::string& folder) {
  const pid_t child = fork();
  if (child == 0) {
    {
      const auto wiring = WireInProcess();
      const Program program(wiring->Port(), folder);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error("no project can be made in " + folder);
}

}  // namespace

CrashReport RunCrashes(const std::string& folder, std::uint64_t seed, int kills) {
  constexpr int kDurations = 4;  // within which it is killed
  CrashReport report;
  std::mt19937_64 random(seed);
  MakeProject(folder);
  int last = 0;
  std::array<std::chrono::microseconds, kWorks.size()> longest{};
  for (std::size_t i = 0; i < kWorks.size(); ++i) {
    longest[i] = kDurations * std::max(DurationOf(kWorks[i], folder), std::chrono::microseconds(1));
    last = std::max(last, GenerationIn(LookInChild(folder)));
  }
  for (int i = 0; i < kills; ++i) {
    const std::size_t kind = static_cast<std::size_t>(i) % kWorks.size();
    const Work& work = kWorks[kind];
    const auto most = static_cast<std::uint64_t>(longest[kind].count());
    const std::chrono::microseconds moment(random() % most);
    const std::string what = std::string(work.name) + ", killed after " +
                             NumberText(static_cast<std::int64_t>(moment.count())) +
                             " microseconds (kill " + NumberText(i) + "): ";
    if (!KillOne(work, folder, moment)) report.violations.push_back(what + "it failed by itself");
    const std::string found = LookInChild(folder);
    CrashTally& tally = report.operations[work.name];
    ++tally.kills;
    if (!found.starts_with('=')) {
      report.violations.push_back(what + found);
      fs::remove(folder + "/campaign.spj");
      MakeProject(folder);
      last = 0;
      continue;
    }
    const int generation = GenerationIn(found);
    if (generation < last) report.violations.push_back(what + "an older project came back");
    ++(generation == last ? tally.old : tally.fresh);
    last = generation;
  }
  return report;
}

}  // namespace velmoor::campaign
