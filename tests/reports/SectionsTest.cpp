// The report of a project as text: which sections, in which order, with which rows.

#include <functional>

#include "reports/SectionReport.h"
#include "reports/rptHX7Main.h"
#include "support/ProjectWorld.h"
#include "tables/TableCsv.h"
#include "tools/ParameterRules.h"

namespace velmoor {
namespace {

enum Item { communications, machine, params, tuning, interface, flexibleIO, overTravel, homing };
constexpr std::size_t kIndex = 8, kJog = 9, kZone = 10;

class ReportTest : public ProjectWorld {
 protected:
  ReportTest() { OpenNew("line1.spj"); }

  PrintDocument Report(const PrintItems& items) {
    rptHX7Main report;
    report.SetProject(project());
    report.SetPrintReportItems(items);
    report.SetMoment({.year = 2026, .month = 11, .day = 24, .hour = 22, .minute = 5, .second = 0});
    return report.Run();
  }
  PrintSection Section(std::size_t item) {
    PrintItems items{};
    items[item] = true;
    PrintDocument document = Report(items);
    EXPECT_EQ(document.sections.size(), 1U);
    return document.sections.at(0);
  }
  static PrintItems All() {
    PrintItems items{};
    items.fill(true);
    return items;
  }
  // A row's cells behind bars, numbers in square brackets.
  static std::string Line(const std::vector<PrintCell>& row) {
    std::string line;
    for (const PrintCell& cell : row) {
      line += (line.empty() ? "" : "|") + (cell.number ? "[" + cell.text + "]" : cell.text);
    }
    return line;
  }
  static std::vector<std::string> Column(const PrintSection& section, std::size_t column) {
    std::vector<std::string> texts;
    for (const auto& row : section.rows) texts.push_back(row.at(column).text);
    return texts;
  }
  void Import(const std::string& index) {
    ASSERT_TRUE(ImportCsv(project(), project().Position(), index).empty());
    ASSERT_TRUE(project().Position().ChangeAccepted());
  }
};

using Texts = std::vector<std::string>;

// ---- the document

TEST_F(ReportTest, AllElevenSectionsStandInTheOrderOfTheirBoxes) {
  const PrintDocument document = Report(All());
  Texts titles, names;
  std::string pages;
  for (const PrintSection& section : document.sections) {
    titles.push_back(section.title);
    names.push_back(section.name);
    pages += section.newPage ? "n" : "-";
    for (const auto& row : section.rows) EXPECT_EQ(row.size(), section.headings.size());
  }
  EXPECT_EQ(titles, (Texts{"Communications Settings", "Mechanical System Settings",
                           "All Parameters", "Gain Tuning Parameters", "Interface Parameters",
                           "Flexible I/O Parameters", "Over Travel Parameters", "Homing Parameters",
                           "Index Table", "Jog Table", "Zone Table"}));
  EXPECT_EQ(names, (Texts{"srptCommunications", "srptMechanicalSystem", "srptParams", "srptTuning",
                          "srptInterface", "srptFlexibleIO", "srptOverTravel", "srptHoming",
                          "srptIndex", "srptJog", "srptZone"}));
  EXPECT_EQ(pages, "-nnnnnnnnnn");
}

TEST_F(ReportTest, ASectionAloneSharesThePageOfTheHead) {
  for (std::size_t item = 0; item < kReportItems; ++item) {
    const PrintSection section = Section(item);
    EXPECT_EQ(section.title, ReportItems()[item].label);
    EXPECT_FALSE(section.newPage) << section.title;
  }
}

TEST_F(ReportTest, TheFrameTellsFileDateAndTime) {
  const PrintDocument document = Report({});
  EXPECT_TRUE(document.sections.empty());
  EXPECT_EQ(document.header, world.folder.At("line1.spj"));
  EXPECT_EQ(document.title, "line1");
  EXPECT_EQ(document.subtitle, "Set-up of axis 0, November 24, 2026");
  EXPECT_EQ(document.facts.front(), (PrintFact{"Machine", "Leadscrew"}));
  EXPECT_EQ(document.facts[1], (PrintFact{"Motor", "30 W"}));
  EXPECT_EQ(document.facts.back(), (PrintFact{"To be downloaded", "nothing"}));
  EXPECT_EQ(document.signatures, (Texts{"Set up by", "Checked by", "Date"}));
  EXPECT_EQ(document.date + "|" + document.time, "November 24, 2026|10:05 PM");
  EXPECT_EQ(document.page + " " + document.pages, "Page # of #");
  EXPECT_EQ(document.font, "Arial");
}

TEST(ReportTime, RunsFromTwelveToEleven) {
  const auto at = [](int hour, int minute) {
    WallTime moment;
    moment.hour = hour;
    moment.minute = minute;
    return ClockTime(moment);
  };
  EXPECT_EQ(at(0, 0), "12:00 AM");
  EXPECT_EQ(at(9, 7), "9:07 AM");
  EXPECT_EQ(at(12, 30), "12:30 PM");
  EXPECT_EQ(at(23, 59), "11:59 PM");
}

TEST(ReportFonts, FollowTheLanguage) {
  EXPECT_EQ(ReportFont(1), "Symbol");
  EXPECT_EQ(ReportFont(2), "Arial");
}

// ---- known rows

TEST_F(ReportTest, CommunicationsAreFourLinesWithPortsFromOne) {
  session.SetAxis("B");
  session.SetCOM(2);
  session.SetBaudRate(19200);
  session.SetEcho(0);
  const PrintSection section = Section(communications);
  EXPECT_EQ(Column(section, 0), (Texts{"Axis", "COM Port", "Baud Rate", "Echo"}));
  EXPECT_EQ(Column(section, 1), (Texts{"B", "3", "19200", "No"}));
  session.SetEcho(1);
  EXPECT_EQ(Section(communications).rows[3][1].text, "Yes");
}

TEST_F(ReportTest, TheSystemsOwnLinesLeadTheMachine) {
  const PrintSection section = Section(machine);
  Texts lines;
  for (const auto& row : section.rows) lines.push_back(Line(row));
  EXPECT_EQ(section.headings, (Texts{"Parameter", "Description", "Value", "Units"}));
  EXPECT_EQ(
      lines,
      (Texts{"Pn82E.2|System|Leadscrew|", "Pn82E.3|Encoder Count|[2048]|",
             "Pn829|Machine checksum, first half|[67466849]|",
             "Pn82A|Machine checksum, second half|[63329797]|", "Pn82B|N1|[1]|", "Pn82C|N2|[1]|",
             "Pn82D|Resolution|[3]|", "Pn82E.0|Machine Units Base|mm|",
             "Pn82E.1|Time Base|seconds|", "Pn82F.0|Lead|[5]|mm",
             "Pn830|Machine measure, second half|[84227584]|",
             "Pn81E|Default Speed|[50.000]|mm/sec", "Pn81F|Acceleration|[1000.000]|mm/sec^2",
             "Pn820|Deceleration|[1000.000]|mm/sec^2", "Pn821|In Position Window|[0.010]|mm",
             "Pn822|Near Position Window|[0.100]|mm", "Pn202|Electronic Gear Ratio (B)|[8192]|",
             "Pn203|Electronic Gear Ratio (A)|[5000]|"}));
}

TEST_F(ReportTest, ParametersHaveUnitsInWordsAndLimitsInUnits) {
  const PrintSection section = Section(params);
  EXPECT_EQ(section.headings,
            (Texts{"Parameter", "Description", "Value", "Units", "Minimum", "Maximum"}));
  const auto row = [&section](const std::string& strPn) {
    for (const auto& fields : section.rows) {
      if (fields[0].text == strPn) return Line(fields);
    }
    return std::string("none");
  };
  EXPECT_EQ(row("Pn000"), "Pn000|Direction and axis|[0000]||[0000]|[0FB1]");
  EXPECT_EQ(row("Pn101"), "Pn101|Speed loop integral time|[2000]|0.01 ms|[15]|[51200]");
  EXPECT_EQ(row("Pn81B"), "Pn81B|Positive limit|[99999.999]|mm|[-99999.999]|[99999.999]");
  EXPECT_EQ(row("Pn825"), "Pn825|Homing approach speed|[5.000]|mm/sec|[0.017]|[1666666.650]");
  EXPECT_EQ(row("Pn81A"), "Pn81A|Axis type|Linear||[]|[]");
}

TEST_F(ReportTest, TuningKeepsItsOwnOrder) {
  EXPECT_EQ(Column(Section(tuning), 0),
            (Texts{"Pn100", "Pn101", "Pn102", "Pn103", "Pn107", "Pn108", "Pn109", "Pn10A", "Pn110",
                   "Pn401", "Pn408", "Pn409"}));
}

TEST_F(ReportTest, ListsAreShownAsTheirTexts) {
  EXPECT_EQ(Section(interface).headings, (Texts{"Parameter", "Description", "Value"}));
  EXPECT_EQ(Line(Section(interface).rows[0]),
            "Pn800|Serial protocol|RS422 + Echoback (RS232 + Echoback)");
  // A list's item stays a text although it looks like a number.
  EXPECT_EQ(Line(Section(interface).rows[1]), "Pn801|Baud rate|9600");
}

TEST_F(ReportTest, TheIndexTableCountsRowsFromZero) {
  Import(
      "label,position,speed,rdst,rspd,pout,event,loop,next\ngo,A-1.5,10,2,1,AN:Z:,SEL5T100,3,"
      "END\n");
  const PrintSection section = Section(kIndex);
  EXPECT_EQ(section.headings, (Texts{"Row ID", "Label", "Position(mm)", "Speed(mm/sec)", "RDST(mm)",
                                     "RSPD(mm/sec)", "POUT", "Event", "Loop", "Next"}));
  ASSERT_EQ(section.rows.size(), 128U);
  EXPECT_EQ(Line(section.rows[0]),
            "[0]|go|[A-1.500]|[10.000]|[2.000]|[1.000]|AN:Z:|SEL5T100|[3]|END");
  EXPECT_EQ(Line(section.rows[127]), "[127]||[]|[]|[]|[]|||[]|");
}

TEST_F(ReportTest, JogAndZoneTablesNameTheirUnitsBehindABlank) {
  ASSERT_TRUE(ImportCsv(project(), project().Jog(), "speed\n7.5\n").empty());
  ASSERT_TRUE(ImportCsv(project(), project().Zone(), "lower,upper\n-1,2.5\n").empty());
  ASSERT_TRUE(project().Jog().ChangeAccepted() && project().Zone().ChangeAccepted());
  const PrintSection jog = Section(kJog);
  const PrintSection zone = Section(kZone);
  EXPECT_EQ(jog.headings, (Texts{"Row ID", "Speed (mm/sec)", "JOG0", "JOG1", "JOG2", "JOG3"}));
  EXPECT_EQ(zone.headings, (Texts{"Row ID", "Lower Limit (mm)", "Upper Limit (mm)", "POUT0",
                                  "POUT1", "POUT2", "POUT3", "POUT4"}));
  ASSERT_EQ(jog.rows.size(), 16U);
  ASSERT_EQ(zone.rows.size(), 32U);
  EXPECT_EQ(Line(jog.rows[0]), "[0]|[7.500]|[0]|[0]|[0]|[0]");
  EXPECT_EQ(Line(jog.rows[13]).substr(0, 4), "[13]");
  EXPECT_EQ(Line(zone.rows[0]).substr(0, 20), "[0]|[-1.000]|[2.500]");
}

// ---- exactly the rows of the tool

TEST_F(ReportTest, EachParameterSectionPrintsExactlyTheRowsOfItsTool) {
  const std::vector<std::pair<Item, ParameterToolBase*>> tools{
      {params, &project().Editor()},         {tuning, &project().Tuning()},
      {interface, &project().Interface()},   {flexibleIO, &project().FlexibleIO()},
      {overTravel, &project().OverTravel()}, {homing, &project().Homing()}};
  for (const auto& [item, tool] : tools) {
    const PrintSection section = Section(item);
    Texts names, values;
    for (int row = 1; row <= tool->RowsInArray(); ++row) {
      names.push_back(tool->Text(row, Column::name));
      values.push_back(tool->Text(row, Column::value));
    }
    EXPECT_FALSE(names.empty());
    EXPECT_EQ(Column(section, 0), names) << section.title;
    EXPECT_EQ(Column(section, 2), values) << section.title;
  }
}

TEST_F(ReportTest, EachTableSectionPrintsExactlyTheRowsOfItsTool) {
  Import(
      "label,position,speed,rdst,rspd,pout,event,loop,next\na,-,1,-,1,:::::,IT0,1,b\nb,I+2,1,-,1,"
      "ZZZZZ,T5,1,END\n");
  const std::vector<std::pair<std::size_t, MotionTable*>> tables{
      {kIndex, &project().Position()}, {kJog, &project().Jog()}, {kZone, &project().Zone()}};
  for (const auto& [item, table] : tables) {
    const PrintSection section = Section(item);
    for (std::size_t column = 0; column < table->Layout().columns.size(); ++column) {
      Texts texts;
      for (int row = 1; row <= table->RowsInArray(); ++row) {
        texts.push_back(table->Stored(row).cells[column]);
      }
      EXPECT_EQ(Column(section, column + 1), texts) << section.title;
    }
  }
}

TEST_F(ReportTest, AReportReadsTheProjectAndNotTheEditsOfAWindow) {
  clsHX7Tuning& tool = project().Tuning();
  const std::string held = tool.Text(1, Column::value);
  tool.EditValue(1, "77");
  project().Jog().SetText(1, 0, "5.000");
  EXPECT_EQ(Section(tuning).rows[0][2].text, held);
  EXPECT_EQ(Section(kJog).rows[0][1].text, "");
  ASSERT_TRUE(tool.AcceptEdits());
  EXPECT_EQ(Section(tuning).rows[0][2].text, "77");
  EXPECT_EQ(amplifier().Counts().size(), 0U);
}

}  // namespace
}  // namespace velmoor
