// velmoor-catalogue DATA OUT FACTORY: reads the catalogue's files in the folder DATA, writes
// "IdeInfo.mdb" and "Velmoor.spt" into the folder OUT and the factory values into the file FACTORY,
// each only when its contents change. Tells every inconsistency and then fails.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "compiler/Checks.h"
#include "compiler/Outputs.h"
#include "compiler/Reader.h"
#include "platform/sqlcipher/SqlcipherDatabases.h"
#include "project/data/Schema.h"

namespace velmoor::catalogue {
namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<SourceFile> ReadSources(const fs::path& folder) {
  std::vector<SourceFile> sources;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".txt") continue;
    sources.push_back({entry.path().filename().string(), ReadText(entry.path())});
  }
  std::ranges::sort(sources, {}, &SourceFile::name);
  return sources;
}

void WriteTextIfChanged(const fs::path& path, const std::string& text) {
  if (fs::exists(path) && ReadText(path) == text) return;
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.flush();
  if (!file) throw std::runtime_error(path.string() + ": cannot be written");
}

int Fail(const fs::path& folder, const Problems& problems) {
  for (const std::string& line : problems.Lines()) {
    std::cerr << (folder / line).string() << "\n";
  }
  return 1;
}

int Compile(const fs::path& data, const fs::path& out, const fs::path& factory) {
  Problems problems;
  const Catalogue catalogue = ReadCatalogue(ReadSources(data), problems);
  CheckCatalogue(catalogue, problems);
  // The tables are built from what passed the checks only.
  if (!problems.Lines().empty()) return Fail(data, problems);
  const auto tables = CatalogueTables(catalogue, problems);
  if (!problems.Lines().empty()) return Fail(data, problems);

  fs::create_directories(out);
  sqlcipher::SqlcipherDatabases databases;
  WriteIfChanged(databases, (out / "IdeInfo.mdb").string(), schema::kPassword, tables);
  WriteIfChanged(databases, (out / "Velmoor.spt").string(), schema::kPassword,
                 TemplateTables(catalogue));
  WriteTextIfChanged(factory, FactoryValues(catalogue));
  return 0;
}

}  // namespace
}  // namespace velmoor::catalogue

int main(int count, char** arguments) {
  if (count != 4) {
    std::cerr << "usage: velmoor-catalogue DATA OUT FACTORY\n";
    return 2;
  }
  try {
    return velmoor::catalogue::Compile(arguments[1], arguments[2], arguments[3]);
  } catch (const std::exception& error) {
    std::cerr << "velmoor-catalogue: " << error.what() << "\n";
    return 1;
  }
}
