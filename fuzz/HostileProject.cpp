#include "HostileProject.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "SealedPages.h"
#include "platform/Database.h"
#include "project/data/Schema.h"

namespace velmoor::fuzz {
namespace {

std::string Read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// A statement that the engine refuses leaves the file as it is: the others make it hostile.
void Try(sqlcipher::Connection& tool, const std::string& statement) {
  try {
    tool.Execute(statement);
  } catch (const DatabaseError&) {
  }
}

}  // namespace

HostileMaker::HostileMaker(std::string pattern) : pattern_(std::move(pattern)) {
  const std::string bytes = Read(pattern_);
  std::copy_n(bytes.begin(), salt_.size(), salt_.begin());
}

std::size_t HostileMaker::Below(Random& random, std::size_t bound) {
  return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

std::string HostileMaker::Make(const std::string& path, std::uint32_t number) {
  Random random(number);
  std::filesystem::copy_file(pattern_, path, std::filesystem::copy_options::overwrite_existing);
  std::filesystem::remove(path + "-journal");
  static constexpr Statements (*kKinds[])(Random&) = {SchemaTrick, WrongTypes, Huge,
                                                      Missing,     Doubled,    TextAgainstWire};
  Statements statements;
  const std::size_t parts = 1 + Below(random, 3);
  // A part by itself, and mixed: what one trick hides another may show.
  for (std::size_t i = 0; i < parts; ++i) {
    const Statements more = kKinds[Below(random, std::size(kKinds))](random);
    statements.insert(statements.end(), more.begin(), more.end());
  }
  std::string told;
  if (Below(random, 8) != 0) {
    sqlcipher::Connection tool(path, sqlcipher::OpenMode::create,
                               keys_.KeyForFile(schema::kPassword, salt_));
    for (const std::string& statement : statements) {
      told += statement.substr(0, 200) + "; ";
      Try(tool, statement);
    }
  }
  if (Below(random, 4) == 0) told += ChangePages(path, random);
  if (Below(random, 8) == 0) told += ChangeBytes(path, random);
  return told;
}

// ---- words of the statements

std::string HostileMaker::Table(Random& random) {
  const auto& tables = schema::ProjectTables();
  return tables[Below(random, tables.size())].definition.name;
}

std::string HostileMaker::Column(Random& random, const std::string& table) {
  const auto& columns = schema::ProjectTableNamed(table).definition.columns;
  return sqlcipher::Quoted(columns[Below(random, columns.size())].name);
}

std::string HostileMaker::Value(Random& random) {
  static const std::string kValues[] = {"NULL",
                                        "''",
                                        "0",
                                        "-1",
                                        "1e308",
                                        "-1e308",
                                        "9223372036854775807",
                                        "-9223372036854775808",
                                        "0.1",
                                        "'nan'",
                                        "'inf'",
                                        "'-0'",
                                        "x''",
                                        "x'00'",
                                        "x'ff00ff00'",
                                        "zeroblob(4096)",
                                        "zeroblob(4097)",
                                        "hex(zeroblob(2000))",
                                        "hex(zeroblob(40000))",
                                        "zeroblob(300000)",
                                        "char(27)||'[2J'",
                                        "char(0)||'a'",
                                        "cast(x'c328' AS TEXT)",
                                        "'=HYPERLINK(1)'",
                                        "'END'",
                                        "'label1'",
                                        "'A+99999999'",
                                        "'A+'",
                                        "'I-'",
                                        "'+INFINITE'",
                                        "'STOP'",
                                        "'-'",
                                        "'99999999'",
                                        "'100000000'",
                                        "'2147483648'",
                                        "'-2147483648'",
                                        "'4294967296'",
                                        "'1,5'",
                                        "'0x10'",
                                        "'FFFF'",
                                        "'GGGG'",
                                        "'00000'",
                                        "'NNNNN'",
                                        "'AAAAAA'",
                                        "'SEL6T99999'",
                                        "'SEL7'",
                                        "'T-1'",
                                        "'Rotary Table'",
                                        "'1|2'",
                                        "char(8238)||'abc'",
                                        "'１２'",
                                        "'1 '",
                                        "' 1'",
                                        "'+1'",
                                        "'1e3'"};
  return kValues[Below(random, std::size(kValues))];
}

std::string HostileMaker::Where(Random& random) {
  switch (Below(random, 4)) {
    case 0:
      return "";
    case 1:
      return " WHERE rowid % " + std::to_string(1 + Below(random, 7)) + " = 0";
    case 2:
      return " WHERE rowid <= " + std::to_string(Below(random, 10));
    default:
      return " WHERE rowid = " + std::to_string(1 + Below(random, 140));
  }
}

// ---- kinds

HostileMaker::Statements HostileMaker::SchemaTrick(Random& random) {
  const std::string table = Table(random);
  const std::string other = Table(random);
  const std::string column = Column(random, table);
  const std::string endless =
      " AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x AS pn, x AS "
      "value, x AS PropertyName FROM c";
  const Statements kTricks[] = {
      {"ALTER TABLE " + table + " RENAME TO hidden",
       "CREATE VIEW " + table + " AS SELECT * FROM hidden"},
      {"DROP TABLE " + table, "CREATE VIEW " + table + endless},
      {"DROP TABLE " + table,
       "CREATE VIEW " + table +
           " AS SELECT rtreenode(1, x'0000ffff') AS value, '' AS PropertyName"},
      {"CREATE VIEW v AS SELECT rtreenode(2, zeroblob(900)), load_extension('x')"},
      {"CREATE TRIGGER t AFTER UPDATE ON " + table + " BEGIN UPDATE " + other + " SET " +
       Column(random, other) + "='777'; END"},
      {"CREATE TRIGGER t BEFORE UPDATE ON " + table + " BEGIN SELECT RAISE(IGNORE); END"},
      {"CREATE TRIGGER t AFTER UPDATE ON " + table + " BEGIN INSERT INTO " + table +
       " SELECT * FROM " + table + "; END"},
      {"CREATE TRIGGER t BEFORE INSERT ON " + table + " BEGIN SELECT RAISE(ABORT, 'no'); END"},
      {"CREATE INDEX i ON " + table + "(" + column + ")"},
      {"CREATE UNIQUE INDEX i ON " + table + "(" + column + ")"},
      {"CREATE INDEX i ON " + table + "(hex(zeroblob(" + column + ")))"},
      {"CREATE VIRTUAL TABLE f USING fts3(a)"},
      {"CREATE VIRTUAL TABLE r USING rtree(id, a, b)"},
      {"DROP TABLE " + table, "CREATE VIRTUAL TABLE " + table + " USING fts4(pn, value)"},
      {"CREATE TABLE more (a TEXT)"},
      {"CREATE TABLE s (a INTEGER PRIMARY KEY AUTOINCREMENT)", "INSERT INTO s VALUES (7)",
       "DROP TABLE s"},
      {"ANALYZE"},
      {"ALTER TABLE " + table + " ADD COLUMN more TEXT DEFAULT 'x'"},
      {"DROP TABLE " + table,
       "CREATE TABLE " + table + " (pn TEXT PRIMARY KEY, value TEXT) WITHOUT ROWID"},
      {"DROP TABLE " + table, "CREATE TABLE " + table + " (pn TEXT CHECK (pn > 'a'), value TEXT)"},
      {"PRAGMA writable_schema=ON",
       "UPDATE sqlite_master SET rootpage=" + std::to_string(Below(random, 40)) + " WHERE name='" +
           table + "'"},
      {"PRAGMA writable_schema=ON",
       "UPDATE sqlite_master SET rootpage=(SELECT rootpage FROM "
       "sqlite_master WHERE name='" +
           other + "') WHERE name='" + table + "'"},
      {"PRAGMA writable_schema=ON",
       "UPDATE sqlite_master SET sql=" + Value(random) + " WHERE name='" + table + "'"},
      {"PRAGMA writable_schema=ON", "UPDATE sqlite_master SET sql=replace(sql, 'TEXT', 'BLOB')"},
      {"PRAGMA writable_schema=ON",
       "UPDATE sqlite_master SET type='view' WHERE name='" + table + "'"},
      {"PRAGMA writable_schema=ON",
       "INSERT INTO sqlite_master SELECT * FROM sqlite_master WHERE name='" + table + "'"},
      {"PRAGMA writable_schema=ON", "INSERT INTO sqlite_master VALUES ('trigger', 't', '" + table +
                                        "', 0, 'CREATE TRIGGER t AFTER UPDATE ON " + table +
                                        " BEGIN SELECT 1; END')"},
      {"PRAGMA writable_schema=ON", "DELETE FROM sqlite_master WHERE name='" + table + "'"},
      {"PRAGMA auto_vacuum=FULL", "VACUUM"},
      {"PRAGMA journal_mode=WAL"},
      {"PRAGMA user_version=2147483647"},
      {"PRAGMA schema_version=2147483647"},
  };
  return kTricks[Below(random, std::size(kTricks))];
}

HostileMaker::Statements HostileMaker::WrongTypes(Random& random) {
  Statements statements;
  const std::size_t count = 1 + Below(random, 6);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string table = Table(random);
    statements.push_back("UPDATE " + table + " SET " + Column(random, table) + "=" + Value(random) +
                         Where(random));
  }
  return statements;
}

HostileMaker::Statements HostileMaker::Huge(Random& random) {
  const std::string table = Table(random);
  const std::string column = Column(random, table);
  const std::string rows = std::to_string(1000 + Below(random, 20000));
  const Statements kHuge[] = {
      {"INSERT INTO " + table + " (" + column +
       ") WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT " + rows +
       ") SELECT x FROM c"},
      {"UPDATE " + table + " SET " + column + "=zeroblob(" + rows + "*20)" + Where(random)},
      {"UPDATE " + table + " SET " + column + "=hex(zeroblob(" + rows + "))" + Where(random)},
      {"INSERT INTO tblMisc SELECT hex(randomblob(8)), zeroblob(4000) FROM tblPosition, tblJog"},
  };
  return {kHuge[Below(random, std::size(kHuge))]};
}

HostileMaker::Statements HostileMaker::Missing(Random& random) {
  const std::string table = Table(random);
  const Statements kMissing[] = {{"DELETE FROM " + table + Where(random)},
                                 {"DELETE FROM " + table},
                                 {"DROP TABLE " + table},
                                 {"DELETE FROM tblParameters WHERE pn LIKE 'Pn8%'"}};
  return {kMissing[Below(random, std::size(kMissing))]};
}

HostileMaker::Statements HostileMaker::Doubled(Random& random) {
  const std::string table = Table(random);
  const std::string key(schema::ProjectTableNamed(table).key);
  return {"INSERT INTO " + table + " SELECT * FROM " + table + Where(random),
          Below(random, 2) == 0 ? "SELECT 1"
                                : "UPDATE " + table + " SET " + sqlcipher::Quoted(key) + "=" +
                                      Value(random) + Where(random)};
}

HostileMaker::Statements HostileMaker::TextAgainstWire(Random& random) {
  static const char* const kPairs[][2] = {{"tblParameters", "\"value\""},
                                          {"tblParameters", "\"ControllerValue\""},
                                          {"tblPosition", "\"Position\""},
                                          {"tblPosition", "\"ControllerPosition\""},
                                          {"tblPosition", "\"Speed\""},
                                          {"tblPosition", "\"ControllerSpeed\""},
                                          {"tblPosition", "\"ControllerRDST\""},
                                          {"tblPosition", "\"ControllerNext\""},
                                          {"tblPosition", "\"Next\""},
                                          {"tblZone", "\"LowerLimit\""},
                                          {"tblZone", "\"ControllerUpperLimit\""},
                                          {"tblJog", "\"Speed\""},
                                          {"tblJog", "\"ControllerValue\""}};
  Statements statements;
  const std::size_t count = 1 + Below(random, 8);
  for (std::size_t i = 0; i < count; ++i) {
    const auto& pair = kPairs[Below(random, std::size(kPairs))];
    const std::string number =
        std::to_string(static_cast<std::int64_t>(Below(random, 400000000)) - 200000000);
    const std::string value = Below(random, 2) == 0 ? Value(random) : "'" + number + "'";
    statements.push_back("UPDATE " + std::string(pair[0]) + " SET " + pair[1] + "=" + value +
                         " WHERE rowid = " + std::to_string(1 + Below(random, 140)));
  }
  return statements;
}

// ---- bytes

std::string HostileMaker::ChangePages(const std::string& path, Random& random) {
  SealedPages pages(Read(path),
                    keys_.KeyOf(schema::kPassword, salt_, sqlcipher::kWrittenDerivation));
  if (pages.Count() == 0) return {};
  const std::size_t changes = 1 + Below(random, 12);
  std::string told = "pages";
  for (std::size_t i = 0; i < changes; ++i) {
    const std::size_t page = Below(random, 3) == 0 ? 0 : Below(random, pages.Count());
    std::string plain = pages.Plain(page);
    // The head of a page says what the rest of it is.
    const std::size_t at = Below(random, 2) == 0
                               ? Below(random, std::min<std::size_t>(plain.size(), 110))
                               : Below(random, plain.size());
    plain[at] = static_cast<char>(Below(random, 256));
    pages.Seal(page, plain);
    told += " " + std::to_string(page) + "/" + std::to_string(at);
  }
  Write(path, pages.Bytes());
  return told + "; ";
}

std::string HostileMaker::ChangeBytes(const std::string& path, Random& random) {
  std::string bytes = Read(path);
  if (bytes.size() < 64) return {};
  switch (Below(random, 4)) {
    case 0:
      bytes.resize(Below(random, bytes.size()));
      break;
    case 1:
      bytes += std::string(Below(random, 5'000'000), 'x');
      break;
    case 2:
      // The salt stays: another one costs the derivation of a key, and opens nothing.
      bytes[16 + Below(random, bytes.size() - 16)] = static_cast<char>(Below(random, 256));
      break;
    default:
      bytes.erase(1024 * Below(random, bytes.size() / 1024), 1024);
      break;
  }
  Write(path, bytes);
  return "bytes; ";
}

}  // namespace velmoor::fuzz
