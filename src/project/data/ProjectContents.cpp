#include "project/data/ProjectContents.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::ProjectTable;

[[noreturn]] void Refuse(const std::string& reason) {
  throw DatabaseError(DatabaseError::Kind::foreign, reason);
}

std::string NameOf(const ProjectTable& table) {
  return table.definition.name;
}

// A table whose records are numbered has the numbers of the template, and them alone.
bool IsKeyOf(const ProjectTable& table, const std::string& key) {
  if (table.records == 0) return true;
  const auto number = ParseWhole(key);
  return number && NumberText(*number) == key && *number >= table.first &&
         *number < table.first + static_cast<std::int64_t>(table.records);
}

void CheckRecords(Database& project, const ProjectTable& table) {
  const std::size_t most = table.records != 0 ? table.records : schema::kMostRecords;
  std::set<std::string> keys;
  const auto records = project.OpenTable(table.definition.name);
  for (; !records->AtEnd(); records->MoveNext()) {
    for (const ColumnDefinition& column : table.definition.columns) {
      if (records->Text(column.name).size() > schema::kMostText) {
        Refuse("A text in the column " + column.name + " of " + NameOf(table) + " is too long.");
      }
    }
    const std::string key = records->Text(table.key);
    if (!IsKeyOf(table, key)) Refuse(NameOf(table) + " has a record of no known number.");
    if (!keys.insert(key).second) Refuse(NameOf(table) + " has two records of one name.");
    if (keys.size() > most) Refuse(NameOf(table) + " has too many records.");
  }
}

// Does `each` with every record of the pattern whose key the project does not have. Tells which.
std::vector<LaidAnew> ForEachMissing(
    Database& project, Database& pattern,
    const std::function<void(const ProjectTable&, const RowSet& patterns, RowSet& records)>& each) {
  std::vector<LaidAnew> all;
  for (const ProjectTable& table : schema::ProjectTables()) {
    LaidAnew laid{std::string(table.title), {}};
    const auto records = project.OpenTable(table.definition.name);
    const auto patterns = pattern.OpenTable(table.definition.name);
    for (; !patterns->AtEnd(); patterns->MoveNext()) {
      const std::string key = patterns->Text(table.key);
      if (records->FindFirst(table.key, key)) continue;
      each(table, *patterns, *records);
      laid.keys.push_back(key);
    }
    if (!laid.keys.empty()) all.push_back(std::move(laid));
  }
  return all;
}

bool HasColumnsOf(const TableDefinition& found, const ProjectTable& table, Strangers strangers) {
  if (strangers == Strangers::refused) return found.columns == table.definition.columns;
  return std::ranges::all_of(table.definition.columns, [&found](const ColumnDefinition& column) {
    return std::ranges::find(found.columns, column) != found.columns.end();
  });
}

bool LacksColumns(const TableDefinition& found, const ProjectTable& table) {
  const std::vector<ColumnDefinition>& known = table.definition.columns;
  return found.columns.size() < known.size() &&
         std::ranges::all_of(found.columns, [&known](const ColumnDefinition& column) {
           return std::ranges::find(known, column) != known.end();
         });
}

using Record = std::vector<std::string>;  // in the order of the columns

// The records of a table that lacks columns, with all of them.
std::vector<Record> Completed(Database& project, Database& pattern, const ProjectTable& table,
                              const TableDefinition& found) {
  std::vector<Record> all;
  const auto records = project.OpenTable(found.name);
  const auto patterns = pattern.OpenTable(found.name);
  for (; !records->AtEnd(); records->MoveNext()) {
    if (all.size() == schema::kMostRecords) Refuse(found.name + " has too many records.");
    const bool known = patterns->FindFirst(table.key, records->Text(table.key));
    Record record;
    bool isNew = false;
    for (const ColumnDefinition& column : table.definition.columns) {
      const bool present = std::ranges::find(found.columns, column) != found.columns.end();
      const std::string given = known && !present ? patterns->Text(column.name) : std::string();
      isNew = isNew || !given.empty();
      record.push_back(present ? records->Text(column.name) : given);
    }
    const auto mark = std::ranges::find(table.definition.columns, std::string(schema::kMark),
                                        &ColumnDefinition::name);
    if (isNew && mark != table.definition.columns.end()) {
      record[static_cast<std::size_t>(mark - table.definition.columns.begin())] = "1";
    }
    all.push_back(std::move(record));
  }
  return all;
}

}  // namespace

void AddMissingColumns(const std::string& path, const std::string& templatePath) {
  std::map<std::string, std::vector<Record>> tables;
  {
    const auto project = OpenForReading(path);
    const auto pattern = OpenForReading(templatePath);
    for (const TableDefinition& found : project->Tables()) {
      for (const ProjectTable& table : schema::ProjectTables()) {
        if (table.definition.name != found.name || !LacksColumns(found, table)) continue;
        tables[found.name] = Completed(*project, *pattern, table, found);
      }
    }
  }
  if (tables.empty()) return;
  world().databases->Release(path);
  const auto builder = world().databases->Extend(path, schema::kPassword);
  for (const auto& [name, records] : tables) {
    builder->DropTable(name);
    builder->CreateTable(name, schema::ProjectTableNamed(name).definition.columns);
    for (const Record& record : records) builder->Insert(name, record);
  }
  builder->Finish();
}

void CheckContents(Database& project, Strangers strangers) {
  const std::vector<TableDefinition> present = project.Tables();
  for (const ProjectTable& table : schema::ProjectTables()) {
    const auto found = std::ranges::find(present, table.definition.name, &TableDefinition::name);
    if (found == present.end()) {
      throw DatabaseError(DatabaseError::Kind::schema, "There is no table " + NameOf(table) + ".");
    }
    if (!HasColumnsOf(*found, table, strangers)) {
      Refuse(NameOf(table) + " has other columns than in a project.");
    }
  }
  if (strangers == Strangers::refused && present.size() != schema::ProjectTables().size()) {
    Refuse("The file holds a table that is none of a project.");
  }
  for (const ProjectTable& table : schema::ProjectTables()) CheckRecords(project, table);
}

std::vector<LaidAnew> MissingRecords(Database& project, Database& pattern) {
  return ForEachMissing(project, pattern, [](const ProjectTable&, const RowSet&, RowSet&) {});
}

std::vector<LaidAnew> AddMissingRecords(Database& project, Database& pattern) {
  return ForEachMissing(project, pattern,
                        [](const ProjectTable& table, const RowSet& patterns, RowSet& records) {
                          records.AddNew();
                          for (const ColumnDefinition& column : table.definition.columns) {
                            const bool mark = column.name == schema::kMark;
                            records.Set(column.name, mark ? "1" : patterns.Text(column.name));
                          }
                          records.Update();
                        });
}

std::string InWords(const std::vector<LaidAnew>& laid) {
  constexpr std::size_t kNamed = 5;
  std::string words;
  for (const LaidAnew& part : laid) {
    words += "\r" + part.table + ": ";
    for (std::size_t i = 0; i < std::min(kNamed, part.keys.size()); ++i) {
      words += (i == 0 ? "" : ", ") + part.keys[i];
    }
    if (part.keys.size() > kNamed) {
      words += " and " + NumberText(part.keys.size() - kNamed) + " more";
    }
  }
  return words;
}

}  // namespace velmoor
