// The programme's path and picture, and the edits that keep its labels consistent.
#include <gmock/gmock.h>

#include "tables/MotionPlot.h"
#include "tables/ProgrammeEdits.h"
#include "tables/ProgrammePath.h"
#include "tables/TableBlock.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Programme : public ::testing::Test {
 protected:
  // A complete step but for what is given.
  void Step(int row, const std::string& label, const std::string& move, const std::string& event,
            const std::string& next, const std::string& loop = "1") {
    const std::string cells[] = {label, move, "10", "-", "1", ":::::", event, loop, next};
    for (int column = 0; column < 9; ++column) table.SetText(row, column, cells[column]);
  }
  std::string End(int start) {
    const ProgrammePath path = FollowProgramme(table, start);
    return DescribeEnd(table, path);
  }
  Position table;
};

TEST_F(Programme, ThePathFollowsNextLabelsAndTellsWhatItNeverReaches) {
  Step(1, "a", "I+10", "IT0", "c");
  Step(2, "b", "I+10", "IT0", "END");
  Step(3, "c", "I+10", "IT0", "END");
  Step(4, "", "I+10", "IT0", "END");
  Step(5, "", "I+10", "IT0", "END");
  const ProgrammePath path = FollowProgramme(table, 1);
  EXPECT_THAT(path.steps, ElementsAre(1, 3));
  EXPECT_EQ(path.end, PathEnd::finished);
  EXPECT_THAT(path.unreachable, ElementsAre(2, 4, 5));
  EXPECT_EQ(DescribeUnreachable(path), "Not on the path: steps 2, 4-5");
  EXPECT_EQ(End(1), "Ends after step 3 \"c\".");
}

TEST_F(Programme, ALoopIsEndlessUnlessAnInputIsWaitedForWithinIt) {
  Step(1, "in", "I+1", "SEL0T0", "a");
  Step(2, "a", "I+1", "IT0", "b");
  Step(3, "b", "I-1", "T50", "a");
  EXPECT_EQ(End(1), "Endless loop from step 2 \"a\" on: no step of it waits for an input!");
  Step(3, "b", "I-1", "SEL6T50", "a");
  EXPECT_EQ(End(1), "Repeats from step 2 \"a\" on.");
  EXPECT_FALSE(FollowProgramme(table, 1).loopsWithoutEvent);
}

TEST_F(Programme, EveryOtherEndIsTold) {
  Step(1, "a", "I+1", "IT0", "nowhere");
  EXPECT_EQ(End(1), "Stops after step 1 \"a\": no step has the label \"nowhere\"!");
  EXPECT_EQ(End(7), "Step 7 is empty.");
  table.SetText(2, Position::label, "half");
  Step(1, "a", "I+1", "IT0", "half");
  EXPECT_EQ(End(1), "Stops before step 2 \"half\": its definition is incomplete!");
  for (const char* const event : {"IT0", "NT0", ":T5", "T0"}) {
    Step(1, "a", "+INFINITE", event, "END");
    EXPECT_EQ(End(1), "Runs on in step 1 \"a\": nothing ends its move!") << event;
  }
  for (const char* const event : {"SEL1T0", "T100"}) {
    Step(1, "a", "-INFINITE", event, "END");
    EXPECT_EQ(End(1), "Ends after step 1 \"a\".") << event;
  }
}

// ---- the picture

class Picture : public Programme {
 protected:
  MotionPlot Plot(double acceleration = 0, double deceleration = 0) {
    return PlotMotion(table, FollowProgramme(table, 1), {acceleration, deceleration, 1});
  }
  static double At(const MotionPlot& plot, double time) {
    for (std::size_t i = 1; i < plot.points.size(); ++i) {
      const PlotPoint a = plot.points[i - 1], b = plot.points[i];
      if (time < a.time || time > b.time || b.time <= a.time) continue;
      return a.position + (b.position - a.position) * (time - a.time) / (b.time - a.time);
    }
    return plot.points.back().position;
  }
};

TEST_F(Picture, WithoutAccelerationAMoveIsAStraightLine) {
  Step(1, "a", "I+20", "T500", "b");
  Step(2, "b", "A-10", "IT0", "END");
  const MotionPlot plot = Plot();
  EXPECT_DOUBLE_EQ(At(plot, 1), 10);
  EXPECT_DOUBLE_EQ(At(plot, 2.25), 20);
  EXPECT_DOUBLE_EQ(At(plot, 4), 5);
  EXPECT_DOUBLE_EQ(plot.points.back().time, 5.5);
  EXPECT_DOUBLE_EQ(plot.points.back().position, -10);
  ASSERT_EQ(plot.steps.size(), 2u);
  EXPECT_DOUBLE_EQ(plot.steps[1].from, 2.5);
}

