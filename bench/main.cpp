// velmoor-bench [--markdown] [--folder DIRECTORY] [SECTION...]: measures what a user waits for, and
// prints it beside its goal and its physical limit.
//
// Exit status: 0 everything was measured, 1 something could not be, 2 wrong usage. A goal that is
// missed is marked, and changes no status.
#include <algorithm>
#include <exception>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "BenchMain.h"
#include "Desktop.h"
#include "Limits.h"
#include "Workbench.h"
#include "platform/cli/RunProgram.h"

namespace velmoor::bench {
namespace {

struct Section {
  const char* name;
  const char* about;
  void (*measure)(Workbench& bench);
};

constexpr Section kSections[] = {
    {"link", "Exchanges of a command and its answer", MeasureLink},
    {"transfers", "Transfers; tables at 38400 bit/s", MeasureTransfers},
    {"online", "Live tools at 38400 bit/s", MeasureOnline},
    {"project", "Project files", MeasureProject},
    {"start", "Start of the programs", MeasureStart},
    {"windows", "Windows and edits", MeasureWindows},
    {"report", "The report of a full project", MeasureReport},
    {"rehearsal", "Rehearsal, and the same live", MeasureRehearsal},
    {"line", "Sixteen axes on one line, at 38400 bit/s", MeasureLine},
    {"memory", "Resident memory", MeasureMemory},
};

const ProgramTable& BenchTable() {
  using Kind = ValueEntry::Kind;
  static const ProgramTable kTable = [] {
    ProgramTable table{
        .name = "velmoor-bench",
        .about = "measures what a user of Velmoor waits for",
        .options =
            {{"markdown", "print the table as Markdown"},
             {"folder",
              "work on the disk where that lies; the system's for temporary files unless given",
              {"DIRECTORY", Kind::folder}}},
        .arguments = {{.value = {"SECTION", Kind::words}, .required = false, .many = true}},
        .notes = "Sections, all unless named:\n"};
    for (const Section& section : kSections) {
      table.arguments[0].value.words.emplace_back(section.name);
      std::string name = section.name;
      name.resize(std::max<std::size_t>(name.size() + 1, 12), ' ');
      table.notes += "  " + name + section.about + "\n";
    }
    table.notes += "\nExit status: 0 success, 1 something could not be measured, 2 wrong usage.\n";
    return table;
  }();
  return kTable;
}

// In the order of the table. Throws UsageError.
std::vector<Section> Chosen(const std::vector<std::string>& names) {
  const auto isNamed = [&names](const Section& section) {
    return names.empty() || std::ranges::find(names, section.name) != names.end();
  };
  for (const std::string& name : names) {
    if (std::ranges::find(kSections, name, &Section::name) == std::end(kSections)) {
      throw UsageError("'" + name + "' is no section");
    }
  }
  std::vector<Section> chosen;
  std::ranges::copy_if(kSections, std::back_inserter(chosen), isNamed);
  return chosen;
}

// False: something could not be measured, of which the user is told.
bool Measure(const Section& section, Workbench& bench) {
  bench.table.Begin(section.about);
  try {
    section.measure(bench);
    return true;
  } catch (const std::exception& error) {
    std::cerr << "velmoor-bench: " << section.name << ": " << error.what() << std::endl;
    return false;
  }
}

int Run(int argc, char** argv, const CommandLine& line) {
  const std::vector<Section> sections = Chosen(line.Arguments());
  const TemporaryFolder folder(line.Value("folder").value_or(""), "velmoor-bench");
  Table table(std::cout, line.Has("markdown") ? Table::Form::markdown : Table::Form::plain);
  Workbench bench(argc, argv, folder.Path(), table);
  bool all = true;
  for (const Section& section : sections) all = Measure(section, bench) && all;
  table.End();
  return all ? kDone : kFailed;
}

}  // namespace
}  // namespace velmoor::bench

int main(int argc, char** argv) {
  using namespace velmoor;
  // This program's own children.
  const std::string first = argc > 1 ? argv[1] : "";
  const auto run = [&](const CommandLine& line) { return bench::Run(argc, argv, line); };
  try {
    if (first == bench::BareWindow::kWord) return bench::BareWindow::Show(argc, argv);
    if (first == bench::kKeyWord) return bench::DeriveKey();
    if (first == bench::kMonitoringWord) return bench::MonitorForHours(argc, argv);
    return RunProgram(bench::BenchTable(), argc, argv, run);
  } catch (const std::exception& error) {
    std::cerr << "velmoor-bench: " << error.what() << "\n";
    return kFailed;
  }
}
