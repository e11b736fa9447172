// The rehearsal as the index window offers it.

#include <algorithm>

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

class RehearsalWindow : public AppSession {
 protected:
  void SetUp() override {
    ASSERT_TRUE(Start(data.MakeProject("line1.spj")));
    Put("a,A+40,120,-,1,ANNNN,IT0,1,b\n"
        "b,-,1,-,1,:::::,SEL0T0,1,c\n"
        "c,A+0,100,-,1,NNNNN,IT900,1,a\n");
    Main().Choose("mnuToolsIndexerPosition");
  }
  void Put(const std::string& rows) {
    const std::string head = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
    ASSERT_EQ(ImportCsv(Project(), Project().Position(), head + rows), Texts());
    ASSERT_TRUE(Project().Position().ChangeAccepted());
  }
  headless::HeadlessForm& Index() { return data.forms.Get("frmPosition"); }
  headless::HeadlessForm& Window() { return data.forms.Get("frmRehearsal"); }
  std::string Summary() { return Window().label("lblSummary").Text(); }
  void Rehearse() {
    Index().Press("cmdRehearse");
    PauseInSec(1);
  }
  void Again() {
    Window().Press("cmdRun");
    PauseInSec(1);
  }
  Texts Row(const char* grid, int row) {
    const GridSource& source = *Window().grid(grid).Source();
    Texts texts;
    for (int column = 0; column < source.Columns(); ++column) {
      texts.push_back(source.Text(row, column));
    }
    return texts;
  }
  const TimeLane& Lane(const std::string& name) {
    return *std::ranges::find(Window().timeChart("chtTimes").shown.lanes, name, &TimeLane::name);
  }
};

TEST_F(RehearsalWindow, LeadsFromAFindingToItsStepAndItsTime) {
  const int row = Index().grid("vsFG").Row();
  Rehearse();
  EXPECT_EQ(Summary().substr(0, 11), "2 steps in ");
  EXPECT_TRUE(Summary().ends_with(" s, 2 findings.")) << Summary();
  EXPECT_EQ(Row("vsFindings", 1)[4], "the event SEL0T0 never comes");
  EXPECT_EQ(Row("vsFindings", 2)[4], "Never run: 3");
  EXPECT_EQ(Window().label("lblFindings").Text(), "the event SEL0T0 never comes");
  EXPECT_EQ(Index().grid("vsFG").Row(), row) << "where it was";
  Window().grid("vsFindings").SetCurrent(1, 0);
  Window().grid("vsFindings").RowColChange.Raise();
  EXPECT_EQ(Index().grid("vsFG").Row(), 2);
  const TimeChartData& shown = Window().timeChart("chtTimes").shown;
  ASSERT_EQ(shown.marks.size(), 1U);
  EXPECT_EQ(shown.marks[0].text, "1");
  EXPECT_LE(shown.shadeFrom, shown.marks[0].x);
  EXPECT_GE(shown.shadeTo, shown.marks[0].x);
  EXPECT_LT(shown.shadeFrom, shown.shadeTo);
  Index().Press("cmdCancel");
  Window().grid("vsFindings").RowChosen.Raise(1);
  EXPECT_EQ(Index().grid("vsFG").Row(), 2) << "opened again";
}

