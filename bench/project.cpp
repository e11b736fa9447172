// What a session does with its files: the catalogue, and a project from new to saved.
#include <filesystem>
#include <iostream>
#include <string>

#include "Limits.h"
#include "Workbench.h"
#include "platform/Files.h"
#include "project/data/CatalogueLibrary.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/Schema.h"
#include "simulator/InProcessPort.h"

namespace velmoor::bench {
namespace {

constexpr int kRuns = 21;

void MeasureCatalogue(Workbench& bench, ConsoleSession& session) {
  bench.Time("Session built, its pauses apart", kMilliseconds, 5, Goal{300},
             [&] { Require(session.Start("400"), "the session's start"); });
  const std::string copy = CatalogueLibrary::WorkingCopyPath();
  bench.Time("All parameters' definitions read", kMilliseconds, kRuns, Goal{5},
             [&] { (void)ReadParameterDefinitions(copy, GetTableNames(copy).ParametersTable); });
}

void ClearOneMark(const std::string& path) {
  const auto database = OpenForWriting(path);
  const auto rows = database->OpenTable(schema::Parameters::kTable);
  rows->FindFirst(schema::Parameters::kPn, "Pn834");
  rows->Edit();
  rows->Set(schema::Parameters::kDirty, "0");
  rows->Update();
  database->Commit();
}

}  // namespace

void MeasureProject(Workbench& bench) {
  SimulatedLine line;
  InProcessPort port(line);
  ConsoleSession session(port, std::cerr);
  MeasureCatalogue(bench, session);

  const std::string pattern = JoinPath(world().appDirectory, "Velmoor.spt");
  const std::string fresh = bench.folder / "new.spj";
  bench.Time(
      "New, from the template", kMilliseconds, kRuns, Goal{100},
      [&] { world().files->ReplaceDurably(pattern, fresh); },
      Limit{FlushSeconds(bench.folder, pattern), "flush"});
  bench.Time("Open, the key known", kMilliseconds, kRuns, Goal{60},
             [&] { Require(session.Open(bench.fullProject), "an opening"); });
  clsHX7Project& project = session.project();
  bench.Time(
      "Save", kMilliseconds, kRuns, Goal{100}, [&] { project.Save(); },
      Limit{FlushSeconds(bench.folder, bench.fullProject), "flush"});
  const std::string working = project.ProjectDatabasePath();
  bench.Time("A row's mark cleared and committed", kMicroseconds, 101, Goal{1000},
             [&] { ClearOneMark(working); });
}

}  // namespace velmoor::bench
