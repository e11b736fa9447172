#include <algorithm>
#include <random>

#include "operations/UploadFlow.h"
#include "platform/Numbers.h"
#include "project/ProjectCompare.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

class ProjectTransfer : public ProjectWorld {
 protected:
  void SetUp() override {
    path = OpenNew("a.spj");
    session.GoOnline();
    amplifier().ForgetWhatWasAsked();
  }
  void PutIndex(const std::string& rows) {
    const std::string head = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    ASSERT_TRUE(ImportCsv(project(), project().Position(), head + rows).empty());
    ASSERT_TRUE(project().Position().ChangeAccepted());
  }
  void PutJog(const std::string& rows) {
    ASSERT_TRUE(ImportCsv(project(), project().Jog(), "jog,speed\n" + rows).empty());
    ASSERT_TRUE(project().Jog().ChangeAccepted());
  }
  void EditParameter(const std::string& strPn, const std::string& value) {
    clsHX7Editor& editor = project().Editor();
    ASSERT_GT(editor.FindRow(strPn), 0) << strPn;
    editor.EditValue(editor.FindRow(strPn), value);
    ASSERT_TRUE(editor.AcceptEdits());
  }
  // The lines that went out since the journal was emptied, one for each beginning that is asked
  // for.
  std::vector<std::string> Sent(const std::string& beginning) {
    std::vector<std::string> lines;
    for (const JournalEntry& entry : amplifier().Journal()) {
      if (entry.line.substr(0, beginning.size()) == beginning) lines.push_back(entry.line);
    }
    return lines;
  }

  std::string path;
};

const char* const kTwoSteps =
    "one,I+1,10,-,1,:::::,IT0,1,two\n"
    "two,A-2.5,20,1,2,NNAZ:,SEL0T100,2,one\n";

// ---- download

TEST_F(ProjectTransfer, DownloadNewSendsTheDirtyRowsAndStoresThem) {
  PutIndex(kTwoSteps);
  EXPECT_TRUE(project().Download());
  const std::vector<std::string> lines = Sent("0POST");
  EXPECT_EQ(lines, (std::vector<std::string>{"0POST0=I+1000", "0POST1=A-2500"}));
  EXPECT_EQ(Sent("0SPDT"), (std::vector<std::string>{"0SPDT0=600", "0SPDT1=1200"}));
  EXPECT_EQ(Sent("0EVENTT"), (std::vector<std::string>{"0EVENTT0=IT0", "0EVENTT1=SEL0T100"}));
  EXPECT_EQ(Sent("0NEXTT"), (std::vector<std::string>{"0NEXTT0=1", "0NEXTT1=0"}));
  EXPECT_EQ(amplifier().Asked("PGMSTORE"), 1);
  EXPECT_EQ(amplifier().Asked("RES"), 0) << "tables alone restart nothing";
  EXPECT_EQ(project().WhatIsDirty(), "");
  EXPECT_EQ(project().GetNumberOfNewDownloads(), 0);
  amplifier().ForgetWhatWasAsked();
  EXPECT_TRUE(project().Download());
  EXPECT_TRUE(amplifier().Journal().empty()) << "nothing is dirty any more";
}

TEST_F(ProjectTransfer, AParameterRestartsTheHardwareAndPn000TakesTheConnectedAxis) {
  EditParameter("Pn000", "0F01");
  EXPECT_TRUE(project().Download());
  EXPECT_EQ(Sent("0PRM000="), std::vector<std::string>{"0PRM000=0001"});
  EXPECT_EQ(amplifier().Asked("RES"), 1);
}

TEST_F(ProjectTransfer, AFailureLeavesThatTableDirtyAndTheNextDownloadBeginsThere) {
  PutIndex(kTwoSteps);
  PutJog("0,5\n1,6\n2,7\n");
  line.faults.Add({.kind = FaultKind::deviceError, .match = "JSPDT1="});
  std::string status;
  const Connection told = project().ToolStatus.Connect(
      [&](Tool tool, const std::string& text) { status = tool == Tool::jog ? text : status; });
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(status, "Download Failed");
  EXPECT_EQ(project().WhatIsDirty(), "Jog table");
  amplifier().ForgetWhatWasAsked();
  EXPECT_TRUE(project().Download());
  EXPECT_EQ(Sent("0JSPDT"),
            (std::vector<std::string>{"0JSPDT0=300", "0JSPDT1=360", "0JSPDT2=420"}));
  EXPECT_EQ(amplifier().Asked("POST="), 0);
}

