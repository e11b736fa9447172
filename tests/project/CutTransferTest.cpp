// A transfer that is cut at any exchange, and the Download New that completes it.

#include <algorithm>
#include <cstdlib>

#include "operations/UploadFlow.h"
#include "platform/Numbers.h"
#include "project/ProjectCompare.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

enum class Cut { silence, error, vanish };

class CutTransfer : public ProjectWorld {
 protected:
  void SetUp() override {
    path = OpenNew("a.spj");
    session.GoOnline();
  }
  template <typename Table>
  void Import(Table& table, const std::string& text) {
    ASSERT_TRUE(ImportCsv(project(), table, text).empty());
    ASSERT_TRUE(table.ChangeAccepted());
  }
  // Two steps, two zones, two speeds and three parameters that the hardware does not have.
  void EditSomeOfEach(int round) {
    const std::string n = NumberText(round + 1);
    Import(project().Position(),
           "label,position,speed,rdst,rspd,pout,event,loop,next\n"
           "one,I+" +
               n + ",10,-,1,:::::,IT0,1,two\ntwo,A-" + n + ".5,20,1,2,NNAZ:,SEL0T100,2,one\n");
    Import(project().Zone(), "zone,lower,upper\n0,1," + n + "1\n1,2," + n + "2\n");
    Import(project().Jog(), "jog,speed\n0," + n + "\n1," + n + ".5\n");
    clsHX7Editor& editor = project().Editor();
    for (const char* const strPn : {"Pn100", "Pn101", "Pn102"}) {
      editor.EditValue(editor.FindRow(strPn), NumberText(41 + round));
    }
    ASSERT_TRUE(editor.AcceptEdits());
  }
  void CutAt(int exchange, Cut cut) {
    const FaultKind kind = cut == Cut::silence ? FaultKind::silence
                           : cut == Cut::error ? FaultKind::deviceError
                                               : FaultKind::hangUp;
    line.faults.Add({.kind = kind, .skip = exchange, .count = cut == Cut::error ? 1 : 0});
  }
  // The line is whole again, and the amplifier was off and on meanwhile: what it did not store is
  // gone.
  void Mend() {
    line.faults.Clear();
    port.Plug();
    amplifier().Restart(port.Now());
    port.Advance(std::chrono::seconds(1));
    session.GoOnline();
  }
  // What survives the loss of power.
  std::vector<std::string> Stored() {
    AmplifierMemory& memory = amplifier().State().memory;
    std::vector<std::string> values;
    for (const auto& row : memory.index.stored) values.insert(values.end(), row.begin(), row.end());
    for (const auto& row : memory.zones.stored) values.insert(values.end(), row.begin(), row.end());
    values.insert(values.end(), memory.jog.stored.begin(), memory.jog.stored.end());
    for (std::uint32_t pn = 0; pn <= 0x834; ++pn) {
      if (const auto value = memory.parameters.Read(pn)) values.push_back(*value);
    }
    return values;
  }
  // The lines of an undisturbed transfer.
  std::vector<std::string> LinesOf(const std::function<bool()>& transfer) {
    amplifier().ForgetWhatWasAsked();
    EXPECT_TRUE(transfer());
    std::vector<std::string> lines;
    for (const JournalEntry& entry : amplifier().Journal()) lines.push_back(entry.line);
    return lines;
  }
  // The restart behind a Download New is not examined, and a card that does not tell its version
  // counts as an old one.
  static bool MayFail(const std::string& sent, Cut cut) {
    return sent == "0RES" || (cut == Cut::error && sent == "0VER");
  }
  void ExpectAmplifierEqualsProject(const std::string& what) {
    amplifier().Restart(port.Now());
    port.Advance(std::chrono::seconds(1));
    session.GoOnline();
    project().Save();
    const std::string fresh = OpenNew("fresh.spj");
    ASSERT_TRUE(RunUploadStages(project())) << what;
    ASSERT_TRUE(project().CommitUpload()) << what;
    project().Save();
    for (const PartComparison& part : CompareProjects(path, fresh)) {
      for (const ProjectDifference& d : part.differences) {
        ADD_FAILURE() << what << ": " << d.part << " " << d.row << " " << d.field << ": '"
                      << d.first << "' '" << d.second << "'";
      }
    }
    world.files.Remove(fresh);
    ASSERT_EQ(session.Open(path), "") << what;
  }

  std::string path;
};

class CutDownload : public CutTransfer, public ::testing::WithParamInterface<Cut> {};

TEST_P(CutDownload, NewIsCompletedByTheNextWhereverItWasCut) {
  ASSERT_TRUE(project().DownloadAll());
  port.Advance(std::chrono::seconds(1));
  session.GoOnline();
  EditSomeOfEach(0);
  const std::vector<std::string> lines = LinesOf([this] { return project().Download(); });
  const int exchanges = static_cast<int>(lines.size());
  ASSERT_GT(exchanges, 25);
  for (int k = 0; k < exchanges; ++k) {
    Mend();
    EditSomeOfEach(k + 1);
    CutAt(k, GetParam());
    const bool done = project().Download();
    EXPECT_EQ(done, MayFail(lines[static_cast<std::size_t>(k)], GetParam())) << k;
    Mend();
    // The marks are on the disk: a new session sees the same.
    project().Save();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_EQ(project().WhatIsDirty().empty(), done) << k;
    EXPECT_TRUE(project().Download()) << k;
    EXPECT_EQ(project().WhatIsDirty(), "") << k;
    if (k % 9 == 0 || k == exchanges - 1) ExpectAmplifierEqualsProject("cut at " + NumberText(k));
  }
}

