#include "project/data/Schema.h"

#include <algorithm>
#include <initializer_list>
#include <span>

#include "platform/World.h"
#include "project/data/ProjectFormat.h"

namespace velmoor {
namespace schema {
namespace {

TableDefinition Table(std::string_view name, std::initializer_list<std::string_view> numbers,
                      const std::vector<std::string_view>& texts,
                      std::span<const std::string_view> bits = {}) {
  TableDefinition table{std::string(name), {}};
  for (const std::string_view column : numbers)
    table.columns.push_back({std::string(column), true});
  for (const std::string_view column : texts) table.columns.push_back({std::string(column)});
  for (const std::string_view column : bits) table.columns.push_back({std::string(column)});
  return table;
}

// The mark stands last.
TableDefinition Marked(TableDefinition table) {
  table.columns.push_back({std::string(kMark)});
  return table;
}

std::vector<ProjectTable> MakeProjectTables() {
  using P = Position;
  return {{Table(Parameters::kTable, {},
                 {Parameters::kPn, Parameters::kValue, Parameters::kControllerValue,
                  Parameters::kDirty, Parameters::kDescription}),
           "Parameters", Parameters::kPn},
          {Table(Misc::kTable, {}, {Misc::kPropertyName, Misc::kValue}), "Settings",
           Misc::kPropertyName},
          {Marked(Table(P::kTable, {P::kId, P::kIndex},
                        {P::kPosition, P::kSpeed, P::kRSPD, P::kRDST, P::kEvent, P::kLoop, P::kNext,
                         P::kLabel, P::kPOut, P::kControllerPosition, P::kControllerSpeed,
                         P::kControllerRSPD, P::kControllerRDST, P::kControllerNext})),
           "Index table", P::kId, P::kRows, 1},
          {Marked(Table(Zone::kTable, {Zone::kZone},
                        {std::begin(Zone::kTexts), std::end(Zone::kTexts)}, Zone::kBit)),
           "Zone table", Zone::kZone, Zone::kRows, 0},
          {Marked(Table(Jog::kTable, {Jog::kJog}, {Jog::kSpeed, Jog::kControllerValue}, Jog::kBit)),
           "Jog table", Jog::kJog, Jog::kRows, 0}};
}

}  // namespace

const std::vector<ProjectTable>& ProjectTables() {
  static const std::vector<ProjectTable> tables = MakeProjectTables();
  return tables;
}

const ProjectTable& ProjectTableNamed(std::string_view name) {
  return *std::ranges::find(ProjectTables(), name,
                            [](const ProjectTable& table) { return table.definition.name; });
}

}  // namespace schema

std::unique_ptr<Database> OpenForReading(const std::string& path) {
  return world().databases->Open(path, schema::kPassword, DatabaseAccess::readOnly);
}

std::unique_ptr<Database> OpenForWriting(const std::string& path) {
  auto project = world().databases->Open(path, schema::kPassword, DatabaseAccess::readWrite);
  RefuseNewer(*project);
  return project;
}

}  // namespace velmoor
