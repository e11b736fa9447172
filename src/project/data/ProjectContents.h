// What a project's file may hold, checked before anything of it is believed: the tables that
// schema::ProjectTables tells and no others, each record under a key of its own, no more records
// and no longer texts than a project has.
#pragma once

#include <string>
#include <vector>

#include "platform/Database.h"

namespace velmoor {

// Tables and columns that this program does not know: none, or such as a later version has added.
enum class Strangers { refused, allowed };

// Throws DatabaseError(foreign or schema) that names what is wrong.
void CheckContents(Database& project, Strangers strangers);

// Lays those tables anew that have fewer columns than a project has now: each record gets the
// template's text in them, and, where that is one to be sent, a mark to download. Throws
// DatabaseError; the file is then as it was.
void AddMissingColumns(const std::string& path, const std::string& templatePath);

// The records that a project lacked, of one table.
struct LaidAnew {
  std::string table;              // in the user's words
  std::vector<std::string> keys;  // in the order of the template
};
// The records that the template has and the project does not.
[[nodiscard]] std::vector<LaidAnew> MissingRecords(Database& project, Database& pattern);
// Adds them, with the template's texts, and marked to download where the table has marks. Tells
// what was added.
[[nodiscard]] std::vector<LaidAnew> AddMissingRecords(Database& project, Database& pattern);

// For the user; empty where nothing was laid anew.
[[nodiscard]] std::string InWords(const std::vector<LaidAnew>& laid);

}  // namespace velmoor