TEST_F(ProjectTransfer, AStopEndsTheDownloadBetweenTwoRows) {
  PutJog("0,5\n1,6\n2,7\n");
  std::string status;
  const Connection told =
      project().ToolStatus.Connect([&](Tool, const std::string& text) { status = text; });
  const Connection stops = project().ToolDownloading.Connect(
      [&](Tool, std::int16_t row, std::int16_t) { session.SetStopProcedure(row == 2); });
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(status, "Download Terminated");
  EXPECT_EQ(Sent("0JSPDT").size(), 2u) << "the row under way is finished";
  EXPECT_EQ(project().Jog().GetNumberOfNewRows(), 3) << "no row of them is stored";
}

TEST_F(ProjectTransfer, OldFirmwareWithSel5SendsNothingOfTheIndexTable) {
  amplifier().State().settings.firmware = 2;
  PutIndex("one,I+1,10,-,1,:::::,SEL5T0,1,END\n");
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(world.boxes.Count(
                "The firmware in controller does not support SEL5 or SEL6 events in Index table!"),
            1);
  EXPECT_EQ(amplifier().Asked("POST="), 0);
  EXPECT_EQ(project().WhatIsDirty(), "Index Position table");
}

TEST_F(ProjectTransfer, DownloadAllSendsEveryParameterButTheTenAndTheMachine) {
  PutIndex(kTwoSteps);
  EXPECT_TRUE(project().DownloadAll());
  EXPECT_EQ(amplifier().Asked("POST="), 128);
  EXPECT_EQ(amplifier().Asked("ZONENT="), 32);
  EXPECT_EQ(amplifier().Asked("JSPDT="), 16);
  EXPECT_GE(project().Parameters().Count(), 170);
  EXPECT_EQ(amplifier().Asked("PRM="), project().Parameters().Count() - 10);
  for (const char* never : {"207", "50A", "50B", "50C", "50D", "50E", "50F", "510", "511", "512"}) {
    EXPECT_TRUE(Sent(std::string("0PRM") + never + "=").empty()) << never;
  }
  EXPECT_EQ(Sent("0PRM202="), std::vector<std::string>{"0PRM202=8192"});
  EXPECT_EQ(Sent("0PRM82F="), std::vector<std::string>{"0PRM82F=00000010"});
  EXPECT_EQ(Sent("0PRM830="), std::vector<std::string>{"0PRM830=84227584"});
  EXPECT_EQ(amplifier().Asked("RES"), 1);
  EXPECT_EQ(amplifier().Asked("STIFF"), 0) << "no rigidity that the user did not choose";
}

TEST_F(ProjectTransfer, ARefusedBaudRateIsToldAsSuch) {
  EditParameter("Pn801", "38400");
  std::string announced;
  int failed = 0;
  const Connection changed =
      project().BaudRateChanged.Connect([&](const std::string& value) { announced = value; });
  const Connection refused = project().BaudRateChangeFailed.Connect([&] { ++failed; });
  EXPECT_TRUE(project().Download());
  EXPECT_EQ(announced, "2");
  EXPECT_EQ(failed, 0);
  amplifier().Restart(port.Now());
  session.GoOnline();
  EditParameter("Pn801", "19200");
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PRM801="});
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(failed, 1);
}

// ---- upload

class ProjectUpload : public ProjectTransfer {
 protected:
  void UploadIntoFresh() {
    fresh = OpenNew("fresh.spj");
    ASSERT_TRUE(RunUploadStages(project()));
    world.boxes.Expect("Commit uploaded data to project?", BoxAnswer::yes);
    AskToCommitUpload(project());
    project().Save();
  }
  int Differences() {
    int count = 0;
    for (const PartComparison& part : CompareProjects(path, fresh)) {
      count += static_cast<int>(part.differences.size());
      for (const auto& difference : part.differences) {
        ADD_FAILURE() << part.part << " " << difference.row << " " << difference.field << ": '"
                      << difference.first << "' '" << difference.second << "'";
      }
    }
    return count;
  }
  void DownloadEverything() {
    ASSERT_TRUE(project().DownloadAll());
    project().Save();
    ASSERT_EQ(session.Helix7()->GoOnlineAfterRestart(), kSuccess);
  }

  std::string fresh;
};

