// Rows, transactions, and the file under a connection that is kept.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "DatabaseFile.h"

namespace velmoor::sqlcipher {
namespace {

using SqlcipherDatabasesTest = DatabaseFile;

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
