// The six parameter tools over a real working file and a simulated amplifier.

#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "support/ProjectWorld.h"

namespace velmoor {
namespace {

using schema::Parameters;
using Texts = std::vector<std::string>;

class ParameterTools : public ProjectWorld {
 protected:
  void SetUp() override { OpenNew("a.spj"); }

  // The record's field; empty without a record.
  std::string Stored(const std::string& strPn, std::string_view field) {
    const auto database = OpenForReading(project().ProjectDatabasePath());
    const auto records = database->OpenTable(Parameters::kTable);
    return records->FindFirst(Parameters::kPn, strPn) ? records->Text(field) : std::string();
  }
  void Store(const std::string& strPn, std::string_view field, const std::string& text) {
    const auto database = OpenForWriting(project().ProjectDatabasePath());
    const auto records = database->OpenTable(Parameters::kTable);
    ASSERT_TRUE(records->FindFirst(Parameters::kPn, strPn));
    records->Edit();
    records->Set(field, text);
    records->Update();
    database->Commit();
  }
  static std::string Shown(const ParameterToolBase& tool, const std::string& strPn) {
    const int row = tool.FindRow(strPn);
    return row > 0 ? tool.Text(row, Column::value) : "no row";
  }
  static std::string Mark(const ParameterToolBase& tool, const std::string& strPn) {
    return tool.Text(tool.FindRow(strPn), Column::dirty);
  }
  static void Edit(ParameterToolBase& tool, const std::string& strPn, const std::string& value) {
    const int row = tool.FindRow(strPn);
    ASSERT_GT(row, 0) << strPn;
    tool.EditValue(row, value);
  }
  Texts Writes() {
    Texts lines;
    for (const JournalEntry& entry : amplifier().Journal()) {
      if (entry.line.find('=') != std::string::npos) lines.push_back(entry.line);
    }
    return lines;
  }
  Texts Boxes() { return world.boxes.TakeTexts(); }
  void Reopen() {
    project().Save();
    ASSERT_EQ(session.Open(world.folder.At("a.spj")), "");
  }
};

// ---- the working file

TEST_F(ParameterTools, EachToolHoldsItsRows) {
  const std::pair<const ParameterToolBase*, int> kTools[] = {{&project().FlexibleIO(), 24},
                                                             {&project().Interface(), 3},
                                                             {&project().OverTravel(), 6},
                                                             {&project().Homing(), 7},
                                                             {&project().Tuning(), 12}};
  for (const auto& [tool, rows] : kTools) EXPECT_EQ(tool->RowsInArray(), rows);
  EXPECT_EQ(project().Editor().FindRow("Pn829"), 0) << "hidden from the editor";
  EXPECT_GT(project().Editor().FindRow("Pn834"), 0);
}

TEST_F(ParameterTools, ASaveWritesBothFormsAndMarksOnlyWhatWasEdited) {
  Edit(project().OverTravel(), "Pn81B", "12.500");
  Edit(project().OverTravel(), "Pn819", "Stop at once and hold");
  ASSERT_TRUE(project().OverTravel().AcceptEdits());
  EXPECT_EQ(Stored("Pn81B", Parameters::kValue), "12.500");
  EXPECT_EQ(Stored("Pn81B", Parameters::kControllerValue), "12500");
  EXPECT_EQ(Stored("Pn81B", Parameters::kDirty), "1");
  EXPECT_EQ(Stored("Pn819", Parameters::kControllerValue), "1");
  EXPECT_EQ(Stored("Pn81C", Parameters::kDirty), "0");
  EXPECT_EQ(Shown(project().Editor(), "Pn81B"), "12.500");
  EXPECT_EQ(project().OverTravel().GetNumberOfNewRows(), 2);
}

TEST_F(ParameterTools, ARowWithoutARecordShowsItsInitialItemAndItsFirstCommitAddsADirtyOne) {
  Store("Pn801", Parameters::kPn, "gone");
  Reopen();
  EXPECT_EQ(Shown(project().Interface(), "Pn801"), "9600");
  Edit(project().Tuning(), "Pn100", "41");
  ASSERT_TRUE(project().Tuning().AcceptEdits());
  EXPECT_EQ(Stored("Pn801", Parameters::kValue), "9600");
  EXPECT_EQ(Stored("Pn801", Parameters::kDirty), "1");
  EXPECT_EQ(Stored("Pn800", Parameters::kDirty), "0");
}

TEST_F(ParameterTools, ARecordWithoutAValueShowsTheBareIndexAndIsNotSent) {
  Store("Pn819", Parameters::kValue, "");
  Store("Pn819", Parameters::kDirty, "1");
  Reopen();
  clsHX7OverTravel& tool = project().OverTravel();
  EXPECT_EQ(Shown(tool, "Pn819"), "0") << "the index is not mended";
  session.GoOnline();
  amplifier().ForgetWhatWasAsked();
  EXPECT_TRUE(tool.Download());
  EXPECT_EQ(amplifier().Asked("PRM="), 0);
  EXPECT_EQ(Mark(tool, "Pn819"), "1") << "the row keeps its mark";
}

TEST_F(ParameterTools, ATextThatIsNoValueIsToldAndStoresNothing) {
  Edit(project().OverTravel(), "Pn81C", "1");
  for (const auto& [strPn, text] : {std::pair{"Pn81B", "wide"}, {"Pn819", "no such item"}}) {
    Edit(project().OverTravel(), strPn, text);
    EXPECT_FALSE(project().OverTravel().AcceptEdits());
    EXPECT_EQ(Boxes(),
              Texts{"Overflow error while converting " + std::string(strPn) +
                    " value to encoder counts!\rPlease modify " + strPn + " until satisfactory."});
    EXPECT_EQ(Stored("Pn81C", Parameters::kControllerValue), "-99999999") << "all or nothing";
    EXPECT_EQ(Stored(strPn, Parameters::kDirty), "0");
    Edit(project().OverTravel(), strPn, Stored(strPn, Parameters::kValue));
  }
  // A count of -1 is a value like any other.
  Edit(project().OverTravel(), "Pn81B", "-0.001");
  EXPECT_TRUE(project().OverTravel().AcceptEdits());
  EXPECT_EQ(Stored("Pn81B", Parameters::kControllerValue), "-1");
  EXPECT_TRUE(Boxes().empty());
}

// Whatever cannot be shown as it would be sent does not open at all.
TEST_F(ParameterTools, AProjectWhoseValuesOrUnitsCannotBeReadDoesNotOpen) {
  const struct {
    const char* strPn;
    const char* controller;
    const char* reason;
  } kCases[] = {{"Pn825", "fast", "The value of Pn825 cannot be read."},
                {"Pn408", "00G1", "The value of Pn408 cannot be read."},
                {"Pn82D", "23", "The resolution in Pn82D cannot be read."},
                {"Pn82E", "0021", "The units in Pn82E cannot be read."}};
  for (const auto& entry : kCases) {
    OpenNew("a.spj");
    const std::string before = Stored(entry.strPn, Parameters::kControllerValue);
    Store(entry.strPn, Parameters::kControllerValue, entry.controller);
    project().Save();
    const std::string error = session.Open(world.folder.At("a.spj"));
    EXPECT_EQ(error.find("Error reading databases!\r" + std::string(entry.reason)), 0U) << error;
  }
}

TEST_F(ParameterTools, AValueBeyondTheCountsIsStoredAsTheLimitWithoutAWord) {
  Edit(project().Homing(), "Pn81D", "100000.000");
  ASSERT_TRUE(project().Homing().AcceptEdits());
  EXPECT_EQ(Stored("Pn81D", Parameters::kControllerValue), "99999999");
  EXPECT_EQ(Shown(project().Homing(), "Pn81D"), "99999.999");
  EXPECT_EQ(Shown(project().Editor(), "Pn81D"), "99999.999");
  EXPECT_TRUE(Boxes().empty());
}

// ---- one value, many views

TEST_F(ParameterTools, EveryToolShowsAtOnceWhatAnotherHasStored) {
  Edit(project().Editor(), "Pn804", "Normally closed");
  ASSERT_TRUE(project().Editor().AcceptEdits());
  EXPECT_EQ(Shown(project().FlexibleIO(), "Pn804"), "Normally closed");
  Edit(project().FlexibleIO(), "Pn805", "Normally closed");
  ASSERT_TRUE(project().FlexibleIO().AcceptEdits());
  EXPECT_EQ(Stored("Pn804", Parameters::kValue), "Normally closed");
  EXPECT_EQ(Shown(project().Editor(), "Pn805"), "Normally closed");
  Edit(project().Editor(), "Pn81E", "70.000");
  ASSERT_TRUE(project().Editor().AcceptEdits());
  EXPECT_EQ(project().MechanicalSystem().Edit().Value("Pn81E"), "70.000");
}

// A project of an older build may hold a text beside a count that it does not mean: what would be
// sent is what is shown.
TEST_F(ParameterTools, AValueIsShownAsItWouldBeSent) {
  Store("Pn825", Parameters::kValue, "120.000");
  Store("Pn825", Parameters::kControllerValue, "300000");
  Store("Pn81A", Parameters::kValue, "Linear");
  Store("Pn81A", Parameters::kControllerValue, "1");
  Reopen();
  EXPECT_EQ(Shown(project().Homing(), "Pn825"), "5000.000");
  EXPECT_NE(Shown(project().OverTravel(), "Pn81A"), "Linear");
}

// ---- transfers

class Online : public ParameterTools {
 protected:
  void SetUp() override {
    ParameterTools::SetUp();
    session.GoOnline();
    amplifier().ForgetWhatWasAsked();
  }
};

TEST_F(Online, ADownloadSendsTheEditedRowsAndNothingElse) {
  Edit(project().OverTravel(), "Pn81B", "12.500");
  Edit(project().OverTravel(), "Pn819", "Stop at once and hold");
  ASSERT_TRUE(project().OverTravel().AcceptEdits());
  Texts progress;
  const Connection told =
      project().OverTravel().Downloading.Connect([&](std::int16_t count, std::int16_t total) {
        progress.push_back(NumberText(count) + "/" + NumberText(total));
      });
  EXPECT_TRUE(project().OverTravel().Download());
  EXPECT_EQ(Writes(), (Texts{"0PRM819=1", "0PRM81B=12500"}));
  EXPECT_EQ(progress, (Texts{"1/2", "2/2"}));
  EXPECT_EQ(Stored("Pn81B", Parameters::kDirty), "0");
  EXPECT_EQ(Mark(project().OverTravel(), "Pn81B"), "0");
}

TEST_F(Online, AnEditThatWasNotAppliedSurvivesADownload) {
  clsHX7OverTravel& tool = project().OverTravel();
  Edit(tool, "Pn81B", "12.500");
  ASSERT_TRUE(tool.AcceptEdits());
  Edit(tool, "Pn81B", "13.000");
  EXPECT_TRUE(tool.Download());
  EXPECT_EQ(Writes(), Texts{"0PRM81B=12500"}) << "what was applied goes out";
  EXPECT_EQ(Mark(tool, "Pn81B"), "1");
  ASSERT_TRUE(tool.AcceptEdits());
  EXPECT_TRUE(tool.Download());
  EXPECT_EQ(Writes().back(), "0PRM81B=13000");
}

TEST_F(Online, ARefusedRowStaysDirtyAndEndsTheDownload) {
  clsHX7OverTravel& tool = project().OverTravel();
  Edit(tool, "Pn819", "Stop at once and hold");
  Edit(tool, "Pn81B", "12.500");
  ASSERT_TRUE(tool.AcceptEdits());
  std::string status;
  const Connection told = tool.Status.Connect([&](const std::string& text) { status = text; });
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PRM81B="});
  EXPECT_FALSE(tool.Download());
  EXPECT_EQ(status, "Download Failed");
  EXPECT_EQ(Stored("Pn819", Parameters::kDirty), "0");
  EXPECT_EQ(Stored("Pn81B", Parameters::kDirty), "1");
}

TEST_F(Online, AnUploadChangesEveryViewAndTheFileOnlyAtTheCommit) {
  amplifier().State().memory.parameters.Write(0x81B, "7500");
  amplifier().State().memory.parameters.Write(0x80C, "2");
  ASSERT_TRUE(project().UploadParts({Tool::overTravel}));
  EXPECT_EQ(amplifier().Asked("PRM"), 6) << "one exchange a row";
  EXPECT_EQ(Shown(project().OverTravel(), "Pn81B"), "99999.999");
  EXPECT_EQ(Stored("Pn81B", Parameters::kValue), "99999.999");
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(Shown(project().FlexibleIO(), "Pn80C"), "Disabled");
  EXPECT_EQ(Shown(project().Editor(), "Pn80C"), "Disabled");
  EXPECT_EQ(Stored("Pn81B", Parameters::kValue), "7.500");
  EXPECT_EQ(Stored("Pn81B", Parameters::kDirty), "0");
  EXPECT_FALSE(project().OverTravel().IsDirty());
}

TEST_F(Online, AnAnswerThatIsNoNumberFailsTheUpload) {
  std::string status;
  const Connection told =
      project().Homing().Status.Connect([&](const std::string& text) { status = text; });
  line.faults.Add({.kind = FaultKind::wrongAnswer, .match = "PRM825", .text = "0PRM825=high"});
  EXPECT_FALSE(project().Homing().Upload());
  EXPECT_EQ(status, "Upload Failed");
  // Four digits, each with a meaning of its own, are no number and must be whole all the same.
  for (const char* const answer : {"0PRM408=000", "0PRM408=00G1", "0PRM408="}) {
    line.faults.Clear();
    line.faults.Add({.kind = FaultKind::wrongAnswer, .match = "PRM408", .text = answer});
    EXPECT_FALSE(project().Tuning().Upload()) << answer;
  }
}

TEST_F(Online, AStopEndsATransferBetweenTwoRows) {
  std::string status;
  const Connection told =
      project().FlexibleIO().Status.Connect([&](const std::string& text) { status = text; });
  const Connection stops = project().FlexibleIO().Uploading.Connect(
      [&](std::int16_t row, std::int16_t) { session.SetStopProcedure(row == 3); });
  EXPECT_FALSE(project().FlexibleIO().Upload());
  EXPECT_EQ(status, "Upload Terminated");
  EXPECT_EQ(amplifier().Asked("PRM"), 3);
}

TEST_F(Online, AnOlderCardsInputsAreCountedAndNeitherSentNorRead) {
  amplifier().State().settings.firmware = 2;
  clsHX7FlexibleIO& tool = project().FlexibleIO();
  Edit(tool, "Pn804", "Normally closed");
  Edit(tool, "Pn833", "Normally closed");
  ASSERT_TRUE(tool.AcceptEdits());
  int counted = 0;
  const Connection told = tool.Downloading.Connect([&](std::int16_t, std::int16_t) { ++counted; });
  EXPECT_TRUE(tool.Download());
  EXPECT_EQ(counted, 2);
  EXPECT_EQ(amplifier().Asked("PRM="), 1);
  EXPECT_EQ(Mark(tool, "Pn833"), "1");
  amplifier().ForgetWhatWasAsked();
  EXPECT_TRUE(project().UploadParts({Tool::flexibleIO}) && project().CommitUpload());
  EXPECT_EQ(amplifier().Asked("PRM"), 22);
  EXPECT_EQ(Shown(tool, "Pn833"), "Normally closed");
  EXPECT_EQ(project().WhatIsDirty(), "") << "what this card does not have is not offered again";
}

// ---- the direct parameter editor

TEST_F(Online, TheEditorNeverSendsTheTenAndTakesTheAxisFromTheConnection) {
  EXPECT_TRUE(project().Editor().Download(true));
  for (const char* const number :
       {"207", "50A", "50B", "50C", "50D", "50E", "50F", "510", "511", "512"}) {
    const std::string beginning = std::string("0PRM") + number + "=";
    for (const std::string& sent : Writes()) EXPECT_NE(sent.substr(0, 8), beginning);
    EXPECT_EQ(Mark(project().Editor(), std::string("Pn") + number), "0");
  }
  EXPECT_EQ(amplifier().Asked("PRM="), project().Editor().RowsInArray() - 10);
  const Texts sent = Writes();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "0PRM000=0000"), 1);
  EXPECT_TRUE(std::any_of(sent.begin(), sent.end(), [](const std::string& text) {
    return text.substr(0, 8) == "0PRM104=";
  })) << "locked, and sent all the same";
}