// A programme that uses every form a cell may have.
std::string GeneratedProgramme(std::uint32_t seed) {
  std::mt19937 engine(seed);
  const auto pick = [&engine](int low, int high) {
    return std::uniform_int_distribution<>(low, high)(engine);
  };
  const auto number = [&](int most) {
    return NumberText(pick(0, most)) + "." + NumberText(pick(0, 999));
  };
  // A speed that the amplifier can hold: its counts are sixtieths of the unit.
  const auto speed = [&] { return FixedText(pick(0, 540000) / 60.0, 3); };
  std::string text;
  for (int step = 1; step <= 128; ++step) {
    const char* const words[] = {"+INFINITE", "-INFINITE", "STOP", "-"};
    const char* const heads[] = {"I+", "I-", "A+", "A-"};
    const char* const events[] = {"I", "N", "D", "SEL0", "SEL6", ":", ""};
    std::string outputs;
    for (int i = 0; i < 5; ++i) outputs += "AN:Z"[pick(0, 3)];
    const int next = pick(1, 128);
    text += "L" + NumberText(step) + ",";
    text += pick(0, 4) == 0 ? words[pick(0, 3)] : heads[pick(0, 3)] + number(90000);
    text += "," + speed() + "," + (pick(0, 1) == 0 ? "-" : number(500)) + "," + speed();
    text += "," + outputs + "," + events[pick(0, 6)] + "T" + NumberText(pick(0, 99999));
    text += "," + NumberText(pick(1, 99999)) + ",";
    text += next == step || pick(0, 9) == 0 ? "END" : "L" + NumberText(next);
    text += "\n";
  }
  return text;
}

TEST_F(ProjectUpload, EveryTextSurvivesFileWireAndBack) {
  PutIndex(GeneratedProgramme(20261124));
  PutJog("0,1.5\n15,1666666.65\n");
  ASSERT_TRUE(
      ImportCsv(project(), project().Zone(), "zone,lower,upper\n0,-99999.999,99999.999\n").empty());
  ASSERT_TRUE(project().Zone().ChangeAccepted());
  const std::string before = ExportCsv(project().Position());
  DownloadEverything();
  amplifier().ForgetWhatWasAsked();
  UploadIntoFresh();
  EXPECT_EQ(amplifier().Asked("POST"), 128);
  EXPECT_EQ(Differences(), 0);
  // The labels are the default ones, everything else is the same text.
  std::string after = ExportCsv(project().Position());
  std::string expected = before;
  for (std::size_t at = 0; (at = expected.find(",L", at)) != std::string::npos; ++at) {
    expected.replace(at + 1, 1, "label");
  }
  for (std::size_t at = 0; (at = expected.find(",1\n", at)) != std::string::npos; ++at) {
    expected.replace(at, 3, ",0\n");
  }
  EXPECT_EQ(after, expected);
}

TEST_F(ProjectUpload, ARefusedCommitPutsEverythingBack) {
  PutIndex(kTwoSteps);
  DownloadEverything();
  OpenNew("fresh.spj");
  PutIndex("mine,I+7,10,-,1,:::::,IT0,1,END\n");
  project().Position().SetText(2, clsHX7Position::label, "not applied");
  const std::string bytes = world.files.ReadAll(project().ProjectDatabasePath());
  ASSERT_TRUE(RunUploadStages(project()));
  EXPECT_TRUE(project().HoldsUpload());
  EXPECT_EQ(project().Position().Text(1, clsHX7Position::position), "I+7.000") << "held apart";
  world.boxes.Expect("Commit uploaded data to project?", BoxAnswer::no);
  AskToCommitUpload(project());
  EXPECT_EQ(project().Position().Text(1, clsHX7Position::position), "I+7.000");
  EXPECT_EQ(project().Position().Text(2, clsHX7Position::label), "not applied");
  EXPECT_EQ(project().Position().DirtyCell(1), "1");
  EXPECT_EQ(project().WhatIsDirty(), "Index Position table");
  EXPECT_EQ(world.files.ReadAll(project().ProjectDatabasePath()), bytes);
}

