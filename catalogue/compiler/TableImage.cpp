#include "compiler/TableImage.h"

#include <algorithm>

namespace velmoor::catalogue {
namespace {

bool Holds(Database& database, const TableImage& table) {
  const auto rows = database.OpenTable(table.name);
  for (const std::vector<std::string>& expected : table.rows) {
    if (rows->AtEnd()) return false;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      if (rows->Text(table.columns[i].name) != expected[i]) return false;
    }
    rows->MoveNext();
  }
  return rows->AtEnd();
}

bool HoldsAll(Databases& databases, const std::string& path, std::string_view password,
              const std::vector<TableImage>& tables) {
  try {
    const auto database = databases.Open(path, password, DatabaseAccess::readOnly);
    return database->Tables().size() == tables.size() &&
           std::ranges::all_of(tables,
                               [&](const TableImage& table) { return Holds(*database, table); });
  } catch (const DatabaseError&) {
    // Missing, of another form, or damaged: it is written anew.
    return false;
  }
}

}  // namespace

bool WriteIfChanged(Databases& databases, const std::string& path, std::string_view password,
                    const std::vector<TableImage>& tables) {
  if (HoldsAll(databases, path, password, tables)) return false;
  const auto builder = databases.Create(path, password);
  for (const TableImage& table : tables) {
    builder->CreateTable(table.name, table.columns);
    for (const std::vector<std::string>& row : table.rows) builder->Insert(table.name, row);
  }
  builder->Finish();
  return true;
}

}  // namespace velmoor::catalogue