TEST_F(Picture, ALongMoveIsATrapezoidAndAShortOneATriangle) {
  // 10 per second at 10 and 20 per second squared: 5 to speed up, 2.5 to brake, 12.5 between.
  Step(1, "a", "I+20", "IT0", "END");
  const MotionPlot trapezoid = Plot(10, 20);
  EXPECT_DOUBLE_EQ(trapezoid.points.back().time, 1 + 1.25 + 0.5);
  EXPECT_DOUBLE_EQ(At(trapezoid, 1), 5);
  EXPECT_DOUBLE_EQ(At(trapezoid, 2.25), 17.5);
  // 1.5 in all: up to the root of 2 * 1.5 / (1/10 + 1/20), which is the root of 20.
  Step(1, "a", "I+1.5", "IT0", "END");
  const MotionPlot triangle = Plot(10, 20);
  EXPECT_NEAR(triangle.points.back().time, 4.47214 * 0.15, 1e-5);
  EXPECT_DOUBLE_EQ(triangle.points.back().position, 1.5);
}

TEST_F(Picture, EndlessMovesRunUntilTheyAreStopped) {
  Step(1, "a", "-INFINITE", "T2000", "b");
  Step(2, "b", "STOP", "IT0", "END");
  const MotionPlot plot = Plot(10, 10);
  EXPECT_DOUBLE_EQ(At(plot, 1), -5);
  EXPECT_DOUBLE_EQ(At(plot, 3), -25);
  EXPECT_DOUBLE_EQ(plot.points.back().time, 4);
  EXPECT_DOUBLE_EQ(plot.points.back().position, -30);
}

TEST_F(Picture, RepetitionsAndWaitsForInputsAreShortened) {
  Step(1, "a", "I+1", "SEL2T0", "END", "3");
  EXPECT_DOUBLE_EQ(Plot().points.back().position, 3);
  EXPECT_DOUBLE_EQ(Plot().points.back().time, 3 * (0.1 + kDrawnWait));
  EXPECT_FALSE(Plot().shortened);
  Step(1, "a", "I+1", "IT0", "END", "99999");
  EXPECT_DOUBLE_EQ(Plot().points.back().position, kDrawnRepetitions);
  EXPECT_TRUE(Plot().shortened);
}

// ---- labels and their references

class Labels : public Programme {
 protected:
  Labels() {
    Step(1, "a", "I+1", "IT0", "b");
    Step(2, "b", "I+2", "IT0", "c");
    Step(3, "c", "I+3", "IT0", "b");
  }
  std::vector<std::string> Nexts() {
    return {table.Text(1, Position::next), table.Text(2, Position::next),
            table.Text(3, Position::next), table.Text(4, Position::next)};
  }
  std::vector<std::string> Names() {
    return {table.Text(1, Position::label), table.Text(2, Position::label),
            table.Text(3, Position::label), table.Text(4, Position::label)};
  }
};

TEST_F(Labels, AReferenceFollowsARenameAndFallsWithAClearedLabel) {
  MotionTable::Rows before = table.Cells();
  table.SetText(2, Position::label, "B2");
  FollowLabels(table, before);
  EXPECT_THAT(Nexts(), ElementsAre("B2", "c", "B2", ""));
  before = table.Cells();
  table.SetText(2, Position::label, "");
  FollowLabels(table, before);
  EXPECT_THAT(Nexts(), ElementsAre("", "c", "", ""));
}

TEST_F(Labels, LabelsThatOnlyChangePlacesAreNoRename) {
  const MotionTable::Rows before = table.Cells();
  table.SetText(1, Position::label, "b");
  table.SetText(2, Position::label, "a");
  FollowLabels(table, before);
  EXPECT_THAT(Nexts(), ElementsAre("b", "c", "b", ""));
}

TEST_F(Labels, InsertingAndDeletingMovesStepsWithTheirLabels) {
  ASSERT_TRUE(InsertStep(table, 2));
  EXPECT_THAT(Names(), ElementsAre("a", "", "b", "c"));
  EXPECT_THAT(Nexts(), ElementsAre("b", "", "c", "b"));
  EXPECT_EQ(table.Text(4, Position::position), "I+3");
  const MotionTable::Rows before = table.Cells();
  DeleteStep(table, 3);
  FollowLabels(table, before);
  EXPECT_THAT(Names(), ElementsAre("a", "", "c", ""));
  EXPECT_THAT(Nexts(), ElementsAre("", "", "", ""));
  Step(128, "last", "STOP", "IT0", "END");
  EXPECT_FALSE(InsertStep(table, 1));
  EXPECT_EQ(table.Text(1, Position::label), "a");
}

