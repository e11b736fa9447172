// Project files of every format and of every engine that ever wrote them, kept in tests/kept as
// they were made, opened and saved by the program as it is now.
#include <gtest/gtest.h>

#include <fstream>

#include "platform/sqlcipher/Engine.h"
#include "project/ProjectCompare.h"
#include "project/data/ProjectFormat.h"
#include "project/data/Schema.h"
#include "support/ProjectWorld.h"

namespace velmoor {
namespace {

// All hold what tests/kept/README.md tells.
constexpr const char* kKept[] = {"project-0.1.0.spj", "project-0.1.0-engine4.spj",
                                 "project-0.1.0-passphrase4.spj"};

class KeptFile : public ProjectWorld {
 protected:
  // A copy of the kept file, to be worked on.
  std::string Take(const std::string& name) {
    const std::string path = world.folder.At(name);
    world.files.WriteDurably(path, world.files.ReadAll(JoinPath(VELMOOR_KEPT_FILES, name)));
    return path;
  }
  std::string Setting(const std::string& path, std::string_view name) {
    const auto database = OpenForReading(path);
    const auto rows = database->OpenTable(schema::Misc::kTable);
    return rows->FindFirst(schema::Misc::kPropertyName, name) ? rows->Text(schema::Misc::kValue)
                                                              : "(none)";
  }
  // Changes one row of a table in the file; an empty value deletes nothing and adds the row.
  static void Put(const std::string& path, std::string_view table, std::string_view key,
                  std::string_view name, std::string_view column, std::string_view value) {
    const auto database = OpenForWriting(path);
    const auto rows = database->OpenTable(table);
    if (rows->FindFirst(key, name)) {
      rows->Edit();
    } else {
      rows->AddNew();
      rows->Set(key, name);
    }
    rows->Set(column, value);
    rows->Update();
    database->Commit();
  }
  void PutFormat(const std::string& path, std::string_view value) {
    Put(path, schema::Misc::kTable, schema::Misc::kPropertyName, schema::Misc::kFormat,
        schema::Misc::kValue, value);
    world.databases.Release(path);
  }
  std::string Parameter(std::string_view pn, std::string_view column) {
    const auto database = OpenForReading(project().ProjectDatabasePath());
    const auto rows = database->OpenTable(schema::Parameters::kTable);
    return rows->FindFirst(schema::Parameters::kPn, pn) ? rows->Text(column) : "(none)";
  }
};

TEST_F(KeptFile, OpensAsItWasLeft) {
  for (const char* const name : kKept) {
    SCOPED_TRACE(name);
    const std::string path = Take(name);
    const std::string before = world.files.ReadAll(path);
    ASSERT_EQ(session.Open(path), "");
    EXPECT_FALSE(project().NeedsSaving());
    EXPECT_EQ(project().Position().Text(1, clsHX7Position::label), "home");
    EXPECT_EQ(project().Position().Text(2, clsHX7Position::event), "T500");
    EXPECT_EQ(project().Zone().Text(2, clsHX7Zone::lower), "-10.000");
    EXPECT_EQ(project().Jog().Text(2, clsHX7Jog::speed), "5.000");
    EXPECT_EQ(Parameter("Pn81B", schema::Parameters::kValue), "1250.500");
    EXPECT_EQ(Parameter("Pn81B", schema::Parameters::kControllerValue), "1250500");
    EXPECT_EQ(Parameter("Pn81B", schema::Parameters::kDirty), "1") << "still to be downloaded";
    EXPECT_EQ(Parameter("Pn81C", schema::Parameters::kDirty), "0");
    EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000);
    EXPECT_EQ(world.files.ReadAll(path), before) << "opening writes nothing";
  }
  EXPECT_TRUE(world.boxes.shown.empty());
}

TEST_F(KeptFile, SavingWritesTheOneForm) {
  for (const char* const name : kKept) {
    SCOPED_TRACE(name);
    const std::string path = Take(name);
    ASSERT_EQ(session.Open(path), "");
    project().Save();
    session.Close();
    // The pages as docs/file-format.md tells them, and the password as any tool types it.
    sqlcipher::Connection tool(path, sqlcipher::OpenMode::create, "nurvex");
    const auto size = tool.Prepare("PRAGMA page_size");
    ASSERT_TRUE(size->Step());
    EXPECT_EQ(size->Number(0), 1024);
    EXPECT_EQ(Setting(path, schema::Misc::kFormat), "2");
    for (const PartComparison& part : CompareProjects(world.folder.At(kKept[0]), path)) {
      EXPECT_GT(part.rows, 0U);
      EXPECT_TRUE(part.differences.empty()) << part.part;
    }
  }
}

TEST_F(KeptFile, AColumnThatItsFormatLackedComesFromTheTemplateAndIsMarkedToDownload) {
  using schema::Jog;
  const std::string path = Take(kKept[0]);
  const std::string lacking(Jog::kBit[3]);
  auto columns = schema::ProjectTableNamed(Jog::kTable).definition.columns;
  std::erase_if(columns, [&](const ColumnDefinition& column) { return column.name == lacking; });
  std::vector<std::vector<std::string>> records;
  {
    const auto database = OpenForReading(path);
    const auto rows = database->OpenTable(Jog::kTable);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      auto& record = records.emplace_back();
      for (const ColumnDefinition& column : columns) record.push_back(rows->Text(column.name));
    }
  }
  const auto builder = world.databases.Extend(path, schema::kPassword);
  builder->DropTable(Jog::kTable);
  builder->CreateTable(Jog::kTable, columns);
  for (const auto& record : records) builder->Insert(Jog::kTable, record);
  builder->Finish();
  world.databases.Release(path);

  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(project().Jog().Text(2, clsHX7Jog::speed), "5.000");
  EXPECT_EQ(project().Jog().DirtyCell(2), "1");
  project().Save();
  session.Close();
  const auto database = OpenForReading(path);
  const auto rows = database->OpenTable(Jog::kTable);
  rows->FindFirst(Jog::kJog, "9");
  EXPECT_EQ(rows->Text(lacking), "1");
  EXPECT_EQ(rows->Text(Jog::kDirty), "1");
}

