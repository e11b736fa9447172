// What a file may hold, and what the engine may be made to do by it.
#include <sys/stat.h>

#include <algorithm>

#include "DatabaseFile.h"

namespace velmoor::sqlcipher {
namespace {

// A file of ours into which somebody who has the password put more.
class ForeignContents : public DatabaseFile {
 protected:
  void Plant(const std::string& sql) {
    databases_.Release(path_);
    fs::remove(path_);
    MakeFile();
    databases_.Release(path_);
    Connection tool(path_, OpenMode::create, "nurvex");
    for (std::size_t at = 0; at < sql.size();) {
      const std::size_t end = std::min(sql.find(';', at), sql.size());
      tool.Execute(sql.substr(at, end - at));
      at = end + 1;
    }
  }
  std::string Refusal() {
    SqlcipherDatabases fresh;
    try {
      (void)fresh.Open(path_, kPassword, DatabaseAccess::readOnly)->OpenTable("tblParameters");
    } catch (const DatabaseError& error) {
      return error.kind() == Kind::foreign ? error.what() : std::string("other: ") + error.what();
    }
    return {};
  }
};

TEST_F(ForeignContents, AnythingButAPlainTableIsRefusedByItsName) {
  const struct {
    const char* sql;
    const char* name;
  } cases[] = {
      {"CREATE VIEW v AS SELECT rtreenode(1, x'0000ffff')", "v"},
      {"CREATE VIEW endless AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) "
       "SELECT "
       "x FROM c",
       "endless"},
      {"CREATE TRIGGER t AFTER UPDATE ON tblParameters BEGIN SELECT 1 END", "t"},
      {"CREATE INDEX i ON tblParameters(pn)", "i"},
      {"CREATE VIRTUAL TABLE f USING fts4(a)", "f"},
      {"CREATE TABLE c (a TEXT CHECK (a <> 'x'))", "c"},
      {"CREATE TABLE d (a TEXT DEFAULT 'x')", "d"},
      {"CREATE TABLE k (a INTEGER PRIMARY KEY)", "k"},
      {"CREATE TABLE u (a TEXT UNIQUE)", "u"},
      {"CREATE TABLE w (a TEXT, PRIMARY KEY (a)) WITHOUT ROWID", "w"},
      {"CREATE TABLE s AS SELECT 1.5 AS a", "s"},
      {"CREATE TABLE \"\x1b[2J\" (a BLOB)", "?[2J"},
  };
  for (const auto& [sql, name] : cases) {
    SCOPED_TRACE(sql);
    // The bodies of triggers end in a ";" of their own.
    std::string text = sql;
    if (const auto body = text.find(" END"); body == text.size() - 4) {
      MakeFile();
      databases_.Release(path_);
      text.insert(body, ";");
      Connection(path_, OpenMode::create, "nurvex").Execute(text);
    } else {
      Plant(text);
    }
    EXPECT_THAT(Refusal(), testing::HasSubstr(std::string("holds \"") + name + "\""));
    fs::remove(path_);
  }
  Plant("CREATE TABLE tblMore (a TEXT, \"b \"\"c\" INTEGER)");
  EXPECT_EQ(Refusal(), "");
}

TEST_F(ForeignContents, ARecordOfTheSchemaThatLiesIsRefused) {
  for (const char* const lie : {"sql='CREATE TABLE tblOther (pn TEXT)'", "sql='SELECT 1'",
                                "sql=NULL", "rootpage=1", "type='view'", "rootpage=70000"}) {
    SCOPED_TRACE(lie);
    Plant(std::string("PRAGMA writable_schema=ON;UPDATE sqlite_master SET ") + lie);
    EXPECT_NE(Refusal(), "");
  }
}

TEST_F(ForeignContents, AFileLargerThanAnyOfOursIsRefusedUnread) {
  MakeFile();
  fs::resize_file(path_, 4 * 1024 * 1024 + 1024);
  EXPECT_THAT(Refusal(), testing::HasSubstr("larger than any file"));
  MakeFile(17000);
  EXPECT_THAT(Refusal(), testing::HasSubstr("tblParameters has more records"));
}

TEST_F(ForeignContents, APipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  EXPECT_NE(Refusal(), "");
}

TEST_F(ForeignContents, TheEngineDoesOnlyWhatOurStatementsAsk) {
  MakeFile(400);
  Connection engine(path_, OpenMode::existing, "nurvex");
  for (const char* const sql :
       {"ATTACH ':memory:' AS a", "SELECT load_extension('x')",
        "SELECT count(*) FROM tblParameters", "SELECT rtreenode(1, x'0000ffff')",
        "CREATE VIEW v AS SELECT 1", "CREATE TEMP TABLE t (a TEXT)",
        "CREATE INDEX i ON tblParameters(pn)",
        "CREATE TRIGGER t AFTER UPDATE ON tblParameters BEGIN SELECT 1; END",
        "PRAGMA writable_schema=ON", "PRAGMA journal_mode=WAL",
        "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x FROM c"}) {
    SCOPED_TRACE(sql);
    EXPECT_EQ(FailureOf([&] { engine.Execute(sql); }), Kind::foreign);
  }
}

TEST_F(ForeignContents, AStatementWithoutAnEndIsEnded) {
  MakeFile(400);
  Connection engine(path_, OpenMode::existing, "nurvex");
  const auto endless = engine.Prepare(
      "SELECT a.pn FROM tblParameters a, tblParameters b, tblParameters c, tblParameters d "
      "WHERE a.pn > b.pn AND b.pn > c.pn AND c.pn > d.pn AND d.pn > a.pn");
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ(FailureOf([&] { endless->Step(); }), Kind::foreign);
  }
  EXPECT_EQ(ValueOf("Pn800"), "0000");
}

}  // namespace
}  // namespace velmoor::sqlcipher
