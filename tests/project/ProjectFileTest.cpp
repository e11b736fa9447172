#include <filesystem>
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
    const std::string words = session.Open(path);
    EXPECT_EQ(words.find("Error reading databases!\r"), 0U) << words;
    EXPECT_EQ(words.find(".tmp"), std::string::npos) << "the reason, not where we work: " << words;
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
  const std::string working = world.folder.At("a.tmp");
  // What a crash leaves that holds no work: a copy, one that was cut, nothing yet.
  const std::string whole = Bytes(path);
  for (const std::string& left : {whole, whole.substr(0, 3000), std::string()}) {
    world.files.WriteDurably(working, left);
    world.files.WriteDurably(world.folder.At("a.tmp-journal"), "left by a crash");
    EXPECT_EQ(session.Open(path), "");
    EXPECT_EQ(project().ProjectDatabasePath(), working);
    EXPECT_FALSE(world.files.Exists(world.folder.At("a.tmp-journal")));
  }
  EXPECT_TRUE(world.boxes.shown.empty());
  PutProgramme();
  project().Save();
  EXPECT_EQ(session.Open(path), "");
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::label), "out");
}

TEST_F(ProjectFile, WhatACrashLeftUnsavedIsKept) {
  const std::string path = OpenNew("a.spj");
  std::filesystem::permissions(path, std::filesystem::perms(0600));
  const std::string working = world.folder.At("a.tmp");
  const auto openBehindCrash = [&](const std::string& left) {
    session.Close();
    world.files.WriteDurably(working, left);
    EXPECT_EQ(session.Open(path), "");
    return world.boxes.TakeTexts();
  };
  // Marks alone are no work.
  project().MarkEverything();
  EXPECT_EQ(openBehindCrash(Bytes(working)), std::vector<std::string>{});
  const std::string saved = Bytes(path);
  PutProgramme();
  const std::string unsaved = Bytes(working);
  for (const char* const name : {"a.unsaved.spj", "a.unsaved-2.spj"}) {
    const std::string kept = world.folder.At(name);
    EXPECT_EQ(openBehindCrash(unsaved),
              std::vector<std::string>{"Velmoor ended last without saving project a.spj.\r"
                                       "What was not saved is kept as " +
                                       kept + ", a project that can be opened and compared."});
    EXPECT_EQ(project().Position().Text(2, clsHX7Position::label), "");
    EXPECT_EQ(Bytes(path), saved);
    EXPECT_EQ(std::filesystem::status(kept).permissions(), std::filesystem::perms(0600));
  }
  EXPECT_EQ(session.Open(world.folder.At("a.unsaved.spj")), "");
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::label), "out");
}

// A user's own notes, or what somebody has planted.
TEST_F(ProjectFile, WhatIsNoneOfOursUnderTheWorkingNameStays) {
  namespace fs = std::filesystem;
  const std::string path = world.MakeProject("a.spj");
  const std::string outside = world.folder.At("outside");
  const std::string taken = world.folder.At("a.tmp");
  const std::string other = world.folder.At("a.velmoor.tmp");
  world.files.WriteDurably(outside, "mine");
  const std::pair<const char*, std::function<void()>> plants[] = {
      {"notes", [&] { world.files.WriteDurably(taken, "my notes"); }},
      {"large", [&] { world.files.WriteDurably(taken, std::string(5'000'000, 'x')); }},
      {"link", [&] { fs::create_symlink(outside, taken); }},
      {"hard link", [&] { fs::create_hard_link(outside, taken); }},
      {"folder", [&] { fs::create_directory(taken); }}};
  for (const auto& [name, plant] : plants) {
    SCOPED_TRACE(name);
    plant();
    const auto before = fs::symlink_status(taken);
    const std::string bytes =
        fs::is_regular_file(before) ? std::to_string(fs::file_size(taken)) : "";
    world.boxes.shown.clear();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_EQ(project().ProjectDatabasePath(), other);
    ASSERT_EQ(world.boxes.shown.size(), 1U);
    EXPECT_EQ(world.boxes.shown.front().text,
              "a.tmp is no file of Velmoor's and stays as it is; the project is worked on in "
              "a.velmoor.tmp.");
    PutProgramme();
    project().Save();
    session.Close();
    EXPECT_FALSE(world.files.Exists(other));
    EXPECT_EQ(fs::symlink_status(taken).type(), before.type());
    if (!bytes.empty()) {
      EXPECT_EQ(std::to_string(fs::file_size(taken)), bytes);
    }
    EXPECT_EQ(Bytes(outside), "mine");
    fs::remove(taken);
  }
  fs::create_directory(taken);
  fs::create_directory(other);
  const std::string words = session.Open(path);
  EXPECT_TRUE(words.ends_with("neither is a file of this program")) << words;
  session.Close();
}

