// random_walk [--walks N] [--steps N] [--seed N] [--ignore KIND,...] [--folder DIRECTORY]
// random_walk --replay FILE
// random_walk --machines N [--seed N]
//
// Walks at random through the whole program without a screen, and examines files, windows and
// amplifier after each step. A walk that fails is made as short as it gets and printed; the lines
// of its steps in a file can be replayed. Walk N of a run is the first of `--seed` plus N. With
// --machines random machines are entered instead, through velmoorctl and in the machine's window.
// Exit status 1 where anything did not hold.

#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "BenchMain.h"
#include "platform/Numbers.h"
#include "random_walk/Generator.h"
#include "random_walk/MachineTrials.h"
#include "random_walk/Shrink.h"

namespace velmoor {
namespace {

struct Options {
  std::uint64_t seed = 1;
  int walks = 10000;
  int steps = 60;
  int machines = 0;
  std::set<std::string> ignored;
  std::string replay;
  std::string folder;
};

std::set<std::string> Words(const std::string& list) {
  std::set<std::string> words;
  std::istringstream text(list);
  for (std::string word; std::getline(text, word, ',');) words.insert(word);
  return words;
}

Options Parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (++i == argc) throw std::invalid_argument(word + " what?");
    const auto number = static_cast<int>(ParseWhole(argv[i]).value_or(1));
    if (word == "--seed") options.seed = static_cast<std::uint64_t>(number);
    if (word == "--walks") options.walks = number;
    if (word == "--steps") options.steps = number;
    if (word == "--machines") options.machines = number;
    if (word == "--ignore") options.ignored = Words(argv[i]);
    if (word == "--replay") options.replay = argv[i];
    if (word == "--folder") options.folder = argv[i];
  }
  return options;
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

int Run(const Options& options, const std::string& folder) {
  if (options.machines > 0) return RunMachines(options, folder);
  if (!options.replay.empty()) return Replay(options, folder);
  return RunWalks(options, folder);
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  try {
    const velmoor::Options options = velmoor::Parse(argc, argv);
    const velmoor::bench::TemporaryFolder folder(options.folder, "random-walk");
    return velmoor::Run(options, folder.Path());
  } catch (const std::exception& error) {
    std::cerr << "random_walk: " << error.what() << "\n";
    return 2;
  }
}