TEST_F(Online, TheBaudRateIsAnnouncedBeforeItIsSent) {
  Texts order;
  const Connection told = project().BaudRateChanged.Connect([&](const std::string& value) {
    order.push_back("announced " + value + " after " + NumberText(Writes().size()));
  });
  const Connection failed =
      project().BaudRateChangeFailed.Connect([&] { order.push_back("failed"); });
  Edit(project().Editor(), "Pn801", "19200");
  ASSERT_TRUE(project().Editor().AcceptEdits());
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PRM801="});
  EXPECT_FALSE(project().Editor().Download(false));
  EXPECT_EQ(order, (Texts{"announced 1 after 0", "failed"}));
}

TEST_F(Online, AnUploadKeepsTheDigitsOfDigitwiseRowsAndReachesTheSisters) {
  amplifier().State().memory.parameters.Write(0x408, "0001");
  amplifier().State().memory.parameters.Write(0x81D, "1250");
  ASSERT_TRUE(project().UploadParts({Tool::editor}));
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(Shown(project().Editor(), "Pn408"), "0001");
  EXPECT_EQ(Shown(project().Tuning(), "Pn408"), "0001");
  EXPECT_EQ(Shown(project().Homing(), "Pn81D"), "1.250");
  EXPECT_EQ(amplifier().Asked("PRM"), project().Editor().RowsInArray());
}