// ---- saving

TEST_F(ProjectFile, SaveAsOpensAProjectToNobodyElse) {
  namespace fs = std::filesystem;
  const std::string path = OpenNew("a.spj");
  const std::string fresh = world.folder.At("fresh.spj");
  const std::string present = world.MakeProject("present.spj");
  fs::permissions(present, fs::perms(0664));
  fs::permissions(path, fs::perms(0600));
  project().SaveAs(fresh);
  EXPECT_EQ(fs::status(fresh).permissions(), fs::perms(0600));
  project().SaveAs(present);
  EXPECT_EQ(fs::status(present).permissions(), fs::perms(0600));
  fs::permissions(present, fs::perms(0644));
  project().SaveAs(world.folder.At("open.spj"));
  EXPECT_EQ(fs::status(world.folder.At("open.spj")).permissions(), fs::perms(0644));
}

TEST_F(ProjectFile, TheFileChangesAtSaveAndNotBefore) {
  const std::string path = OpenNew("a.spj");
  const std::string before = Bytes(path);
  PutProgramme();
  EXPECT_TRUE(project().NeedsSaving());
  EXPECT_EQ(project().WhatIsDirty(), "Index Position table");
  EXPECT_EQ(Bytes(path), before);
  project().Save();
  EXPECT_FALSE(project().NeedsSaving());
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
  project().Jog().Mark({1});
  EXPECT_EQ(project().WhatIsDirty(), "Jog table");
  project().Zone().Mark({2});
  clsHX7Homing& homing = project().Homing();
  homing.EditValue(homing.FindRow("Pn81D"), "5.000");
  ASSERT_TRUE(homing.AcceptEdits());
  EXPECT_EQ(project().WhatIsDirty(), "Homing parameters, Jog table, Zone table");
  project().MarkEverything();
  EXPECT_EQ(project().WhatIsDirty(),
            "Mechanical System, All parameters, Homing parameters, Index Position table, Jog "
            "table, Zone table");
}

// ---- a change of machine

class ChangedMachine : public ProjectFile {
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
    MachineEdit edit = project().MechanicalSystem().Edit();
    if (systemToo) {
      ASSERT_TRUE(edit.SetSystem(4).Accepted());
    }
    ASSERT_TRUE(edit.SetValue("Pn82D", digits).Accepted());
    ASSERT_TRUE(project().MechanicalSystem().Accept(edit));
  }
};

