// Project files that somebody who has the password made to do harm: they are refused by what they
// hold, and nothing of them happens.
#include <gmock/gmock.h>

#include <filesystem>

#include "platform/sqlcipher/Engine.h"
#include "project/data/Schema.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class ForeignContents : public ProjectWorld {
 protected:
  // A new project on which the statements were run with another tool.
  std::string Plant(const std::vector<std::string>& statements) {
    std::string path = world.MakeProject("line1.spj");
    sqlcipher::Connection tool(path, sqlcipher::OpenMode::create, "nurvex");
    for (const std::string& statement : statements) tool.Execute(statement);
    return path;
  }
  std::string Stored(std::string_view table, std::string_view key, std::string_view value,
                     std::string_view column) {
    const auto database = OpenForReading(project().ProjectDatabasePath());
    const auto records = database->OpenTable(table);
    return records->FindFirst(key, value) ? records->Text(column) : "(none)";
  }
};

TEST_F(ForeignContents, AreRefusedWithTheReasonAndTheFileStays) {
  const struct {
    std::vector<std::string> statements;
    const char* reason;
  } cases[] = {
      {{"ALTER TABLE tblMisc RENAME TO m",
        "CREATE VIEW tblMisc AS SELECT rtreenode(1, x'0000ffff') AS value, '' AS PropertyName"},
       "the file holds \"tblMisc\", which is no plain table"},
      {{"DROP TABLE tblMisc",
        "CREATE VIEW tblMisc AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) "
        "SELECT x AS PropertyName, x AS value FROM c"},
       "the file holds \"tblMisc\", which is no plain table"},
      {{"CREATE TRIGGER t AFTER UPDATE ON tblParameters WHEN new.pn='Pn100' BEGIN UPDATE "
        "tblParameters SET value='777', ControllerValue='777' WHERE pn='Pn101'; END"},
       "the file holds \"t\", which is no plain table"},
      {{"CREATE TRIGGER i BEFORE UPDATE ON tblParameters BEGIN SELECT RAISE(IGNORE); END"},
       "the file holds \"i\", which is no plain table"},
      {{"CREATE INDEX x ON tblParameters(pn)"}, "the file holds \"x\", which is no plain table"},
      {{"CREATE TABLE tblMore (a TEXT)"}, "The file holds a table that is none of a project."},
      {{"DROP TABLE tblZone"}, "There is no table tblZone."},
      {{"DROP TABLE tblZone", "CREATE TABLE tblZone (Zone INTEGER, LowerLimit TEXT)"},
       "tblZone has other columns than in a project."},
      {{"UPDATE tblPosition SET ID=129 WHERE ID=7"},
       "tblPosition has a record of no known number."},
      {{"UPDATE tblPosition SET ID='x' WHERE ID=7"},
       "tblPosition has a record of no known number."},
      {{"UPDATE tblJog SET Jog=NULL WHERE Jog=7"}, "tblJog has a record of no known number."},
      {{"INSERT INTO tblZone SELECT * FROM tblZone WHERE Zone=3"},
       "tblZone has two records of one name."},
      {{"INSERT INTO tblParameters SELECT * FROM tblParameters WHERE pn='Pn100'"},
       "tblParameters has two records of one name."},
      {{"INSERT INTO tblMisc WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT "
        "5000) SELECT x, x FROM c"},
       "tblMisc has too many records."},
      {{"UPDATE tblPosition SET Label=hex(zeroblob(2049)) WHERE ID=7"},
       "A text in the column Label of tblPosition is too long."},
  };
  for (const auto& [statements, reason] : cases) {
    SCOPED_TRACE(statements.back());
    const std::string path = Plant(statements);
    const std::string before = world.files.ReadAll(path);
    const auto written = fs::last_write_time(path);
    EXPECT_EQ(session.Open(path), std::string("Error reading databases!\r") + reason);
    session.Close();
    EXPECT_EQ(world.files.ReadAll(path), before);
    EXPECT_EQ(fs::last_write_time(path), written);
    EXPECT_FALSE(fs::exists(world.folder.At("line1.tmp")));
  }
  EXPECT_TRUE(world.boxes.shown.empty());
}

TEST_F(ForeignContents, MissingRecordsAreLaidAnewMarkedAndTold) {
  const std::string path =
      Plant({"DELETE FROM tblPosition WHERE ID>3", "DELETE FROM tblZone WHERE Zone=0",
             "DELETE FROM tblMisc WHERE PropertyName='homing offset'"});
  ASSERT_EQ(session.Open(path), "");
  ASSERT_EQ(world.boxes.shown.size(), 1U);
  EXPECT_EQ(world.boxes.shown[0].text,
            "Project line1.spj lacked records, which are as in a new project now and marked to "
            "download:\rSettings: homing offset\rIndex table: 4, 5, 6, 7, 8 and 120 more\rZone "
            "table: 0");
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_EQ(project().Position().DirtyCell(3), "0");
  EXPECT_EQ(project().Position().DirtyCell(4), "1");
  std::string text = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
  for (int i = 0; i < 10; ++i) text += "s" + std::to_string(i) + ",I+1,10,-,1,:::::,IT0,1,END\n";
  ASSERT_TRUE(ImportCsv(project(), project().Position(), text).empty());
  ASSERT_TRUE(project().Position().ChangeAccepted());
  EXPECT_EQ(Stored(schema::Position::kTable, schema::Position::kId, "10", schema::Position::kLabel),
            "s9");
  project().Save();
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(world.boxes.shown.size(), 1U) << "the saved file has them";
  EXPECT_EQ(project().Position().Text(10, clsHX7Position::label), "s9");
  EXPECT_EQ(Stored(schema::Zone::kTable, schema::Zone::kZone, "0", schema::kMark), "1");
  EXPECT_EQ(Stored(schema::Misc::kTable, schema::Misc::kPropertyName, "homing offset",
                   schema::Misc::kValue),
            "0");
}

// The marks of a download go to the project's file, which still lacks the record.
TEST_F(ForeignContents, MarksFindTheirRecordsInAFileThatLacksOne) {
  const std::string path = Plant({"DELETE FROM tblPosition WHERE ID=1"});
  ASSERT_EQ(session.Open(path), "");
  ASSERT_TRUE(ImportCsv(project(), project().Position(),
                        "label,position,speed,rdst,rspd,pout,event,loop,next\n"
                        "a,I+1,10,-,1,:::::,IT0,1,b\nb,I+2,10,-,1,:::::,IT0,1,END\n")
                  .empty());
  ASSERT_TRUE(project().Position().ChangeAccepted());
  session.GoOnline();
  EXPECT_TRUE(project().Download());
  const auto database = OpenForReading(path);
  const auto records = database->OpenTable(schema::Position::kTable);
  ASSERT_TRUE(records->FindFirst(schema::Position::kId, "2"));
  EXPECT_EQ(records->Text(schema::kMark), "1");
  ASSERT_TRUE(records->FindFirst(schema::Position::kId, "3"));
  EXPECT_EQ(records->Text(schema::kMark), "0");
}

}  // namespace
}  // namespace velmoor
