// The tables of a database as texts, before they become a file.
#pragma once

#include <string>
#include <vector>

#include "platform/Database.h"

namespace velmoor::catalogue {

struct TableImage {
  std::string name;
  std::vector<ColumnDefinition> columns;
  std::vector<std::vector<std::string>> rows;
};

// Writes the tables into the file, unless it holds just them already. True when it was written.
// Throws DatabaseError.
bool WriteIfChanged(Databases& databases, const std::string& path, std::string_view password,
                    const std::vector<TableImage>& tables);

}  // namespace velmoor::catalogue