TEST_F(KeptFile, WhatIsNewInTheTemplateIsAddedAndMarkedToDownload) {
  const std::string path = Take(kKept[0]);
  // As if the file had been made before there was such a parameter.
  Put(path, schema::Parameters::kTable, schema::Parameters::kPn, "Pn834", schema::Parameters::kPn,
      "Pn8FF");
  world.databases.Release(path);
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(Parameter("Pn834", schema::Parameters::kValue), "Normally open");
  EXPECT_EQ(Parameter("Pn834", schema::Parameters::kControllerValue), "0");
  EXPECT_EQ(Parameter("Pn834", schema::Parameters::kDirty), "1");
  EXPECT_EQ(Parameter("Pn8FF", schema::Parameters::kPn), "Pn8FF") << "nothing is thrown away";
  const ParameterRow row = project().Editor().Describe(project().Editor().FindRow("Pn834"));
  EXPECT_EQ(row.value, "Normally open");
}

// What a later version may have added: a column, a table, a setting, a parameter.
class ProjectOfALaterVersion : public KeptFile {
 protected:
  ProjectOfALaterVersion() {
    path = world.MakeProject("line1.spj");
    Plant({"UPDATE tblMisc SET value='3' WHERE PropertyName='format'",
           "ALTER TABLE tblZone ADD COLUMN Hysteresis TEXT",
           "CREATE TABLE tblCam (ID INTEGER, Angle TEXT)", "INSERT INTO tblCam VALUES(1,'90')",
           "INSERT INTO tblParameters VALUES('Pn8FF','7','7','1','')",
           "UPDATE tblZone SET LowerLimit='1.000', ControllerLowerLimit='1000', "
           "UpperLimit='2.000', ControllerUpperLimit='2000', Hysteresis='5' WHERE Zone=4"});
  }
  void Plant(const std::vector<std::string>& statements) const {
    sqlcipher::Connection tool(path, sqlcipher::OpenMode::create, "nurvex");
    for (const std::string& statement : statements) tool.Execute(statement);
  }
  std::string path;
};