TEST_F(ChangedMachine, ANewResolutionKeepsTheNumbersAndChangesTheCounts) {
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

TEST_F(ChangedMachine, AValueBeyondTheCountsIsReplacedByTheLimitAndNamed) {
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
}

TEST_F(ChangedMachine, ANewSystemClearsIndexAndZonesAndKeepsTheJogTexts) {
  OpenNew("a.spj");
  PutProgramme();
  ASSERT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n2,10\n").empty());
  ASSERT_TRUE(project().Jog().ChangeAccepted());
  ChangeResolutionTo("2", true);
  EXPECT_TRUE(project().Position().IsBlank(1));
  EXPECT_EQ(project().Position().GetNumberOfNewRows(), 3) << "those that held a step";
  EXPECT_EQ(project().Zone().GetNumberOfNewRows(), 0) << "it held none";
  EXPECT_EQ(project().Jog().Text(3, clsHX7Jog::speed), "10.00");
  EXPECT_EQ(Record(schema::Jog::kTable, schema::Jog::kJog, "2", schema::Jog::kControllerValue),
            "60");
}

TEST_F(ChangedMachine, NewGearTermsMarkTheEditorThatSendsThem) {
  OpenNew("a.spj");
  MachineEdit edit = project().MechanicalSystem().Edit();
  ASSERT_TRUE(edit.SetValue("Pn82F.0", "10").Accepted());
  ASSERT_TRUE(project().MechanicalSystem().Accept(edit));
  EXPECT_TRUE(project().Editor().IsDirty());
  EXPECT_EQ(project().Editor().GetParameterValue("Pn203"), "10000");
  EXPECT_EQ(project().Editor().GetNumberOfNewRows(), 1);
  EXPECT_EQ(Parameter("Pn203"), "10000");
}

// What the file holds after each of a row of machines, in the controller's form.
TEST_F(ChangedMachine, TravelLimitsFollowTheMachineInTheFile) {
  OpenNew("a.spj");
  const auto commit = [this](std::initializer_list<std::pair<const char*, const char*>> cells,
                             std::optional<int> system) {
    MachineEdit edit = project().MechanicalSystem().Edit();
    if (system) (void)edit.SetSystem(*system);
    for (const auto& [name, text] : cells) (void)edit.SetValue(name, text);
    ASSERT_EQ(edit.Figures().reason, "");
    ASSERT_TRUE(project().MechanicalSystem().Accept(edit));
  };
  const auto limits = [this] {
    return Parameter("Pn81A") + " " + Parameter("Pn81B") + " " + Parameter("Pn81C");
  };
  commit({{"Pn82F.0", "360"}, {"Pn82E.0", "deg"}, {"Pn82D", "2"}}, kRotaryTable);
  EXPECT_EQ(limits(), "1 35999 0");
  commit({{"Pn82D", "1"}}, {});
  EXPECT_EQ(limits(), "1 3599 0");
  commit({{"Pn82E.1", "minutes"}}, {});
  EXPECT_EQ(limits(), "1 3599 0") << "the time base has nothing to do with it";
  commit({{"Pn82E.0", "mm"}, {"Pn82F.0", "5"}, {"Pn82D", "3"}}, 0);
  EXPECT_EQ(limits(), "0 99999999 -99999999") << "the catalogue's, not what the user had typed";
}

// A machine commit that cannot be stored leaves file, memory and window as they were.
TEST_F(ChangedMachine, ACommitThatCannotBeStoredChangesNothing) {
  const std::string path = OpenNew("a.spj");
  const std::string working = project().ProjectDatabasePath();
  MachineEdit edit = project().MechanicalSystem().Edit();
  ASSERT_TRUE(edit.SetValue("Pn82D", "4").Accepted());
  std::filesystem::rename(working, working + ".away");
  EXPECT_FALSE(project().MechanicalSystem().Accept(edit));
  EXPECT_EQ(world.boxes.Count("Error writing Mechanical System parameters to project file!"), 1);
  std::filesystem::rename(working + ".away", working);
  EXPECT_EQ(project().Resolution(), 3);
  clsHX7Homing& homing = project().Homing();
  homing.EditValue(homing.FindRow("Pn825"), "6.000");
  ASSERT_TRUE(homing.AcceptEdits());
  EXPECT_EQ(Parameter("Pn825"), "360") << "counts at the resolution that is shown";
}

// Two digits and minutes leave less than a count of a slow speed: the row's own limit takes it, and
// is named.
TEST_F(ChangedMachine, ALimitOfTheRowTakesWhatWouldBeNoMotion) {
  OpenNew("a.spj");
  std::string items;
  const Connection told =
      project().ResolutionDataInvalidated.Connect([&](const std::string& list) { items = list; });
  MachineEdit edit = project().MechanicalSystem().Edit();
  (void)edit.SetValue("Pn82E.1", "minutes");
  (void)edit.SetValue("Pn82D", "2");
  ASSERT_TRUE(project().MechanicalSystem().Accept(edit));
  EXPECT_EQ(Parameter("Pn827"), "1");
  EXPECT_EQ(project().Homing().Text(project().Homing().FindRow("Pn827"), Column::value), "10.00");
  EXPECT_EQ(items, "Homing Parameters");
}

}  // namespace
}  // namespace velmoor
