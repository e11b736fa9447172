#include "tables/CellRules.h"

#include <gtest/gtest.h>

#include "support/FakeProject.h"
#include "tables/TableCsv.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;

struct Row {
  int column;
  std::string text;
  std::string stored;  // empty: refused
  std::string words;
};

class IndexCells : public ::testing::Test {
 protected:
  void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      const CellCheck check = CheckIndexCell(project, table, 2, row.column, row.text);
      EXPECT_EQ(check.accepted, !row.stored.empty()) << row.text << ": " << check.words;
      EXPECT_EQ(check.text, row.stored) << row.text;
      EXPECT_EQ(check.words, row.words) << row.text;
    }
  }

  testing::FakeProject project{3};
  Position table;
};

TEST_F(IndexCells, LabelsAreShortUniqueAndNoReservedWord) {
  table.SetText(1, Position::label, "Home");
  const std::string reserved = "Label cannot be \"END\" or contain \"|\"!";
  const std::string twice = "Label is already defined!  Please change label to an unique name!";
  Check({{Position::label, "sixteen letters.", "sixteen letters.", ""},
         {Position::label, "seventeen letters", "", "Label cannot exceed 16 characters in length!"},
         {Position::label,
          "R\xC3\xBC"
          "ckhub_16_lange",
          "R\xC3\xBC"
          "ckhub_16_lange",
          ""},
         {Position::label, "a\tb", "", "Label cannot contain tabs or line breaks!"},
         {Position::label, "Home", "", twice},
         {Position::label, "HOME", "", twice},
         {Position::label, "end", "", reserved},
         {Position::label, "a|b", "", reserved}});
}

TEST_F(IndexCells, MovesKeepTheirPrefixAndTakeTheResolution) {
  const std::string numeric = "Distance value must be numeric!\rPrevious value has been restored!";
  Check({{Position::position, "I+12.345", "I+12.345", ""},
         {Position::position, "A-1", "A-1.000", ""},
         {Position::position, "I7.5", "I+7.500", ""},
         {Position::position, "I-0.0001", "I-0.000", ""},
         {Position::position, "+INFINITE", "+INFINITE", ""},
         {Position::position, "STOP", "STOP", ""},
         {Position::position, "-", "-", ""},
         {Position::position, "I", "", "Distance is required for relative or absolute moves!"},
         {Position::position, "A+1,5", "", numeric},
         {Position::position, "A+99999.999", "A+99999.999", ""},
         {Position::position, "A+100000", "",
          "+100000 is out of range!\rValue must be within the range from -99999.999 and "
          "99999.999!"}});
}

TEST_F(IndexCells, NumbersAreCheckedInCounts) {
  Check({{Position::speed, "10", "10.000", ""},
         {Position::speed, "1E2", "100.000", ""},
         {Position::speed, "fast", "",
          "Speed value must be numeric!\rPrevious value has been restored!"},
         {Position::speed, "-1", "",
          "-1 is out of range!\rValue must be within the range from 0.000 and 1666666.650!"},
         {Position::registrationDistance, "-", "-", ""},
         {Position::registrationDistance, "x", "",
          "Registration Distance value must be numeric!\rPrevious value has been restored!"}});
}

TEST_F(IndexCells, LoopsEventsAndOutputs) {
  const std::string positive =
      "Loop value must be a positive integer!\rPrevious value has been restored!";
  Check({{Position::loop, "99999", "99999", ""},
         {Position::loop, "007", "7", ""},
         {Position::loop, "100000", "",
          "100000 exceeds maximum allowable value!\rMaximum loop count is 99999!"},
         {Position::loop, "0", "", positive},
         {Position::loop, "-3", "", positive},
         {Position::loop, "1.5", "", positive},
         {Position::event, "IT0", "IT0", ""},
         {Position::event, "SEL6T00100", "SEL6T100", ""},
         {Position::event, "N", "NT0", ""},
         {Position::event, "T99999", "T99999", ""},
         {Position::event, "T100000", "",
          "Time value must be in the range from 0 to 99999!\rPrevious value has been restored!"},
         {Position::event, "IT1.5", "",
          "Value must be an integer!\rPlease enter a non-float value.\rPrevious value has been "
          "restored!"},
         {Position::event, "SEL7T0", "",
          "Event must be I, N, D, SEL0 to SEL6, : or nothing, then T and a time!\rPrevious value "
          "has been restored!"},
         {Position::outputs, "NNAZ:", "NNAZ:", ""},
         {Position::outputs, "NNAZ", "",
          "Outputs must be five of the characters A, N, : and Z!\rPrevious value has been "
          "restored!"}});
}

