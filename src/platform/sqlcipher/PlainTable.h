// What a table of this program's files may be: columns of text or of whole numbers, and nothing
// that computes. The engine keeps a table as the statement that made it and acts on whatever stands
// there (conditions, defaults, indexes), so the statement is read before the table is.
#pragma once

#include <optional>
#include <string_view>

#include "platform/Database.h"

namespace velmoor::sqlcipher {

// Takes `CREATE TABLE name (column TEXT, column INTEGER, ...)` alone; nothing for any other text.
[[nodiscard]] std::optional<TableDefinition> ParsePlainTable(std::string_view statement);

}  // namespace velmoor::sqlcipher
