// fault_campaign [--seed N] [--faults N] [--pty] [--folder DIRECTORY] [--simulator PROGRAM]
// fault_campaign --writes STRIDE
//
// Harms the line in transfers of the whole program, examines program and amplifier after each
// fault, and prints what became of them. The same seed makes the same faults. Exit status 1 where
// anything was violated. Without --pty the amplifier runs in this process on a clock of its own;
// with it, velmoor-simulator runs on a pseudo-terminal, unpaced, and all time-outs of the program
// are divided by 50. With --writes every STRIDEth write of a download is met by each way to leave a
// write undone, and every one of an upload, a reset and a test run.

#include <exception>
#include <iostream>
#include <string>

#include "BenchMain.h"
#include "fault_campaign/Campaign.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

struct Options {
  std::uint64_t seed = 1;
  int faults = 10000;
  int stride = 0;  // 0: faults at random
  bool terminal = false;
  std::string folder;
  std::string simulator = bench::ProgramBeside("velmoor-simulator");
};

Options Parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--pty") {
      options.terminal = true;
      continue;
    }
    if (++i == argc) throw std::invalid_argument(word + " what?");
    const auto number = ParseWhole(argv[i]);
    if (word == "--seed") options.seed = static_cast<std::uint64_t>(number.value_or(1));
    if (word == "--faults") options.faults = static_cast<int>(number.value_or(10000));
    if (word == "--writes") options.stride = static_cast<int>(number.value_or(1));
    if (word == "--folder") options.folder = argv[i];
    if (word == "--simulator") options.simulator = argv[i];
  }
  return options;
}

int Run(const Options& options, const std::string& folder) {
  const auto wiring = options.terminal ? campaign::WireTerminal(options.simulator, folder)
                                       : campaign::WireInProcess();
  campaign::Campaign campaign(*wiring, folder, options.seed);
  if (options.stride > 0) {
    campaign.RunWrites(options.stride);
  } else {
    campaign.Run(options.faults);
  }
  campaign::Print(campaign.Result(), std::string("Fault campaign ") + wiring->Name() + ", seed " +
                                         std::to_string(options.seed));
  return campaign.Result().violations.empty() ? 0 : 1;
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  try {
    const velmoor::Options options = velmoor::Parse(argc, argv);
    const velmoor::bench::TemporaryFolder folder(options.folder, "fault-campaign");
    return velmoor::Run(options, folder.Path());
  } catch (const std::exception& error) {
    std::cerr << "fault_campaign: " << error.what() << "\n";
    return 2;
  }
}
