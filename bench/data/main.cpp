// Times what a session does with its files: the catalogue's working copy, and opening, reading and
// writing a project. bench_data [FOLDER] works in FOLDER, which lies on the disk to be measured.
#include <filesystem>
#include <iostream>
#include <string>

#include "Timing.h"
#include "platform/World.h"
#include "platform/posix/PosixFiles.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "project/data/CatalogueLibrary.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using bench::Time;

void MakeWorkingCopy() {
  CatalogueLibrary library;
  const bool made = library.McatCopy(2) == 0 && library.McatOpen() == 0 &&
                    library.McatUparaCreate(2, 2, 65535, 65535, 750, 1536, 65535, 65535, 1) == 0 &&
                    library.McatClose() == 0;
  if (!made) throw std::runtime_error("The catalogue cannot be built");
}

void WriteEveryParameter(const std::string& path) {
  const auto database = OpenForWriting(path);
  const auto rows = database->OpenTable(schema::Parameters::kTable);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    rows->Edit();
    rows->Set(schema::Parameters::kDirty, "1");
    rows->Update();
  }
  database->Commit();
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

void Measure(const fs::path& folder) {
  const std::string project = (folder / "bench.spj").string();
  const std::string working = (folder / "bench.tmp").string();
  const std::string catalogue = CatalogueLibrary::WorkingCopyPath();
  bench::Heading();

  Time("catalogue: copy and create, first time", 1, "", MakeWorkingCopy);
  Time("catalogue: copy and create, again", 20, "", MakeWorkingCopy);
  Time("catalogue: read all definitions", 50, "", [&] {
    (void)ReadParameterDefinitions(catalogue, GetTableNames(catalogue).ParametersTable);
  });
  Time("project: lay the template", 20, "", [&] {
    world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), project);
  });
  Time("project: lay the working copy", 20, "",
       [&] { world().files->LayWorkingCopy(project, working); });
  Time("project: open cold (key derived)", 5, "", [&] {
    sqlcipher::SqlcipherDatabases fresh;
    fresh.Open(working, schema::kPassword, DatabaseAccess::readOnly);
  });
  Time("project: open after a release (key kept)", 50, "", [&] {
    world().databases->Release(working);
    (void)OpenForReading(working);
  });
  Time("project: open warm", 200, "", [&] { (void)OpenForReading(working); });
  Time("project: open and read all parameters", 100, "",
       [&] { (void)OpenForReading(working)->OpenTable(schema::Parameters::kTable); });
  Time("working file: write all parameters", 50, "", [&] { WriteEveryParameter(working); });
  Time("working file: clear one mark", 100, "", [&] { ClearOneMark(working); });
  Time("project: save over the project file", 20, "", [&] {
    world().databases->Release(working);
    world().files->ReplaceDurably(working, project);
  });
}

}  // namespace
}  // namespace velmoor

int main(int count, char** arguments) {
  using namespace velmoor;
  try {
    const fs::path folder = fs::path(count > 1 ? arguments[1] : ".") / "velmoor-bench-data";
    fs::create_directories(folder);
    posix::PosixFiles files;
    sqlcipher::SqlcipherDatabases databases;
    World world;
    world.files = &files;
    world.databases = &databases;
    world.appDirectory = VELMOOR_CATALOGUE_DIRECTORY;
    world.catalogueCopyDirectory = folder.string();
    SetWorld(&world);
    Measure(folder);
    SetWorld(nullptr);
    fs::remove_all(folder);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
}