TEST_F(IndexCells, NextIsNotTheStepItself) {
  table.SetText(2, Position::label, "here");
  Check({{Position::next, "END", "END", ""},
         {Position::next, "there", "there", ""},
         {Position::next, "here", "",
          "Next position definition cannot be self!\rChoose different step."}});
}

// ---- whole programmes

const char* const kProgramme =
    "label,position,speed,rdst,rspd,pout,event,loop,next\n"
    "start,A+0,50,-,1,:::::,IT0,1,out\n"
    "out,I+120.5,50,5,2.5,A::::,SEL5T100,3,back\n"
    "back,A+0,80,-,1,N::::,T250,1,start\n";

TEST(IndexCsv, ImportReplacesTheTableAndMarksWhatChanged) {
  const testing::FakeProject project;
  Position table;
  table.SetText(9, Position::label, "old");
  ASSERT_TRUE(ImportCsv(project, table, kProgramme).empty());
  EXPECT_EQ(table.Text(2, Position::position), "I+120.500");
  EXPECT_EQ(table.Text(2, Position::registrationDistance), "5.000");
  EXPECT_EQ(table.Text(2, Position::event), "SEL5T100");
  EXPECT_TRUE(table.IsBlank(9));
  EXPECT_EQ(table.DirtyCell(2), "1");
  EXPECT_EQ(table.DirtyCell(9), "1");
  EXPECT_EQ(table.DirtyCell(10), "0");
  EXPECT_EQ(table.StepsWithNewEvents(), 1);
}

TEST(IndexCsv, ExportReadsBackAsTheSameTable) {
  const testing::FakeProject project;
  Position table, copy;
  ASSERT_TRUE(ImportCsv(project, table, kProgramme).empty());
  table.SetText(1, Position::label, "a, \"b\" ");
  table.SetText(3, Position::next, "a, \"b\"");
  const std::string text = ExportCsv(table);
  EXPECT_EQ(text.substr(0, text.find('\n')),
            "step,label,position,speed,rdst,rspd,pout,event,loop,next,dirty");
  ASSERT_TRUE(ImportCsv(project, copy, text).empty());
  EXPECT_EQ(copy.Text(1, Position::label), "a, \"b\"");
  EXPECT_EQ(copy.Text(3, Position::next), "a, \"b\"");
  EXPECT_EQ(copy.Text(2, Position::speed), "50.000");
}

TEST(IndexCsv, ANumberColumnReplacesOnlyTheRowsNamed) {
  const testing::FakeProject project;
  Position table;
  ASSERT_TRUE(ImportCsv(project, table, kProgramme).empty());
  const std::string change =
      "step,label,position,speed,rdst,rspd,pout,event,loop,next\n3,back,A+1,80,-,1,N::::,T250,1,"
      "END\n";
  ASSERT_TRUE(ImportCsv(project, table, change).empty());
  EXPECT_EQ(table.Text(3, Position::next), "END");
  EXPECT_EQ(table.Text(1, Position::label), "start");
}

TEST(IndexCsv, OneBadCellChangesNothingAndIsNamed) {
  const testing::FakeProject project;
  const std::string head = "step,label,position,speed,rdst,rspd,pout,event,loop,next\n";
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {head + "1,a,A+0,fast,-,1,:::::,IT0,0,END\n",
       {"Row 1, column speed: Speed value must be numeric!",
        "Row 1, column loop: Loop value must be a positive integer!"}},
      {head + "1,a,A+0,5,-,1,:::::,IT0,1,b\n",
       {"Next block 'b' for definition 'Step 1' is undefined! Please edit definition."}},
      {head + "1,a,A+0,5,-,1,:::::,IT0,1,a\n",
       {"Row 1, column next: Next position definition cannot be self! Choose different step."}},
      {head + "1,a,A+0,5,-,1,,IT0,1,END\n",
       {"Definition in step 1 is incomplete! Please edit definition."}},
      {head + "129,a,A+0,5,-,1,:::::,IT0,1,END\n2,b,A+0,5,-,1,ABCDE,IT0,1,END\n",
       {"Line 2, column step: '129' is no row of the table",
        "Row 2, column pout: Outputs must be five of the characters A, N, : and Z!"}},
      {head + "1,a,-,5,-,1,:::::,IT0,1,END\n1,b,-,5,-,1,:::::,IT0,1,END\n",
       {"Row 1, column step: the row is named twice"}},
      {"step,label\n1,a\n",
       {"Column 'position' is missing", "Column 'speed' is missing", "Column 'rdst' is missing",
        "Column 'rspd' is missing", "Column 'pout' is missing", "Column 'event' is missing",
        "Column 'loop' is missing", "Column 'next' is missing"}},
      {"", {"The text holds no header"}},
      {head + "1,\"a,A+0\n", {"Line 2: a quote is never closed"}},
  };
  for (const auto& [text, faults] : cases) {
    Position table;
    table.SetText(1, Position::label, "kept");
    EXPECT_EQ(ImportCsv(project, table, text), faults) << text;
    EXPECT_EQ(table.Text(1, Position::label), "kept") << text;
    EXPECT_EQ(table.DirtyCell(1), "0") << text;
  }
}