// Every exchange would take minutes: this many lie between two cuts, unless the environment tells.
int ExchangesBetweenCuts() {
  const char* const told = std::getenv("VELMOOR_EXCHANGES_BETWEEN_CUTS");
  return told == nullptr ? 61 : static_cast<int>(ParseWhole(told).value_or(1));
}

TEST_P(CutDownload, AllIsCompletedByDownloadNew) {
  EditSomeOfEach(0);
  project().Save();
  const AmplifierMemory before = amplifier().State().memory;
  const std::vector<std::string> lines = LinesOf([this] { return project().DownloadAll(); });
  const std::vector<std::string> expected = Stored();
  const int exchanges = static_cast<int>(lines.size());
  ASSERT_GT(exchanges, 1000);
  for (int k = 0; k < exchanges;
       k = std::max(k + 1, std::min(k + ExchangesBetweenCuts(), exchanges - 1))) {
    const std::string& cut = lines[static_cast<std::size_t>(k)];
    amplifier().State().memory = before;
    Mend();
    CutAt(k, GetParam());
    const bool done = project().DownloadAll();
    EXPECT_EQ(done, GetParam() == Cut::error && cut == "0VER") << k << ": " << cut;
    EXPECT_FALSE(project().NeedsSaving()) << k << ": " << cut;
    Mend();
    // The marks are in the project's file without a saving: a new session sees the same.
    session.Close();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_EQ(project().WhatIsDirty().empty(), done || cut == "0RES") << k << ": " << cut;
    EXPECT_TRUE(project().Download()) << k << ": " << cut;
    ASSERT_EQ(Stored(), expected) << k << ": " << cut;
  }
}

std::string NameOf(const ::testing::TestParamInfo<Cut>& cut) {
  switch (cut.param) {
    case Cut::silence:
      return "Silence";
    case Cut::error:
      return "Error";
    default:
      return "Vanish";
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, CutDownload,
                         ::testing::Values(Cut::silence, Cut::error, Cut::vanish), NameOf);

// However a table's download ends before its store: what was sent counts as not sent.
TEST_F(CutTransfer, RowsThatWereSentAndNotStoredAreSentAgain) {
  ASSERT_TRUE(project().DownloadAll());
  struct Case {
    const char* what;
    FaultKind kind;
    const char* match;
    int stopAtRow;
  };
  const Case cases[] = {
      {"a refused row", FaultKind::deviceError, "JSPDT2=", 0},
      {"a refused store", FaultKind::deviceError, "JSPDSTORE", 0},
      {"a row without answer", FaultKind::silence, "JSPDT2=", 0},
      {"a store without answer", FaultKind::silence, "JSPDSTORE", 0},
      {"an alarm in place of an answer", FaultKind::alarmAnswer, "JSPDT2=", 0},
      {"the user's stop", FaultKind::silence, "no such line", 2},
  };
  int speed = 10;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Mend();
    const std::string n = NumberText(++speed);
    std::string speeds = "jog,speed\n";
    for (const char* const row : {"0,", "1,", "2,"}) speeds.append(row).append(n).append("\n");
    Import(project().Jog(), speeds);
    line.faults.Add({.kind = c.kind, .match = c.match});
    Connection stops = project().ToolDownloading.Connect([&](Tool, std::int16_t row, std::int16_t) {
      if (row == c.stopAtRow) session.SetStopProcedure(true);
    });
    EXPECT_FALSE(project().Download());
    stops = Connection();
    session.SetStopProcedure(false);
    EXPECT_EQ(project().WhatIsDirty(), "Jog table");
    EXPECT_EQ(project().Jog().GetNumberOfNewRows(), 3);
    Mend();
    EXPECT_TRUE(project().Download());
    const std::string counts = NumberText(speed * 60);
    for (const int row : {0, 1, 2}) {
      EXPECT_EQ(ParseWhole(amplifier().State().memory.jog.stored[static_cast<std::size_t>(row)]),
                ParseWhole(counts));
    }
  }
}

// An upload that is committed meanwhile reads what the next loss of power takes.
TEST_F(CutTransfer, RowsThatWereReadBackBeforeTheirStoreAreSentAgain) {
  ASSERT_TRUE(project().DownloadAll());
  port.Advance(std::chrono::seconds(1));
  session.GoOnline();
  Import(project().Jog(), "jog,speed\n0,12\n");
  line.faults.Add({.kind = FaultKind::silence, .match = "JSPDSTORE"});
  EXPECT_FALSE(project().Download());
  project().Zone().SetText(1, 0, "3");
  ASSERT_TRUE(project().UploadParts({Tool::jog, Tool::zone}));
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(project().WhatIsDirty(), "Jog table") << "nothing of the zones was left unstored";
  project().Save();
  ASSERT_EQ(session.Open(path), "");
  Mend();
  EXPECT_EQ(amplifier().State().memory.jog.working.front(), "") << "the power took it";
  EXPECT_TRUE(project().Download());
  Mend();
  EXPECT_EQ(amplifier().State().memory.jog.working.front(), "00000720");
  ASSERT_TRUE(project().UploadParts({Tool::jog}));
  ASSERT_TRUE(project().CommitUpload());
  EXPECT_EQ(project().WhatIsDirty(), "");
}

// A download of the whole table is no exception.
TEST_F(CutTransfer, ATableThatIsSentWholeIsPendingUntilItIsStored) {
  ASSERT_TRUE(project().DownloadAll());
  project().Save();
  const Connection stops = project().ToolDownloading.Connect(
      [&](Tool, std::int16_t row, std::int16_t) { session.SetStopProcedure(row == 5); });
  EXPECT_FALSE(project().DownloadParts({Tool::zone}));
  EXPECT_EQ(project().Zone().GetNumberOfNewRows(), 32);
  session.Close();
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(project().Zone().GetNumberOfNewRows(), 32) << "the project's file knows";
}

}  // namespace
}  // namespace velmoor