TEST_F(ProjectOfALaterVersion, IsReadByChoiceAndNothingOfItIsWritten) {
  const std::string before = world.files.ReadAll(path);
  EXPECT_EQ(session.Open(path),
            "Project line1.spj was made by a newer version of Velmoor!\r"
            "The file's format is 3, and this version knows 2 at most.");
  EXPECT_FALSE(project().IsReadOnly());
  ASSERT_EQ(session.Open(path, NewerProject::readOnly), "");
  EXPECT_TRUE(project().IsReadOnly());
  clsHX7Zone& zone = project().Zone();
  EXPECT_EQ(zone.Text(5, clsHX7Zone::lower), "1.000");
  // An Apply, as the window and the shell do it.
  zone.SetText(5, clsHX7Zone::lower, "0.500");
  EXPECT_FALSE(zone.ChangeAccepted());
  EXPECT_EQ(world.boxes.TakeTexts(),
            std::vector<std::string>{"clsZone.SaveToDB: The file's format is 3, and this version "
                                     "knows 2 at most."});
  EXPECT_EQ(zone.Stored(5).cells[clsHX7Zone::lower], "1.000");
  EXPECT_FALSE(project().NeedsSaving());
  EXPECT_THROW(project().Save(), FileError);
  EXPECT_THROW(project().SaveAs(world.folder.At("line2.spj")), FileError);
  EXPECT_FALSE(world.files.Exists(world.folder.At("line2.spj")));
  session.Close();
  EXPECT_EQ(world.files.ReadAll(path), before);
}

TEST_F(ProjectOfALaterVersion, IsNeverDownloaded) {
  const std::string before = world.files.ReadAll(path);
  ASSERT_EQ(session.Open(path, NewerProject::readOnly), "");
  session.GoOnline();
  const auto lines = amplifier().Journal().size();
  EXPECT_FALSE(project().Download());
  EXPECT_FALSE(project().DownloadAll());
  EXPECT_FALSE(project().DownloadParts({Tool::zone}));
  EXPECT_EQ(amplifier().Journal().size(), lines);
  EXPECT_EQ(world.boxes.TakeTexts(),
            std::vector<std::string>(
                3,
                "Project line1.spj was made by a newer version of Velmoor and is open for "
                "reading only.\rIt may hold what this version does not know, so it cannot be "
                "downloaded."));
  EXPECT_EQ(world.files.ReadAll(path), before);
}

TEST_F(ProjectOfALaterVersion, IsRefusedWhereItCannotBeShown) {
  const std::pair<const char*, const char*> cases[] = {
      {"DELETE FROM tblParameters WHERE pn='Pn834'",
       "The file lacks records without which it cannot be shown:\rParameters: Pn834"},
      {"UPDATE tblZone SET Zone=32 WHERE Zone=31", "tblZone has a record of no known number."},
      {"ALTER TABLE tblJog RENAME TO tblSpeeds", "There is no table tblJog."},
  };
  for (const auto& [statement, reason] : cases) {
    SCOPED_TRACE(statement);
    Plant({statement});
    EXPECT_EQ(session.Open(path, NewerProject::readOnly),
              std::string("Error reading databases!\r") + reason);
    session.Close();
  }
}

TEST_F(KeptFile, AFormatThatIsNoneIsADamagedFile) {
  for (const char* const text : {"", "x", "0", "1", "-2", "99999999999999999999"}) {
    const std::string path = world.MakeProject("line1.spj");
    PutFormat(path, text);
    EXPECT_EQ(session.Open(path).find("Error reading databases!\r"), 0U) << text;
    session.Close();
  }
}

TEST_F(KeptFile, ATemplateOfNowBearsTheFormatOfNow) {
  const std::string path = world.MakeProject("line1.spj");
  EXPECT_EQ(Setting(path, schema::Misc::kFormat), std::to_string(schema::kFormatVersion));
}

}  // namespace
}  // namespace velmoor