TEST_F(RehearsalWindow, TakesInputsAsTheyAreTyped) {
  Rehearse();
  EXPECT_FALSE(Window().EditCell("vsInputs", 1, 0, "soon"));
  ASSERT_TRUE(Window().EditCell("vsInputs", 1, 0, "step 2"));
  Again();
  ASSERT_EQ(data.boxes.shown.size(), 1U);
  EXPECT_TRUE(Boxes()[0].starts_with("The inputs cannot be taken.\rRow 1: '' is none of SEL0"));
  ASSERT_TRUE(Window().EditCell("vsInputs", 1, 1, "SEL0"));
  Again();
  const std::string told = Summary();
  EXPECT_TRUE(told.starts_with("Cycle ")) << told;
  EXPECT_NE(told.find(" s, from step 1 to step 1 again; 3 steps in "), std::string::npos) << told;
  EXPECT_TRUE(told.ends_with(", 1 finding.")) << told;
  EXPECT_EQ(Row("vsFindings", 1)[1], "dwell");
  EXPECT_EQ(Row("vsSteps", 3)[1], "c");
  EXPECT_EQ(Row("vsSteps", 3)[5], "0.000");
  // The timing diagram.
  const TimeLane& output = Lane("POUT0");
  EXPECT_EQ(output.shape, LaneShape::states);
  ASSERT_EQ(output.points.size(), 3U) << "and on again where the programme begins again";
  EXPECT_EQ(output.points[0].y, 1);
  EXPECT_EQ(FixedText(output.points[1].x, 2), Row("vsSteps", 3)[2].substr(0, 4));
  ASSERT_EQ(Lane("Step").bars.size(), 3U);
  EXPECT_EQ(Lane("Step").bars[2].text, "3 c");
  // To a file and back.
  data.dialogs.answers.push_back(data.folder.At("inputs.csv"));
  Window().Press("cmdSaveInputs");
  EXPECT_EQ(data.files.ReadAll(data.folder.At("inputs.csv")), "at,input,state\nstep 2,SEL0,on\n");
  Window().grid("vsInputs").SetCurrent(1, 0);
  Window().Press("cmdDeleteInput");
  EXPECT_EQ(Row("vsInputs", 1)[0], "");
  data.dialogs.answers.push_back(data.folder.At("inputs.csv"));
  Window().Press("cmdLoadInputs");
  EXPECT_EQ(Row("vsInputs", 1), (Texts{"step 2", "SEL0", "on"}));
  data.dialogs.answers.push_back(data.folder.At("record.csv"));
  Window().Press("cmdSaveRecord");
  const std::string record = data.files.ReadAll(data.folder.At("record.csv"));
  EXPECT_TRUE(record.starts_with("time (s),step,position (mm),")) << record.substr(0, 80);
}

TEST_F(RehearsalWindow, RunsWhatIsAppliedAndBeginsWhereTheUserWishes) {
  Rehearse();
  ASSERT_TRUE(Index().EditCell("vsFG", 2, 7, "IT0"));
  const std::string question =
      "What was edited in these windows was not applied yet:\rIndex Table\r\rDo you wish to apply "
      "it?  No rehearses without it.";
  data.boxes.Expect(question, BoxAnswer::no);
  Again();
  EXPECT_EQ(Row("vsFindings", 1)[1], "event") << "as it was";
  data.boxes.Expect(question, BoxAnswer::cancel);
  Window().Press("cmdRun");
  EXPECT_TRUE(Window().button("cmdRun").Enabled()) << "nothing runs";
  data.boxes.Expect(question, BoxAnswer::yes);
  Window().Select("cmbStart", "3 c");
  Again();
  EXPECT_EQ(Row("vsSteps", 1)[0], "3");
  EXPECT_EQ(Project().Position().Stored(2).cells[6], "IT0");
}

TEST_F(RehearsalWindow, CanBeStoppedAndGoesWithItsProject) {
  Put("a,-,1,-,1,:::::,T1000,999,END\n");
  Index().Press("cmdRehearse");
  PauseInSec(0.02F);
  Window().Press("cmdStop");
  EXPECT_TRUE(Summary().starts_with("Stopped.  ")) << Summary();
  Window().Type("txtLongest", "4000");
  Window().Press("cmdRun");
  EXPECT_EQ(Boxes(),
            Texts{"The longest time of a rehearsal is a number of seconds from 0.1 to 600."});
  Window().Type("txtLongest", "3");
  Again();
  EXPECT_EQ(Row("vsFindings", 1)[4], "the programme has not ended after 3.000 s");
  Window().Type("txtLongest", "600");
  Window().Press("cmdRun");
  data.boxes.Expect("All module forms will be unloaded.", BoxAnswer::ok);
  data.boxes.Expect("has not been saved yet.", BoxAnswer::no);
  Main().Choose("mnuFileClose");
  EXPECT_TRUE(data.forms.Shown().empty());
  PauseInSec(1);
}

}  // namespace
}  // namespace velmoor
