#include "platform/sqlcipher/SqlcipherDatabases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "platform/sqlcipher/Engine.h"
#include "support/TemporaryFolder.h"

namespace velmoor::sqlcipher {
namespace {

namespace fs = std::filesystem;
using Kind = DatabaseError::Kind;

constexpr std::string_view kPassword = "nurvex";

class SqlcipherDatabasesTest : public testing::Test {
 protected:
  void MakeFile(int rows = 3) {
    const auto builder = databases_.Create(path_, kPassword);
    builder->CreateTable("tblParameters", {{"pn"}, {"value"}, {"order", true}});
    for (int i = 0; i < rows; ++i) {
      builder->Insert("tblParameters", {"Pn80" + std::to_string(i), "000" + std::to_string(i),
                                        std::to_string(rows * 10 - i)});
    }
    builder->Finish();
  }

  std::string ValueOf(std::string_view pn) {
    const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readOnly);
    const auto rows = database->OpenTable("tblParameters");
    return rows->FindFirst("pn", pn) ? rows->Text("value") : "(no row)";
  }

  static void Write(RowSet& rows, std::string_view pn, std::string_view value) {
    ASSERT_TRUE(rows.FindFirst("pn", pn));
    rows.Edit();
    rows.Set("value", value);
    rows.Update();
  }

  Kind FailureOf(const std::function<void()>& work) {
    try {
      work();
    } catch (const DatabaseError& error) {
      EXPECT_NE(std::string(error.what()).find("line1.spj"), std::string::npos) << error.what();
      return error.kind();
    }
    ADD_FAILURE() << "nothing was refused";
    return Kind::other;
  }
  Kind OpenFailure(std::string_view password = kPassword) {
    SqlcipherDatabases fresh;
    return FailureOf([&] { fresh.Open(path_, password, DatabaseAccess::readOnly); });
  }

  void Overwrite(std::streamoff place, const std::string& bytes) {
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(place);
    file << bytes;
  }

