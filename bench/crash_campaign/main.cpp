// crash_campaign: kills the program in its saves, commits and transfers, and prints what was found
// afterwards. Exit status 1 where anything was lost, torn or left behind.

#include <iomanip>
#include <iostream>
#include <string>

#include "BenchMain.h"
#include "ProgramNumbers.h"
#include "crash_campaign/CrashCampaign.h"

namespace velmoor::campaign {
namespace {

const ProgramTable& CrashTable() {
  static const ProgramTable kTable{
      .name = "crash_campaign",
      .about = "kills the program in its saves, commits and transfers",
      .options = {bench::kSeed, {"kills", "how often; 500 unless given", {"N"}}, bench::kFolder},
      .notes = "Exit status: 0 nothing was lost, 1 something was, 2 wrong usage.\n"};
  return kTable;
}

int Run(const CommandLine& line) {
  const bench::TemporaryFolder folder(line.Value("folder").value_or(""), "crash-campaign");
  const auto report =
      RunCrashes(folder.Path(), static_cast<std::uint64_t>(bench::NumberOf(line, "seed", 1)),
                 static_cast<int>(bench::NumberOf(line, "kills", 500)));
  std::cout << "killed in      kills    old    new\n";
  for (const auto& [name, tally] : report.operations) {
    std::cout << std::left << std::setw(12) << name << std::right << std::setw(8) << tally.kills
              << std::setw(7) << tally.old << std::setw(7) << tally.fresh << "\n";
  }
  for (const std::string& text : report.violations) std::cout << "VIOLATION: " << text << "\n";
  std::cout << report.violations.size() << " violations\n";
  return report.violations.empty() ? kDone : kFailed;
}

}  // namespace
}  // namespace velmoor::campaign

int main(int argc, char** argv) {
  return velmoor::RunProgram(velmoor::campaign::CrashTable(), argc, argv, velmoor::campaign::Run);
}
