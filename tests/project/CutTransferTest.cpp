// A transfer that is cut at any exchange, and the Download New that completes it.

#include "platform/Numbers.h"
#include "project/ProjectCompare.h"
#include "project/UploadFlow.h"
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
    BlockMatrix rows;
    project().Editor().GetBlockMatrix(rows);
    for (const char* const strPn : {"Pn100", "Pn101", "Pn102"}) {
      const int row = rows.FindRow(strPn);
      rows.Set(row, Column::value, NumberText(40 + round));
      rows.Set(row, Column::dirty, "1");
    }
    project().Editor().LetBlockMatrix(rows);
    ASSERT_TRUE(project().Editor().SaveToDB());
    project().Editor().SetIsDirty(true);
  }
  void CutAt(int exchange, Cut cut) {
    const FaultKind kind = cut == Cut::silence ? FaultKind::silence
                           : cut == Cut::error ? FaultKind::deviceError
                                               : FaultKind::hangUp;
    line.faults.Add({.kind = kind, .skip = exchange, .count = cut == Cut::error ? 1 : 0});
  }
  // The line is whole again. After a loss the amplifier was off and on meanwhile; one that refused
  // has kept what it took.
  void Mend(Cut cut) {
    line.faults.Clear();
    port.Plug();
    if (cut != Cut::error) amplifier().Restart(port.Now());
    port.Advance(std::chrono::seconds(1));
    session.GoOnline();
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
    project().CommitUploadedData();
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
    Mend(GetParam());
    EditSomeOfEach(k + 1);
    CutAt(k, GetParam());
    const bool done = project().Download();
    EXPECT_EQ(done, MayFail(lines[static_cast<std::size_t>(k)], GetParam())) << k;
    Mend(GetParam());
    // The marks are on the disk: a new session sees the same.
    project().Save();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_EQ(project().WhatIsDirty().empty(), done) << k;
    EXPECT_TRUE(project().Download()) << k;
    EXPECT_EQ(project().WhatIsDirty(), "") << k;
    if (k % 9 == 0 || k == exchanges - 1) ExpectAmplifierEqualsProject("cut at " + NumberText(k));
  }
}

TEST_P(CutDownload, AllIsCompletedByDownloadNew) {
  EditSomeOfEach(0);
  const std::vector<std::string> lines = LinesOf([this] { return project().DownloadAll(); });
  const int exchanges = static_cast<int>(lines.size());
  ASSERT_GT(exchanges, 1000);
  for (int k = 1; k < exchanges; k += 211) {
    Mend(GetParam());
    EditSomeOfEach(k + 1);
    CutAt(k, GetParam());
    EXPECT_FALSE(project().DownloadAll()) << k;
    EXPECT_TRUE(project().NeedsSaving());
    Mend(GetParam());
    project().Save();
    ASSERT_EQ(session.Open(path), "");
    EXPECT_NE(project().WhatIsDirty(), "") << k;
    EXPECT_TRUE(project().Download()) << k;
    ExpectAmplifierEqualsProject("cut at " + NumberText(k));
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

TEST_F(CutTransfer, ATableThatWasSentAndNotStoredIsSentAgain) {
  EditSomeOfEach(0);
  line.faults.Add({.kind = FaultKind::deviceError, .match = "PGMSTORE"});
  EXPECT_FALSE(project().Download());
  EXPECT_EQ(project().Position().GetNumberOfNewRows(), 2);
}

}  // namespace
}  // namespace velmoor
