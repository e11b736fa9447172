#include "crash_campaign/CrashCampaign.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
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
  int longest;  // milliseconds after which it is killed at the latest
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

constexpr std::array<Work, 4> kWorks{{{"Save", 40, SaveOnce},
                                      {"Save As", 60, SaveAsOnce},
                                      {"commit", 30, CommitOnce},
                                      {"transfer", 250, TransferOnce}}};

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

[[noreturn]] void WorkUntilKilled(const Work& work, const std::string& folder, int ready) {
  try {
    const auto wiring = WireInProcess();
    Program program(wiring->Port(), folder, Begin::presentProject);
    int generation = GenerationOf(Program::Path(folder));
    if (write(ready, "r", 1) != 1) _exit(1);
    for (;;) work.once(program, folder, ++generation);
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
  }
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const bool known = name == "campaign.spj" || name == "other.spj" || name == "tempIdeInfo.mdb";
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

// False: it did not come to work.
bool KillOne(const Work& work, const std::string& folder, int microseconds) {
  std::array<int, 2> ready{};
  if (pipe(ready.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) WorkUntilKilled(work, folder, ready[1]);
  close(ready[1]);
  char sign = 0;
  const bool works = read(ready[0], &sign, 1) == 1 && sign == 'r';
  const timespec until{.tv_sec = 0, .tv_nsec = microseconds * 1000L};
  if (works) ppoll(nullptr, 0, &until, nullptr);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  close(ready[0]);
  return works && WIFSIGNALED(status);
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
  CrashReport report;
  std::mt19937_64 random(seed);
  MakeProject(folder);
  int last = 0;
  for (int i = 0; i < kills; ++i) {
    const Work& work = kWorks[static_cast<std::size_t>(i) % kWorks.size()];
    const auto moment = static_cast<int>(random() % static_cast<unsigned>(work.longest * 1000));
    const std::string what = std::string(work.name) + ", killed after " + NumberText(moment) +
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
    const auto generation = static_cast<int>(ParseWhole(found.substr(1)).value_or(-1));
    if (generation < last) report.violations.push_back(what + "an older project came back");
    ++(generation == last ? tally.old : tally.fresh);
    last = generation;
  }
  return report;
}

}  // namespace velmoor::campaign
