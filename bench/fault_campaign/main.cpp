// fault_campaign: harms the line in transfers of the whole program, examines program and amplifier
// after each fault, and prints what became of them. The same seed makes the same faults. Exit
// status 1 where anything was violated.

#include <string>

#include "BenchMain.h"
#include "ProgramNumbers.h"
#include "fault_campaign/Campaign.h"

namespace velmoor::campaign {
namespace {

const ProgramTable& FaultTable() {
  static const ProgramTable kTable{
      .name = "fault_campaign",
      .about = "harms the line in transfers, and examines program and amplifier after each fault",
      .options =
          {bench::kSeed,
           {"faults", "how many; 10000 unless given", {"N"}},
           {"writes",
            "in place of random faults: meet every Nth write of a whole download and upload, and "
            "every one of a reset and a test run, with each way to leave a write undone",
            {"N"}},
           {"pty",
            "velmoor-simulator on a pseudo-terminal, unpaced, and all time-outs of the program "
            "divided by 5; else the amplifier runs in this process on a clock of its own"},
           bench::kFolder,
           {"simulator",
            "the program to be started for --pty; that beside this one unless given",
            {"PROGRAM", ValueEntry::Kind::file}}},
      .notes = "Exit status: 0 nothing was violated, 1 something was, 2 wrong usage.\n"};
  return kTable;
}

int Run(const CommandLine& line) {
  const auto seed = static_cast<std::uint64_t>(bench::NumberOf(line, "seed", 1));
  const auto faults = static_cast<int>(bench::NumberOf(line, "faults", 10000));
  const bench::TemporaryFolder folder(line.Value("folder").value_or(""), "fault-campaign");
  const std::string simulator =
      line.Value("simulator").value_or(bench::ProgramBeside("velmoor-simulator"));
  const auto wiring = line.Has("pty") ? WireTerminal(simulator, folder.Path()) : WireInProcess();
  Campaign campaign(*wiring, folder.Path(), seed);
  const auto stride = static_cast<int>(bench::NumberOf(line, "writes", 0));
  if (stride > 0) {
    campaign.RunWrites(stride);
  } else {
    campaign.Run(faults);
  }
  Print(campaign.Result(),
        std::string("Fault campaign ") + wiring->Name() + ", seed " + std::to_string(seed));
  return campaign.Result().violations.empty() ? kDone : kFailed;
}

}  // namespace
}  // namespace velmoor::campaign

int main(int argc, char** argv) {
  return velmoor::RunProgram(velmoor::campaign::FaultTable(), argc, argv, velmoor::campaign::Run);
}