TEST_F(Labels, FillingUpGivesEmptyNumbersOfUsedStepsTheirDefault) {
  table.SetText(5, Position::label, "only");
  table.SetText(3, Position::speed, "");
  AutoFillNoDistance(table, 1);
  EXPECT_EQ(table.Text(5, Position::position), "-");
  EXPECT_EQ(table.Text(5, Position::speed), "1.0");
  EXPECT_EQ(table.Text(5, Position::registrationDistance), "-");
  EXPECT_EQ(table.Text(5, Position::registrationSpeed), "1.0");
  EXPECT_EQ(table.Text(5, Position::outputs), "");
  EXPECT_EQ(table.Text(3, Position::speed), "1.0");
  EXPECT_TRUE(table.IsBlank(6));
  EXPECT_EQ(GetNewNextComboList(table), "|END|a|b|c|only");
}

// ---- blocks

class Blocks : public Labels {
 protected:
  CellContext context{
      [](int, int, const std::string& text) {
        return text == "bad" ? CellCheck::Refuse("It is\rbad.") : CellCheck::Accept(text + "!");
      },
      [](int row, int column) { return std::to_string(row) + "/" + std::to_string(column); }};
};

TEST_F(Blocks, TextsOfOtherProgramsComeWithAnyLineEnd) {
  for (const char* const text : {"1\t2\n3\t4\n", "1\t2\r\n3\t4\r\n", "1\t2\r3\t4", "1\t2\n3\t4"}) {
    Position fresh;
    EXPECT_THAT(PasteBlock(fresh, {4, 1, 4, 1}, text, context), IsEmpty());
    EXPECT_EQ(CopyBlock(fresh, {4, 1, 6, 2}), "1!\t2!\n3!\t4!\n\t\n") << text;
  }
}

TEST_F(Blocks, OneBadCellChangesNothingAndEachIsNamed) {
  const MotionTable::Rows before = table.Cells();
  EXPECT_THAT(PasteBlock(table, {1, 1, 1, 1}, "1\tbad\nbad\t4", context),
              ElementsAre("1/2: It is bad.", "2/1: It is bad."));
  EXPECT_EQ(table.Cells(), before);
}

TEST_F(Blocks, ABlockThatReachesBeyondTheTableIsRefused) {
  EXPECT_THAT(PasteBlock(table, {128, 1, 128, 1}, "1\n2", context),
              ElementsAre("The block of 2 rows and 1 columns does not fit here!"));
  EXPECT_THAT(PasteBlock(table, {1, 8, 1, 8}, "1\t2", context),
              ElementsAre("The block of 1 rows and 2 columns does not fit here!"));
  EXPECT_TRUE(table.IsBlank(128));
}

TEST_F(Blocks, OneTextFillsTheSelectionAndFillDownRepeatsTheFirstRow) {
  EXPECT_THAT(PasteBlock(table, {1, 2, 2, 3}, "7", context), IsEmpty());
  EXPECT_EQ(CopyBlock(table, {1, 2, 2, 3}), "7!\t7!\n7!\t7!\n");
  table.SetText(1, Position::loop, "5");
  EXPECT_THAT(FillDown(table, {1, 0, 3, 8}, context), IsEmpty());
  EXPECT_EQ(CopyBlock(table, {3, 0, 3, 1}), "c\tI+1!\n");
  EXPECT_EQ(table.Text(3, Position::loop), "5!");
  EXPECT_THAT(FillDown(table, {4, 7, 4, 7}, context), IsEmpty());
  EXPECT_EQ(table.Text(4, Position::loop), "5!!");
}

TEST_F(Blocks, FindGoesOnBehindTheCurrentCellAndRoundTheEnd) {
  EXPECT_EQ(FindText(table, {0, 0}, "B"), (CellPlace{1, Position::next}));
  EXPECT_EQ(FindText(table, {1, Position::next}, "b"), (CellPlace{2, Position::label}));
  EXPECT_EQ(FindText(table, {3, Position::next}, "b"), (CellPlace{1, Position::next}));
  EXPECT_EQ(FindText(table, {1, 0}, "nothing"), (CellPlace{0, 0}));
}

}  // namespace
}  // namespace velmoor
