#include <fstream>

#include "project/data/Schema.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

const char* const kProgramme =
    "label,position,speed,rdst,rspd,pout,event,loop,next\n"
    "start,A+0,50,-,1,:::::,IT0,1,out\n"
    "out,I+120.5,50,5,2.5,A::::,NT100,3,back\n"
    "back,A+0,80,-,1,N::::,T250,1,start\n";

class ProjectFile : public ProjectWorld {
 protected:
  void PutProgramme(const std::string& text = kProgramme) {
    ASSERT_TRUE(ImportCsv(project(), project().Position(), text).empty());
    ASSERT_TRUE(project().Position().ChangeAccepted());
  }
  std::string Bytes(const std::string& path) { return world.files.ReadAll(path); }
};

// ---- opening

TEST_F(ProjectFile, OpensOnAWorkingCopyThatGoesWithTheProject) {
  const std::string path = OpenNew("line1.spj");
  const std::string working = world.folder.At("line1.tmp");
  EXPECT_EQ(project().ProjectDatabasePath(), working);
  EXPECT_TRUE(world.files.Exists(working));
  EXPECT_EQ(project().Title(), "line1");
  EXPECT_FALSE(project().NeedsSaving());
  EXPECT_EQ(project().WhatIsDirty(), "");
  EXPECT_EQ(project().Resolution(), 3);
  EXPECT_EQ(project().SpeedUnits(), "mm/sec");
  EXPECT_DOUBLE_EQ(project().ConversionForSpeed(), 60);
  EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000);
  EXPECT_EQ(project().MechanicalSystem().B_Value(), 8192);
  session.Close();
  EXPECT_FALSE(world.files.Exists(working));
}

TEST_F(ProjectFile, TheEndingIsCutByCharacters) {
  OpenNew("line1.spjx");
  EXPECT_EQ(project().ProjectDatabasePath(), world.folder.At("line1.stmp"));
  EXPECT_EQ(project().Title(), "line1.");
}

TEST_F(ProjectFile, RefusalsTellTheReasonAndLeaveTheFileAlone) {
  const std::string missing = world.folder.At("none.spj");
  EXPECT_EQ(session.Open(missing), "Project file none.spj cannot be found at " + missing + "!");

  const std::string itself = world.MakeProject("own.tmp");
  EXPECT_EQ(session.Open(itself), "Cannot create temporary project file for project own.tmp!");
  session.Close();
  EXPECT_TRUE(world.files.Exists(itself))
      << "a project must not be deleted as its own working copy";

  const std::string whole = Bytes(itself);
  const std::pair<const char*, std::string> bad[] = {{"empty.spj", ""},
                                                     {"foreign.spj", std::string(4096, 'x')},
                                                     {"cut.spj", whole.substr(0, whole.size() / 2)},
                                                     {"text.spj", "not a database"}};
  for (const auto& [name, bytes] : bad) {
    const std::string path = world.folder.At(name);
    world.files.WriteDurably(path, bytes);
    EXPECT_EQ(session.Open(path), "Error reading databases!") << name;
    session.Close();
    EXPECT_EQ(Bytes(path), bytes) << name;
  }
  EXPECT_TRUE(world.boxes.shown.empty()) << "one text, no stack of boxes";
}

TEST_F(ProjectFile, AProjectThatAnotherProgramHoldsIsRefused) {
  const std::string path = world.MakeProject("held.spj");
  // A lock of another open file description is what another process has.
  const auto held = world.files.Lock(world.folder.At("held.tmp"));
  ASSERT_TRUE(held);
  EXPECT_EQ(session.Open(path), "Project held.spj is in use by another program!");
  session.Close();
  EXPECT_TRUE(world.files.Exists(world.folder.At("held.tmp"))) << "it belongs to the other";
}

TEST_F(ProjectFile, AMissingCatalogueIsToldBeforeAnythingElse) {
  const std::string path = world.MakeProject("a.spj");
  session.SetTHDatabasePath("/nowhere/tempIdeInfo.mdb");
  EXPECT_EQ(session.Open(path), "Helix VII database cannot be found at /nowhere/tempIdeInfo.mdb!");
}

TEST_F(ProjectFile, AStaleWorkingCopyAndItsJournalAreLost) {
  const std::string path = world.MakeProject("a.spj");
  world.files.WriteDurably(world.folder.At("a.tmp"), "left by a crash");
  world.files.WriteDurably(world.folder.At("a.tmp-journal"), "left by a crash");
  EXPECT_EQ(session.Open(path), "");
  PutProgramme();
  project().Save();
  EXPECT_EQ(session.Open(path), "");
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::label), "out");
}