  TemporaryFolder folder_;
  const std::string path_ = folder_.At("line1.spj");
  SqlcipherDatabases databases_;
};

// ---- the password

TEST_F(SqlcipherDatabasesTest, PassphraseOpensWhatWeMade) {
  MakeFile();
  const Connection plain(path_, OpenMode::existing, "nurvex");
  const auto rows = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn802'");
  ASSERT_TRUE(rows->Step());
  EXPECT_EQ(rows->Text(0), "0002");
}

TEST_F(SqlcipherDatabasesTest, WeOpenWhatThePassphraseMade) {
  {
    Connection plain(path_, OpenMode::create, "nurvex");
    plain.Execute("CREATE TABLE tblParameters (pn TEXT, value TEXT)");
    plain.Execute("INSERT INTO tblParameters VALUES ('Pn408', '0001')");
  }
  EXPECT_EQ(ValueOf("Pn408"), "0001");
}

TEST_F(SqlcipherDatabasesTest, RefusesAFileWithItsReason) {
  MakeFile(400);
  EXPECT_EQ(OpenFailure("other"), Kind::password);

  const auto whole = fs::file_size(path_);
  Overwrite(static_cast<std::streamoff>(whole / 2), "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  MakeFile(400);
  for (const auto size : {whole - 40, whole / 2, whole / 2 + 100, std::uintmax_t{10}}) {
    fs::resize_file(path_, size);
    EXPECT_EQ(OpenFailure(), Kind::damaged) << size;
  }
  fs::resize_file(path_, 0);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(fs::file_size(path_), 0U) << "an empty file must not become a database";

  fs::remove(path_);
  EXPECT_EQ(OpenFailure(), Kind::missing);
  EXPECT_FALSE(fs::exists(path_));
  std::ofstream(path_) << "SQLite format 3" << std::string(4000, '\0');
  EXPECT_EQ(OpenFailure(), Kind::password);
  std::ofstream(path_) << std::string(5000, 'x');
  EXPECT_EQ(OpenFailure(), Kind::password);
}

TEST_F(SqlcipherDatabasesTest, AFileHasTheWrittenFormWhateverTheEnginesDefaultsAre) {
  MakeFile();
  const Connection plain(path_, OpenMode::create, "nurvex");
  const auto size = plain.Prepare("PRAGMA page_size");
  ASSERT_TRUE(size->Step());
  EXPECT_EQ(size->Number(0), 1024);
  EXPECT_EQ(fs::file_size(path_) % 1024, 0U);
}

TEST_F(SqlcipherDatabasesTest, AProcessThatHoldsKeysLeavesNoCoreFile) {
  rlimit core{};
  ASSERT_EQ(getrlimit(RLIMIT_CORE, &core), 0);
  EXPECT_EQ(core.rlim_cur, 0U);
  EXPECT_EQ(core.rlim_max, 0U);
}

TEST_F(SqlcipherDatabasesTest, TheEngineNeverWritesToTheTerminal) {
  MakeFile();
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  EXPECT_EQ(OpenFailure("other"), Kind::password);
  Overwrite(1500, "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// ---- files of the engine's version 4 defaults

class Version4FileTest : public SqlcipherDatabasesTest {
 protected:
  // A copy of a kept project under the name of a working file, or of a project.
  std::string Take(const std::string& name) {
    const std::string path = folder_.At(name);
    fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path,
                  fs::copy_options::overwrite_existing);
    return path;
  }
  std::string Value(const std::string& path, DatabaseAccess access) {
    const auto rows = databases_.Open(path, kPassword, access)->OpenTable("tblParameters");
    return rows->FindFirst("pn", "Pn81B") ? rows->Text("value") : "(no row)";
  }
};

TEST_F(Version4FileTest, IsReadWithoutBeingTouched) {
  for (const char* const name : {"line1.spj", "line1.tmp"}) {
    const std::string path = Take(name);
    EXPECT_EQ(Value(path, DatabaseAccess::readOnly), "1250.500");
    EXPECT_EQ(fs::file_size(path) % 4096, 0U);
    EXPECT_EQ(folder_.Count(), 1);
    fs::remove(path);
  }
}

TEST_F(Version4FileTest, AWorkingCopyTakesTheWrittenFormBeforeItIsWritten) {
  const std::string path = Take("line1.tmp");
  const auto inode = [&path] {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
  };
  const auto before = inode();
  EXPECT_EQ(Value(path, DatabaseAccess::readOnly), "1250.500");
  {
    const auto database = databases_.Open(path, kPassword, DatabaseAccess::readWrite);
    Write(*database->OpenTable("tblParameters"), "Pn81B", "7.000");
  }
  databases_.Release(path);
  EXPECT_EQ(inode(), before) << "whoever locked it holds it still";
  const Connection plain(path, OpenMode::existing, "nurvex");
  const auto rows = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn81B'");
  ASSERT_TRUE(rows->Step());
  EXPECT_EQ(rows->Text(0), "7.000");
  const auto zeros = plain.Prepare("SELECT value FROM tblParameters WHERE pn='Pn000'");
  ASSERT_TRUE(zeros->Step());
  EXPECT_EQ(zeros->Text(0), "0000") << "text stays text";
}

TEST_F(Version4FileTest, HarmAndAnotherPasswordAreToldApart) {
  fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path_);
  EXPECT_EQ(OpenFailure("other"), Kind::password);
  const auto whole = fs::file_size(path_);
  Overwrite(static_cast<std::streamoff>(whole / 2), "rubbish");
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  fs::copy_file(fs::path(VELMOOR_KEPT_FILES) / "project-0.1.0-passphrase4.spj", path_,
                fs::copy_options::overwrite_existing);
  fs::resize_file(path_, whole - 100);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  fs::resize_file(path_, whole - 4096);
  EXPECT_EQ(OpenFailure(), Kind::damaged);
  EXPECT_EQ(FailureOf([&] { databases_.Open(path_, kPassword, DatabaseAccess::readWrite); }),
            Kind::damaged);
}

// ---- rows

TEST_F(SqlcipherDatabasesTest, RowsComeInTheOrderOfMakingOrOfAColumnAsNumbers) {
  MakeFile(12);  // "order" falls from 120 to 109
  const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readOnly);
  const auto made = database->OpenTable("tblParameters");
  EXPECT_EQ(made->Text("pn"), "Pn800");
  const auto ordered = database->OpenTable("tblParameters", "order");
  EXPECT_EQ(ordered->Text("order"), "109");
  std::string last;
  for (; !ordered->AtEnd(); ordered->MoveNext()) last = ordered->Text("pn");
  EXPECT_EQ(last, "Pn800");
  EXPECT_EQ(database->OpenTable("tblParameters", "value")->Text("value"), "0000");
  EXPECT_EQ(FailureOf([&] { database->OpenTable("tblParameters", "missing"); }), Kind::schema);
  EXPECT_EQ(FailureOf([&] { database->OpenTable("tblMissing"); }), Kind::schema);
  EXPECT_EQ(FailureOf([&] { (void)made->Text("missing"); }), Kind::schema);
}

TEST_F(SqlcipherDatabasesTest, EditsAndNewRowsStayAfterTheClose) {
  MakeFile();
  {
    const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
    const auto rows = database->OpenTable("tblParameters");
    Write(*rows, "Pn801", "0001");
    EXPECT_EQ(rows->Text("value"), "0001");
    rows->AddNew();
    rows->Set("pn", "Pn834");
    rows->Set("value", "a|b'\"\xC3\xA4");
    rows->Update();
    EXPECT_EQ(rows->Text("pn"), "Pn801") << "the set stays where it stood";
    EXPECT_TRUE(rows->FindFirst("pn", "Pn834"));
  }
  databases_.Release(path_);
  EXPECT_EQ(ValueOf("Pn801"), "0001") << "text, not a number";
  EXPECT_EQ(ValueOf("Pn834"), "a|b'\"\xC3\xA4");
  EXPECT_EQ(ValueOf("Pn80"), "(no row)");
}

TEST_F(SqlcipherDatabasesTest, AMoveDropsAnEditAndSearchesSeeChangedKeys) {
  MakeFile();
  const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
  const auto rows = database->OpenTable("tblParameters");
  rows->Edit();
  rows->Set("value", "lost");
  rows->MoveNext();
  EXPECT_EQ(FailureOf([&] { rows->Update(); }), Kind::other);
  rows->MoveFirst();
  EXPECT_EQ(rows->Text("value"), "0000");
  ASSERT_TRUE(rows->FindFirst("pn", "Pn802"));
  rows->Edit();
  rows->Set("pn", "Pn8FF");
  rows->Update();
  EXPECT_FALSE(rows->FindFirst("pn", "Pn802"));
  EXPECT_TRUE(rows->AtEnd());
  EXPECT_TRUE(rows->FindFirst("pn", "Pn8FF"));
}

TEST_F(SqlcipherDatabasesTest, RollbackUndoesSinceTheLastCommit) {
  MakeFile();
  {
    const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
    const auto rows = database->OpenTable("tblParameters");
    Write(*rows, "Pn800", "kept");
    database->Commit();
    Write(*rows, "Pn801", "undone");
    database->Rollback();
    Write(*rows, "Pn802", "after");
  }
  EXPECT_EQ(ValueOf("Pn800"), "kept");
  EXPECT_EQ(ValueOf("Pn801"), "0001");
  EXPECT_EQ(ValueOf("Pn802"), "after");
}

TEST_F(SqlcipherDatabasesTest, NestedOpeningsShareTheFileWithoutBlocking) {
  MakeFile();
  {
    const auto outer = databases_.Open(path_, kPassword, DatabaseAccess::readOnly);
    {
      const auto inner = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
      Write(*inner->OpenTable("tblParameters"), "Pn800", "inner");
      const auto undone = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
      Write(*undone->OpenTable("tblParameters"), "Pn800", "innermost");
      undone->Rollback();
    }
    EXPECT_EQ(outer->OpenTable("tblParameters")->Text("value"), "inner");
    const auto rows = outer->OpenTable("tblParameters");
    rows->Edit();
    rows->Set("value", "x");
    EXPECT_EQ(FailureOf([&] { rows->Update(); }), Kind::forbidden) << "opened for reading";
  }
  EXPECT_EQ(ValueOf("Pn800"), "inner");
}

// ---- the file under a connection that is kept

TEST_F(SqlcipherDatabasesTest, AReplacedOrOverwrittenFileIsSeenAtTheNextOpening) {
  MakeFile();
  const std::string old = path_ + ".old";
  fs::copy_file(path_, old);
  const auto change = [&] {
    const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
    Write(*database->OpenTable("tblParameters"), "Pn800", "new");
  };
  change();
  EXPECT_EQ(ValueOf("Pn800"), "new");
  std::ofstream(path_, std::ios::binary) << std::ifstream(old, std::ios::binary).rdbuf();
  EXPECT_EQ(ValueOf("Pn800"), "0000") << "overwritten in place";
  change();
  fs::rename(old, path_);
  EXPECT_EQ(ValueOf("Pn800"), "0000") << "replaced";
  fs::remove(path_);
  EXPECT_EQ(OpenFailure(), Kind::missing);
}

TEST_F(SqlcipherDatabasesTest, AnotherPasswordIsRefusedThoughTheFileIsOpen) {
  MakeFile();
  ValueOf("Pn800");
  EXPECT_EQ(FailureOf([&] { databases_.Open(path_, "other", DatabaseAccess::readOnly); }),
            Kind::password);
}

TEST_F(SqlcipherDatabasesTest, AnotherProcessThatWritesMakesTheFileBusy) {
  MakeFile();
  Connection other(path_, OpenMode::existing, "nurvex");
  other.Execute("BEGIN EXCLUSIVE");
  EXPECT_EQ(OpenFailure(), Kind::busy);
}

TEST_F(SqlcipherDatabasesTest, AReadOnlyFolderIsReadAndRefusesToBeWritten) {
  MakeFile();
  fs::permissions(folder_.Path(), fs::perms(0555));
  fs::permissions(path_, fs::perms(0666));
  // The superuser may write anywhere, so the test becomes somebody else for a while.
  const bool superuser = geteuid() == 0;
  ASSERT_TRUE(!superuser || seteuid(65534) == 0);
  EXPECT_EQ(ValueOf("Pn800"), "0000");
  EXPECT_EQ(FailureOf([&] {
              const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
              Write(*database->OpenTable("tblParameters"), "Pn800", "new");
              database->Commit();
            }),
            Kind::forbidden);
  EXPECT_EQ(ValueOf("Pn800"), "0000");
  ASSERT_TRUE(!superuser || seteuid(0) == 0);
}

TEST_F(SqlcipherDatabasesTest, AFullDiskIsToldAndTheFileStaysWhole) {
  MakeFile();
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
  const auto rows = database->OpenTable("tblParameters");
  const rlimit small{fs::file_size(path_) + 2048, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_EQ(FailureOf([&] {
              Write(*rows, "Pn800", std::string(100000, 'x'));
              database->Commit();
            }),
            Kind::full);
  setrlimit(RLIMIT_FSIZE, &before);
  database->Rollback();
  databases_.Release(path_);
  SqlcipherDatabases fresh;
  EXPECT_EQ(fresh.Open(path_, kPassword, DatabaseAccess::readOnly)
                ->OpenTable("tblParameters")
                ->Text("value"),
            "0000");
}

// ---- what a file may hold

// A file of ours into which somebody who has the password put more.
class ForeignContentsTest : public SqlcipherDatabasesTest {
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

TEST_F(ForeignContentsTest, AnythingButAPlainTableIsRefusedByItsName) {
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

TEST_F(ForeignContentsTest, ARecordOfTheSchemaThatLiesIsRefused) {
  for (const char* const lie : {"sql='CREATE TABLE tblOther (pn TEXT)'", "sql='SELECT 1'",
                                "sql=NULL", "rootpage=1", "type='view'", "rootpage=70000"}) {
    SCOPED_TRACE(lie);
    Plant(std::string("PRAGMA writable_schema=ON;UPDATE sqlite_master SET ") + lie);
    EXPECT_NE(Refusal(), "");
  }
}

TEST_F(ForeignContentsTest, AFileLargerThanAnyOfOursIsRefusedUnread) {
  MakeFile();
  fs::resize_file(path_, 4 * 1024 * 1024 + 1024);
  EXPECT_THAT(Refusal(), testing::HasSubstr("larger than any file"));
  MakeFile(17000);
  EXPECT_THAT(Refusal(), testing::HasSubstr("tblParameters has more records"));
}

TEST_F(ForeignContentsTest, APipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  EXPECT_NE(Refusal(), "");
}

TEST_F(ForeignContentsTest, TheEngineDoesOnlyWhatOurStatementsAsk) {
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

TEST_F(ForeignContentsTest, AStatementWithoutAnEndIsEnded) {
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

TEST_F(SqlcipherDatabasesTest, AnEditThatFindsNoRecordIsToldAndNotStored) {
  MakeFile();
  const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readWrite);
  const auto rows = database->OpenTable("tblParameters");
  {
    const auto builder = databases_.Extend(path_, kPassword);
    builder->DropTable("tblParameters");
    builder->CreateTable("tblParameters", {{"pn"}, {"value"}, {"order", true}});
    builder->Finish();
  }
  EXPECT_EQ(FailureOf([&] { Write(*rows, "Pn801", "new"); }), Kind::other);
}

// ---- construction

TEST_F(SqlcipherDatabasesTest, AnUnfinishedFileLeavesTheOldOne) {
  MakeFile();
  databases_.Create(path_, kPassword)->CreateTable("tblOther", {{"a"}});
  EXPECT_EQ(ValueOf("Pn800"), "0000");
  EXPECT_EQ(folder_.Count(), 1);
}

TEST_F(SqlcipherDatabasesTest, ExtendAddsAndDropsTablesOrNothing) {
  MakeFile();
  {
    const auto builder = databases_.Extend(path_, kPassword);
    builder->DropTable("tblParameters");
    builder->CreateTable("tblUnfinished", {{"a"}});
  }
  EXPECT_EQ(ValueOf("Pn800"), "0000");
  {
    const auto builder = databases_.Extend(path_, kPassword);
    builder->DropTable("tblParameters");
    builder->DropTable("tblNone");
    builder->CreateTable("tblNew", {{"a"}});
    builder->Insert("tblNew", {""});
    builder->Finish();
  }
  const auto database = databases_.Open(path_, kPassword, DatabaseAccess::readOnly);
  EXPECT_THAT(database->Tables(), testing::ElementsAre(TableDefinition{"tblNew", {{"a"}}}));
  EXPECT_EQ(database->OpenTable("tblNew")->Text("a"), "");
}

TEST(EngineVersionsTest, NameTheEngineAndItsCiphers) {
  EXPECT_THAT(EngineVersions(), testing::ElementsAre(testing::StartsWith("SQLCipher "),
                                                     testing::StartsWith("SQLite 3."),
                                                     testing::StartsWith("OpenSSL ")));
}

}  // namespace
}  // namespace velmoor::sqlcipher
