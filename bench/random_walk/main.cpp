// random_walk --machines N [--seed N] [--folder DIRECTORY]
//
// Enters random machines through velmoorctl's commands and through the machine's window, and judges
// what became of each. Exit status 1 where anything was wrong.

#include <exception>
#include <iostream>
#include <string>

#include "BenchMain.h"
#include "platform/Numbers.h"
#include "random_walk/MachineTrials.h"

namespace velmoor {
namespace {

struct Options {
  std::uint64_t seed = 1;
  int machines = 3000;
  std::string folder;
};

Options Parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (++i == argc) throw std::invalid_argument(word + " what?");
    const auto number = ParseWhole(argv[i]);
    if (word == "--seed") options.seed = static_cast<std::uint64_t>(number.value_or(1));
    if (word == "--machines") options.machines = static_cast<int>(number.value_or(3000));
    if (word == "--folder") options.folder = argv[i];
  }
  return options;
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

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  try {
    const velmoor::Options options = velmoor::Parse(argc, argv);
    const velmoor::bench::TemporaryFolder folder(options.folder, "random-walk");
    return velmoor::RunMachines(options, folder.Path());
  } catch (const std::exception& error) {
    std::cerr << "random_walk: " << error.what() << "\n";
    return 2;
  }
}