// ---- saving

TEST_F(ProjectFile, TheFileChangesAtSaveAndNotBefore) {
  const std::string path = OpenNew("a.spj");
  const std::string before = Bytes(path);
  PutProgramme();
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_TRUE(project().ProjectNeedsSaving());
  EXPECT_EQ(project().WhatIsDirty(), "Index Position table");
  EXPECT_EQ(Bytes(path), before);
  project().Save();
  EXPECT_FALSE(project().NeedsSaving());
  EXPECT_FALSE(project().ProjectNeedsSaving());
  EXPECT_NE(Bytes(path), before);
}

TEST_F(ProjectFile, WorkThatWasSavedButNotDownloadedIsOfferedAgain) {
  const std::string path = OpenNew("a.spj");
  PutProgramme();
  project().Save();
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(project().WhatIsDirty(), "Index Position table");
  EXPECT_EQ(project().GetNumberOfNewDownloads(), 3);
  EXPECT_FALSE(project().NeedsSaving());
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::position), "I+120.500");
  EXPECT_EQ(project().Position().DirtyCell(2), "1");
  EXPECT_EQ(project().Position().DirtyCell(4), "0");
}

TEST_F(ProjectFile, SaveAsGoesOnUnderTheNewNameAndStillNeedsSaving) {
  const std::string path = OpenNew("old.spj");
  const std::string before = Bytes(path);
  PutProgramme();
  int raised = 0;
  const Connection savedAs = project().ProjectSavedAs.Connect([&] { ++raised; });
  const std::string other = world.folder.At("new.spj");
  project().SaveAs(other);
  EXPECT_EQ(raised, 1);
  EXPECT_EQ(project().FileName(), other);
  EXPECT_EQ(project().ProjectDatabasePath(), world.folder.At("new.tmp"));
  EXPECT_FALSE(world.files.Exists(world.folder.At("old.tmp")));
  EXPECT_TRUE(project().NeedsSaving()) << "on purpose";
  EXPECT_EQ(Bytes(path), before) << "the old project stays as it was";
  EXPECT_THROW(project().SaveAs(world.folder.At("bad.tmp")), FileError);
  EXPECT_EQ(project().FileName(), other);
  project().SaveAs(other);
  EXPECT_TRUE(world.files.Exists(world.folder.At("new.tmp")));
  session.Close();
  EXPECT_FALSE(world.files.Exists(world.folder.At("new.tmp")));
}

TEST_F(ProjectFile, ASaveThatFailsKeepsTheNeedAndTheOldFile) {
  OpenNew("a.spj");
  PutProgramme();
  const std::string before = Bytes(world.folder.At("a.spj"));
  std::filesystem::remove(world.folder.At("a.tmp"));
  EXPECT_THROW(project().Save(), FileError);
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_EQ(Bytes(world.folder.At("a.spj")), before);
}

// ---- flags

TEST_F(ProjectFile, WhatIsDirtyNamesToolsInItsOrder) {
  OpenNew("a.spj");
  project().Jog().SetIsDirty(true);
  EXPECT_EQ(project().WhatIsDirty(), "Jog table");
  project().Zone().SetIsDirty(true);
  project().MechanicalSystem().SetIsDirty(true);
  project().Homing().SetIsDirty(true);
  EXPECT_EQ(project().WhatIsDirty(), "Mechanical System, Homing parameters, Jog table, Zone table");
  project().ResetAllIsDirty();
  EXPECT_EQ(project().WhatIsDirty(), "");
  project().SetAllIsDirty();
  EXPECT_EQ(project().WhatIsDirty(), "All parameters, Index Position table, Jog table, Zone table");
}

// ---- a change of machine

class MachineChange : public ProjectFile {
 protected:
  std::string Record(std::string_view table, std::string_view key, const std::string& value,
                     std::string_view field) {
    const auto database = OpenForReading(project().ProjectDatabasePath());
    const auto records = database->OpenTable(table);
    EXPECT_TRUE(records->FindFirst(key, value)) << value;
    return records->Text(field);
  }
  std::string Parameter(const std::string& strPn) {
    using schema::Parameters;
    return Record(Parameters::kTable, Parameters::kPn, strPn, Parameters::kControllerValue);
  }
  // Commits the machine at another resolution.
  void ChangeResolutionTo(const std::string& digits, bool systemToo = false) {
    MechanicalSystemEdit edit;
    project().MechanicalSystem().GetBlockMatrix(edit.rows);
    const int row = edit.rows.FindRow("Pn82D");
    edit.rows.Set(row, Column::value, digits);
    edit.rows.Set(row, Column::dirty, "1");
    edit.isDirty = edit.resolutionDirty = true;
    edit.systemDirty = systemToo;
    project().MechanicalSystem().ChangeAccepted(edit);
  }
};

