// random_walk: walks at random through the whole program without a screen, and examines files,
// windows and amplifier after each step. A walk that fails is made as short as it gets and printed;
// the lines of its steps in a file can be replayed. Walk N of a run is the first of `--seed` plus
// N. Exit status 1 where anything did not hold.

#include <chrono>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "BenchMain.h"
#include "ProgramNumbers.h"
#include "random_walk/Generator.h"
#include "random_walk/MachineTrials.h"
#include "random_walk/Shrink.h"
#include "random_walk/TextTrials.h"

namespace velmoor {
namespace {

struct Options {
  std::uint64_t seed = 1;
  int walks = 10000;
  int steps = 60;
  int machines = 0;
  int texts = 0;
  std::set<std::string> ignored;
  std::string replay;
};

std::set<std::string> Words(const std::string& list) {
  std::set<std::string> words;
  std::istringstream text(list);
  for (std::string word; std::getline(text, word, ',');) words.insert(word);
  return words;
}

const ProgramTable& WalkTable() {
  static const ProgramTable kTable{
      .name = "random_walk",
      .about = "walks at random through the whole program and examines what it holds",
      .options = {{"walks", "how many; 10000 unless given", {"N"}},
                  {"steps", "how long each walk is; 60 unless given", {"N"}},
                  bench::kSeed,
                  {"ignore", "kinds of violations to pass over", {"KIND,..."}},
                  {"replay", "walk the steps of a file", {"FILE", ValueEntry::Kind::file}},
                  {"machines", "enter random machines instead of walking", {"N"}},
                  {"texts", "turn random projects into text and back instead of walking", {"N"}},
                  bench::kFolder},
      .notes = "Exit status: 0 everything held, 1 something did not, 2 wrong usage.\n"};
  return kTable;
}

Options Read(const CommandLine& line) {
  const Options usual;
  return {.seed = static_cast<std::uint64_t>(bench::NumberOf(line, "seed", 1)),
          .walks = static_cast<int>(bench::NumberOf(line, "walks", usual.walks)),
          .steps = static_cast<int>(bench::NumberOf(line, "steps", usual.steps)),
          .machines = static_cast<int>(bench::NumberOf(line, "machines", usual.machines)),
          .texts = static_cast<int>(bench::NumberOf(line, "texts", usual.texts)),
          .ignored = Words(line.Value("ignore").value_or("")),
          .replay = line.Value("replay").value_or("")};
}

void Print(const std::vector<walk::Violation>& found) {
  for (const walk::Violation& each : found) {
    std::cout << "VIOLATION " << each.kind << ": " << each.text << "\n";
  }
}

int Replay(const Options& options, const std::string& folder) {
  std::ifstream file(options.replay);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file) throw std::runtime_error(options.replay + " cannot be read");
  const auto found = walk::Replay(folder + "/walk", walk::ParseSteps(text.str()), options.ignored);
  Print(found);
  std::cout << found.size() << " violations\n";
  return found.empty() ? 0 : 1;
}

void PrintShortest(const Options& options, const std::string& place, std::uint64_t seed,
                   const std::vector<walk::Step>& walked, const std::string& kind) {
  const auto shortest = walk::Shrink(place, walked, kind, options.ignored);
  std::cout << "# " << kind << ", seed " << seed << ", " << walked.size() << " steps\n"
            << walk::TextOf(shortest);
  Print(walk::Replay(place, shortest, options.ignored));
  std::cout << std::endl;
}

int RunWalks(const Options& options, const std::string& folder) {
  const auto start = std::chrono::steady_clock::now();
  const std::string place = folder + "/walk";
  std::map<std::string, int> kinds;
  int steps = 0;
  int failures = 0;
  std::chrono::duration<double> shrinking{};
  for (int i = 0; i < options.walks; ++i) {
    const std::uint64_t seed = options.seed + static_cast<std::uint64_t>(i);
    const walk::Walked walked = walk::WalkAtRandom(place, seed, options.steps, options.ignored);
    std::set<std::string> found;
    for (const walk::Violation& each : walked.found) found.insert(each.kind);
    steps += static_cast<int>(walked.steps.size());
    failures += found.empty() ? 0 : 1;
    const auto before = std::chrono::steady_clock::now();
    for (const std::string& kind : found) {
      // The first few of a kind tell what the others would.
      if (++kinds[kind] <= 3) PrintShortest(options, place, seed, walked.steps, kind);
    }
    shrinking += std::chrono::steady_clock::now() - before;
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start - shrinking;
  for (const auto& [kind, count] : kinds) std::cout << kind << ": " << count << " walks\n";
  std::cout << options.walks << " walks, " << failures << " failed; " << steps << " steps in "
            << taken.count() << " s, " << options.walks / taken.count() << " walks a second\n";
  return failures == 0 ? 0 : 1;
}

int Print(const walk::TrialReport& report, const char* where) {
  for (const std::string& fault : report.faults) std::cout << "FAULT: " << fault << "\n";
  std::cout << where << ": " << report.machines << " machines, " << report.valid
            << " valid, of which " << report.entered << " entered without fault; "
            << report.doubtful << " doubtful; " << report.faults.size() << " faults in "
            << report.seconds << " s\n";
  return report.faults.empty() ? 0 : 1;
}

int RunMachines(const Options& options, const std::string& folder) {
  const int console =
      Print(walk::RunConsoleTrials(folder, options.seed, options.machines), "By one command");
  const int window =
      Print(walk::RunWindowTrials(folder, options.seed, options.machines), "In the window");
  return console != 0 || window != 0 ? 1 : 0;
}

int RunTexts(const Options& options, const std::string& folder) {
  const walk::TrialReport report = walk::RunTextTrials(folder, options.seed, options.texts);
  for (const std::string& fault : report.faults) std::cout << "FAULT: " << fault << "\n";
  std::cout << report.machines << " projects, " << report.doubtful
            << " with values that nobody typed, " << report.entered << " came back whole in "
            << report.seconds << " s\n";
  return report.faults.empty() ? 0 : 1;
}

int Run(const CommandLine& line) {
  const Options options = Read(line);
  const bench::TemporaryFolder folder(line.Value("folder").value_or(""), "random-walk");
  if (options.machines > 0) return RunMachines(options, folder.Path());
  if (options.texts > 0) return RunTexts(options, folder.Path());
  if (!options.replay.empty()) return Replay(options, folder.Path());
  return RunWalks(options, folder.Path());
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::RunProgram(velmoor::WalkTable(), argc, argv, velmoor::Run);
}
