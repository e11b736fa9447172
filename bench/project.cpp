// What a session does with its files: the catalogue, and a project from new to saved.
#include <filesystem>
#include <string>

#include "Limits.h"
#include "Timing.h"
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
  bench.table.Add({"Session built, its pauses apart",
                   kMilliseconds,
                   Times(5, [&] { Require(session.Start("400"), "the session's start"); }),
                   Goal{300},
                   {}});
  const std::string copy = CatalogueLibrary::WorkingCopyPath();
  bench.table.Add(
      {"All parameters' definitions read",
       kMilliseconds,
       Times(kRuns,
             [&] { (void)ReadParameterDefinitions(copy, GetTableNames(copy).ParametersTable); }),
       Goal{5},
       {}});
}

void MeasureOpening(Workbench& bench, ConsoleSession& session, const std::string& project) {
  const auto open = [&] { Require(session.Open(project), "an opening"); };
  const auto openLikeAnotherProcess = [&] {
    sqlcipher::SqlcipherDatabases fresh;
    world().databases = &fresh;
    open();
    world().databases = &bench.adapters.databases;
  };
  bench.table.Add({"Open, the key to be derived", kMilliseconds, Times(7, openLikeAnotherProcess),
                   Goal{300}, Limit{KeySeconds(), "key"}});
  bench.table.Add({"Open, the key known", kMilliseconds, Times(kRuns, open), Goal{60}, {}});
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
  ConsoleSession session(port, nullptr);
  MeasureCatalogue(bench, session);

  const std::string pattern = JoinPath(world().appDirectory, "Velmoor.spt");
  const std::string fresh = bench.folder / "new.spj";
  bench.table.Add({"New, from the template", kMilliseconds,
                   Times(kRuns, [&] { world().files->ReplaceDurably(pattern, fresh); }), Goal{100},
                   Limit{FlushSeconds(bench.folder, pattern), "flush"}});
  MeasureOpening(bench, session, bench.fullProject);
  clsHX7Project& project = session.project();
  bench.table.Add({"Save", kMilliseconds, Times(kRuns, [&] { project.Save(); }), Goal{100},
                   Limit{FlushSeconds(bench.folder, bench.fullProject), "flush"}});
  const std::string working = project.ProjectDatabasePath();
  bench.table.Add({"A row's mark cleared and committed",
                   kMicroseconds,
                   Times(101, [&] { ClearOneMark(working); }),
                   Goal{1000},
                   {}});
}

}  // namespace velmoor::bench