TEST_F(Online, TheRigidityGoesLastAndDoesNotDecideTheResult) {
  clsHX7Tuning& tool = project().Tuning();
  Edit(tool, "Pn103", "150");
  ASSERT_TRUE(tool.AcceptEdits());
  tool.SetRigidity(7);
  EXPECT_TRUE(tool.Download(false));
  EXPECT_EQ(Writes(), Texts{"0PRM103=150"}) << "the preset level stays here";
  tool.SetChangedRigidity(true);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "STIFF"});
  EXPECT_TRUE(tool.Download(true));
  EXPECT_EQ(amplifier().Journal().back().line.substr(0, 6), "0STIFF");
  EXPECT_TRUE(tool.ChangedRigidity()) << "still to be sent";
  EXPECT_TRUE(tool.Download(true));
  EXPECT_FALSE(tool.ChangedRigidity());
}

TEST_F(Online, TheHomeOffsetIsReadAloneAndMarked) {
  amplifier().State().memory.parameters.Write(0x81D, "-2500");
  ASSERT_TRUE(project().Homing().UploadHomingOffset());
  EXPECT_EQ(amplifier().Asked("PRM"), 1);
  EXPECT_EQ(Shown(project().Homing(), "Pn81D"), "-2.500");
  EXPECT_EQ(Mark(project().Homing(), "Pn81D"), "1");
  EXPECT_EQ(Shown(project().Editor(), "Pn81D"), "-2.500");
}

}  // namespace
}  // namespace velmoor