// What an amplifier holds, what the project is told, and whether the upload counts as a success.
TEST_F(ProjectUpload, TheChecksumDecidesWhatBecomesOfAnUploadedMachine) {
  ASSERT_TRUE(project().DownloadAll());
  ASSERT_EQ(session.Helix7()->GoOnlineAfterRestart(), kSuccess);
  const std::string checksumOfNoTurns = rx900Utils.MechSystemChecksum(0, 1, 3, 5.0F, "0001");
  struct Case {
    const char* what;
    std::vector<std::pair<std::uint32_t, std::string>> parameters;
    bool success;
    int checkSumFailed, noCheckSum, zeroSystem;
  };
  const Case cases[] = {
      {"the machine as it was sent", {}, true, 0, 0, 0},
      {"a described machine under another checksum", {{0x829, "11111111"}}, true, 1, 0, 0},
      {"no turns under another checksum", {{0x82B, "0"}}, false, 0, 0, 1},
      {"no turns under their own checksum",
       {{0x829, checksumOfNoTurns.substr(0, 8)}, {0x82A, checksumOfNoTurns.substr(8)}},
       false,
       0,
       0,
       1},
      {"an amplifier that was never given a machine",
       {{0x829, "0"},
        {0x82A, "0"},
        {0x82B, "0"},
        {0x82C, "0"},
        {0x82D, "0"},
        {0x82E, "0000"},
        {0x82F, "0"},
        {0x830, "0"}},
       false,
       0,
       1,
       0},
  };
  for (const Case& c : cases) {
    for (const auto& [pn, value] : c.parameters) {
      ASSERT_TRUE(amplifier().State().memory.parameters.Write(pn, value)) << c.what;
    }
    int checkSumFailed = 0, noCheckSum = 0, zeroSystem = 0;
    Connections told;
    told += project().MechanicalSystemCheckSumFailed.Connect([&] { ++checkSumFailed; });
    told += project().MechanicalSystemNoCheckSum.Connect([&] { ++noCheckSum; });
    told += project().MechanicalSystemZeroSystem.Connect([&] { ++zeroSystem; });
    EXPECT_EQ(project().MechanicalSystem().Upload(), c.success) << c.what;
    EXPECT_EQ(checkSumFailed, c.checkSumFailed) << c.what;
    EXPECT_EQ(noCheckSum, c.noCheckSum) << c.what;
    EXPECT_EQ(zeroSystem, c.zeroSystem) << c.what;
    // A refused machine leaves the project's own, and its factors.
    EXPECT_EQ(project().MechanicalSystem().A_Value(), 5000) << c.what;
    EXPECT_DOUBLE_EQ(project().ConversionForSpeed(), 60) << c.what;
  }
}

TEST_F(ProjectUpload, AMachineThatCannotBeReadEndsTheUploadWithoutAgreement) {
  line.faults.Add({.kind = FaultKind::silence, .match = "PRM82D", .count = 0});
  world.boxes.Expect("Could not upload Mechanical System Parameters from controller!",
                     BoxAnswer::no);
  EXPECT_FALSE(RunUploadStages(project()));
  EXPECT_EQ(project().Resolution(), 3);
}

TEST_F(ProjectUpload, EachStageEndsWithItsOwnWords) {
  DownloadEverything();
  struct Case {
    const char* match;
    const char* failed;
    const char* stopped;
    Tool tool;
  };
  const Case cases[] = {
      {"PRM100",
       "Could not upload Hardware Parameters from controller!\rOnly Mechanical System Parameters "
       "were uploaded!",
       "Upload Hardware Parameters terminated!", Tool::editor},
      {"JSPDT3", "Could not upload Jog Table from controller!\rOnly Parameters were uploaded!",
       "Upload Jog Table terminated!", Tool::jog},
      {"ZONEPT9",
       "Could not upload Zone Table from controller!\rOnly Parameters plus Jog Table were "
       "uploaded!",
       "Upload Zone Table terminated!", Tool::zone},
      {"LOOPT20",
       "Could not upload Index Table from controller!\rOnly Parameters plus Jog and Zone Tables "
       "were uploaded!",
       "Upload Index Table terminated!", Tool::position},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.match);
    line.faults.Clear();
    line.faults.Add({.kind = FaultKind::silence, .match = c.match});
    EXPECT_FALSE(RunUploadStages(project()));
    EXPECT_TRUE(world.boxes.shown.back().text.starts_with(std::string(c.failed) + "\r\rReading "))
        << c.match;
    line.faults.Clear();
    const Connection stops =
        project().ToolUploading.Connect([&](Tool tool, std::int16_t row, std::int16_t) {
          if (tool == c.tool && row == 3) session.SetStopProcedure(true);
        });
    EXPECT_FALSE(RunUploadStages(project()));
    EXPECT_EQ(world.boxes.Count(c.stopped), 1) << c.match;
    EXPECT_FALSE(session.StopProcedure()) << "the next transfer must not meet it";
  }
}

TEST_F(ProjectUpload, AnAnswerThatIsNoNumberFailsTheStage) {
  DownloadEverything();
  line.faults.Add({.kind = FaultKind::wrongAnswer, .match = "SPDT5", .text = "0SPDT5=12x4"});
  const std::string kept = project().Position().Text(7, clsHX7Position::position);
  EXPECT_FALSE(project().Position().Upload());
  EXPECT_EQ(project().Position().Text(7, clsHX7Position::position), kept);
}

}  // namespace
}  // namespace velmoor