TEST_F(MachineChange, ANewResolutionKeepsTheNumbersAndChangesTheCounts) {
  OpenNew("a.spj");
  PutProgramme();
  ASSERT_TRUE(ImportCsv(project(), project().Zone(), "zone,lower,upper\n3,1.5,2.5\n").empty());
  ASSERT_TRUE(project().Zone().ChangeAccepted());
  ASSERT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n2,10\n").empty());
  ASSERT_TRUE(project().Jog().ChangeAccepted());
  ChangeResolutionTo("2");
  EXPECT_EQ(project().Resolution(), 2);
  EXPECT_DOUBLE_EQ(project().ConversionForDistance(), 100);
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::position), "I+120.50");
  EXPECT_EQ(project().Zone().Text(4, clsHX7Zone::upper), "2.50");
  using schema::Position;
  EXPECT_EQ(Record(Position::kTable, Position::kId, "2", Position::kControllerPosition), "I+12050");
  EXPECT_EQ(Record(Position::kTable, Position::kId, "2", Position::kControllerSpeed), "300");
  EXPECT_EQ(
      Record(schema::Zone::kTable, schema::Zone::kZone, "3", schema::Zone::kControllerUpperLimit),
      "250");
  EXPECT_EQ(Record(schema::Jog::kTable, schema::Jog::kJog, "2", schema::Jog::kControllerValue),
            "60");
  EXPECT_EQ(project().WhatIsDirty(),
            "Mechanical System, All parameters, Over Travel parameters, Homing parameters, Index "
            "Position table, Jog table, Zone table");
  EXPECT_TRUE(project().NeedsSaving());
}

TEST_F(MachineChange, AValueBeyondTheCountsIsReplacedByTheLimitAndNamed) {
  OpenNew("a.spj");
  ASSERT_TRUE(ImportCsv(project(), project().Zone(), "zone,lower,upper\n1,0,99999.999\n").empty());
  ASSERT_TRUE(project().Zone().ChangeAccepted());
  std::string items;
  const Connection told =
      project().ResolutionDataInvalidated.Connect([&](const std::string& list) { items = list; });
  ChangeResolutionTo("4");
  EXPECT_EQ(project().Zone().Text(2, clsHX7Zone::upper), "9999.9999");
  EXPECT_NE(items.find("Zone Table"), std::string::npos) << items;
  EXPECT_EQ(items.find("Jog Table"), std::string::npos) << items;
  EXPECT_FALSE(project().Zone().DataInvalidated());
}

TEST_F(MachineChange, ANewSystemClearsIndexAndZonesAndKeepsTheJogTexts) {
  OpenNew("a.spj");
  PutProgramme();
  ASSERT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n2,10\n").empty());
  ASSERT_TRUE(project().Jog().ChangeAccepted());
  ChangeResolutionTo("2", true);
  EXPECT_TRUE(project().Position().IsBlank(1));
  EXPECT_EQ(project().Position().GetNumberOfNewRows(), 128);
  EXPECT_EQ(project().Zone().GetNumberOfNewRows(), 32);
  EXPECT_EQ(project().Jog().Text(3, clsHX7Jog::speed), "10.00");
  EXPECT_EQ(Record(schema::Jog::kTable, schema::Jog::kJog, "2", schema::Jog::kControllerValue),
            "60");
}

TEST_F(MachineChange, NewGearTermsMarkTheEditorThatSendsThem) {
  OpenNew("a.spj");
  MechanicalSystemEdit edit;
  project().MechanicalSystem().GetBlockMatrix(edit.rows);
  const int row = edit.rows.FindRow("Pn203");
  edit.rows.Set(row, Column::value, "10000");
  edit.rows.Set(row, Column::dirty, "1");
  edit.isDirty = true;
  project().MechanicalSystem().ChangeAccepted(edit);
  EXPECT_TRUE(project().Editor().IsDirty());
  EXPECT_EQ(project().Editor().GetParameterValue("Pn203"), "10000");
  EXPECT_EQ(project().Editor().GetNumberOfNewRows(), 1);
  EXPECT_EQ(Parameter("Pn203"), "10000");
}

}  // namespace
}  // namespace velmoor
