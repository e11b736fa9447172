// crash_campaign [KILLS [SEED [DIRECTORY]]]: kills the program in its saves, commits and transfers,
// 500 times unless told, and prints what was found afterwards. Exit status 1 where anything was
// lost, torn or left behind.

#include <exception>
#include <iomanip>
#include <iostream>
#include <string>

#include "BenchMain.h"
#include "crash_campaign/CrashCampaign.h"
#include "platform/Numbers.h"

int main(int argc, char** argv) {
  try {
    const auto number = [&](int at, std::int64_t otherwise) {
      return argc > at ? velmoor::ParseWhole(argv[at]).value_or(otherwise) : otherwise;
    };
    const velmoor::bench::TemporaryFolder folder(argc > 3 ? argv[3] : "", "crash-campaign");
    const auto report = velmoor::campaign::RunCrashes(
        folder.Path(), static_cast<std::uint64_t>(number(2, 1)), static_cast<int>(number(1, 500)));
    std::cout << "killed in      kills    old    new\n";
    for (const auto& [name, tally] : report.operations) {
      std::cout << std::left << std::setw(12) << name << std::right << std::setw(8) << tally.kills
                << std::setw(7) << tally.old << std::setw(7) << tally.fresh << "\n";
    }
    for (const std::string& text : report.violations) std::cout << "VIOLATION: " << text << "\n";
    std::cout << report.violations.size() << " violations\n";
    return report.violations.empty() ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "crash_campaign: " << error.what() << "\n";
    return 2;
  }
}