TEST(IndexCsv, TellsAFewOfManyFaultsAndNothingThatSteersATerminal) {
  const testing::FakeProject project;
  std::string rows = "jog,speed\n";
  for (int i = 0; i < 900; ++i) rows += "99,1\n";
  clsHX7Jog jog;
  const std::vector<std::string> many = ImportCsv(project, jog, rows);
  ASSERT_EQ(many.size(), 51U);
  EXPECT_EQ(many.front(), "Line 2, column jog: '99' is no row of the table");
  EXPECT_EQ(many.back(), "and 850 more");
  const std::string steering = "\x1b[31m" + std::string(1000, 'x');
  const std::vector<std::string> told = ImportCsv(project, jog, "jog,speed\n" + steering + ",1\n");
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told.front().starts_with("Line 2, column jog: '\\x1b[31mxxx")) << told.front();
  EXPECT_EQ(told.front().size(), 303U);
  Position table;
  EXPECT_EQ(CheckLabel(table, 1, "a\x7f").words, "Label cannot contain control characters!");
}

TEST(IndexCsv, AProgrammeSurvivesASpreadsheetThatRunsFormulas) {
  const testing::FakeProject project;
  Position table;
  const std::string head = "label,position,speed,rdst,rspd,pout,event,loop,next\n";
  ASSERT_EQ(ImportCsv(project, table,
                      head + "=2+3,+INFINITE,5,-,1,:::::,IT0,1,@a\n@a,-,5,-5,1,:::::,IT0,1,END\n"),
            std::vector<std::string>());
  const std::string text = ExportCsv(table);
  EXPECT_NE(text.find("1,'=2+3,'+INFINITE,5.000,-,1.000,:::::,IT0,1,'@a,1\n"
                      "2,'@a,-,5.000,-5.000,1.000,:::::,IT0,1,END,1\n"),
            std::string::npos)
      << text;
  Position copy;
  ASSERT_EQ(ImportCsv(project, copy, text), std::vector<std::string>());
  EXPECT_EQ(copy.Cells(), table.Cells());
}

TEST(ZoneAndJogCsv, LimitsAndSpeeds) {
  const testing::FakeProject project;
  clsHX7Zone zone;
  ASSERT_TRUE(ImportCsv(project, zone, "zone,lower,upper\n31,-5,10.5\n").empty());
  EXPECT_EQ(zone.Text(32, clsHX7Zone::lower), "-5.000");
  EXPECT_EQ(ImportCsv(project, zone, "zone,lower,upper\n0,1,\n1,x,2\n"),
            (std::vector<std::string>{"Row 0, column upper: a zone needs both limits, or none",
                                      "Row 1, column lower: Value must be numeric!"}));
  EXPECT_TRUE(zone.IsBlank(1));
  clsHX7Jog jog;
  ASSERT_TRUE(ImportCsv(project, jog, "speed\n10\n20.1234\n").empty());
  EXPECT_EQ(jog.Text(2, clsHX7Jog::speed), "20.123");
  EXPECT_EQ(
      ImportCsv(project, jog, "jog,speed\n0,-1\n").front(),
      "Row 0, column speed: -1 is out of range! Value must be within the range from 0.000 and "
      "1666666.650!");
  EXPECT_EQ(ExportCsv(jog).substr(0, 38), "jog,speed,dirty\n0,10.000,1\n1,20.123,1\n");
}

}  // namespace
}  // namespace velmoor
