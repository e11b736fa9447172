// Recording, overlay and the minute before an alarm, as the windows offer them.

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "AppSession.h"
#include "instruments/AlarmRecordings.h"
#include "online/AlarmAdvice.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "reports/rptHX7Main.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

class Recordings : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  headless::HeadlessForm& Monitoring() { return data.forms.Get("frmMonitoring"); }
  headless::HeadlessForm& Window() { return data.forms.Get("frmRecordings"); }
  RecordingFolder Folder() { return RecordingFolder(path); }
  // Monitors those items, the first of which is PUN, and acts at a pass of it.
  void Monitor(const Texts& ticks, const std::vector<std::pair<int, std::function<void()>>>& acts) {
    Main().Choose("mnuToolsMonitoring");
    for (const std::string& tick : ticks) Monitoring().Check(tick, true);
    int last = 0;
    for (const auto& [yield, act] : acts) {
      data.events.AtYield(yield, act);
      last = std::max(last, yield);
    }
    for (int yield = 0; yield <= last; ++yield) {
      data.events.AtYield(yield, [this] { port.Advance(10ms); });
    }
    data.events.AtYield(last + 1, [this] { Monitoring().Press("cmdMonitoring"); });
    Monitoring().Press("cmdMonitoring");
    Monitoring().Press("cmdExit");
  }
  void Record() { Monitoring().Press("cmdRecord"); }
  std::string Cell(const char* grid, int row, int column) {
    return Window().grid(grid).Source()->Text(row, column);
  }
  Texts Column(const char* grid, int column) {
    Texts texts;
    const GridSource& source = *Window().grid(grid).Source();
    for (int row = 1; row < source.Rows(); ++row) texts.push_back(source.Text(row, column));
    return texts;
  }
  void Idle(std::chrono::milliseconds time) {
    for (auto passed = 0ms; passed < time; passed += 100ms) {
      port.Advance(100ms);
      data.events.Yield();
    }
  }
};

TEST_F(Recordings, WhatMonitoringReadsIsInTheFileSampleBySample) {
  Amplifier().SetValue("NFB", 120);
  Texts asked;
  Monitor({"chkOption_0", "chkOption_7"},
          {{3,
            [this] {
              Record();
              Amplifier().ForgetWhatWasAsked();
            }},
           {20, [&] {
              for (const JournalEntry& entry : Amplifier().Journal()) asked.push_back(entry.line);
              Record();
            }}});
  ASSERT_EQ(Folder().Names().size(), 1U);
  const Recording recording = ReadRecording(Folder().PathOf(Folder().Names().front()));
  const auto& speed = recording.CurveOf("Motor Speed");
  const auto& position = recording.CurveOf("Current Position");
  // Each reading is a sample, and nothing was asked for them.
  EXPECT_EQ(speed.size() + position.size(), asked.size());
  EXPECT_EQ(std::ranges::count(asked, "0NFB"), std::ssize(speed));
  EXPECT_EQ(std::ranges::count(asked, "0PUN"), std::ssize(position));
  EXPECT_EQ(recording.heading.items.size(), 2U);
  // Nobody has described the machine yet.
  EXPECT_EQ(recording.heading.items.at(1).unit, "rpm");
  EXPECT_EQ(speed.front().y, 120);
  EXPECT_EQ(recording.heading.project, "line1.spj");
  EXPECT_EQ(recording.heading.axis, "0");
  EXPECT_THAT(recording.heading.gains, StartsWith("Pn100="));
  EXPECT_THAT(recording.heading.gains, testing::Not(HasSubstr("of the project")));
  EXPECT_NE(recording.heading.window, "");
  EXPECT_THAT(recording.heading.rate, HasSubstr("all items together"));
}

TEST_F(Recordings, ATriggerIsSetInTheWindow) {
  Main().Choose("mnuToolsRecordings");
  Window().Select("cmbTrigger", "Motor Speed");
  Window().Type("txtLevel", "fast");
  Window().Press("cmdRecord");
  EXPECT_EQ(Boxes(), Texts{"The level is a number in rpm."});
  Window().Select("cmbEvent", "rises to");
  Window().Type("txtLevel", "50");
  Window().Type("txtBefore", "61");
  Window().Press("cmdRecord");
  EXPECT_EQ(Boxes(), Texts{"A time is a number of seconds from 0 to 60."});
  Window().Type("txtBefore", "0.1");
  Window().Type("txtLength", "0.5");
  Window().Press("cmdRecord");
  EXPECT_EQ(Window().label("lblRecorder").Text(), "Waiting: Motor Speed rises to 50 rpm");
  Amplifier().SetValue("NFB", 0);
  Monitor({"chkOption_7"}, {{10, [this] { Amplifier().SetValue("NFB", 600); }}, {300, [] {}}});
  EXPECT_THAT(Window().label("lblRecorder").Text(), StartsWith("Recorded as "));
  ASSERT_EQ(Column("vsRecordings", 1).size(), 1U);
  EXPECT_EQ(Cell("vsRecordings", 1, 2), "Motor Speed rises to 50 rpm");
  const Recording recording = ReadRecording(Folder().PathOf(Cell("vsRecordings", 1, 1)));
  EXPECT_LT(recording.Begin(), -0.03);
  EXPECT_GE(recording.Begin(), -0.1);
  EXPECT_LE(recording.End(), 0.5);
  EXPECT_GT(recording.End(), 0.4);
}

// A step is known by its target.
TEST_F(Recordings, AStepOfTheProgrammeTriggers) {
  const std::string rows =
      "label,position,speed,rdst,rspd,pout,event,loop,next\n"
      "a,A+40,120,-,1,:::::,IT0,1,b\nb,I+5,120,-,1,:::::,IT0,1,a\n";
  ASSERT_EQ(ImportCsv(Project(), Project().Position(), rows), Texts());
  ASSERT_TRUE(Project().Position().ChangeAccepted());
  Main().Choose("mnuToolsRecordings");
  Window().Select("cmbTrigger", "Programme step");
  for (const char* const step : {"2", "3", "0", "x", "200"}) {
    Window().Type("txtLevel", step);
    Window().Press("cmdRecord");
    EXPECT_EQ(Boxes().size(), 1U) << step;
  }
  Window().Type("txtLevel", "1");
  Window().Press("cmdRecord");
  EXPECT_EQ(Window().label("lblRecorder").Text(), "Waiting: step 1 begins");
  Amplifier().SetValue("POS", 0);
  Monitor({"chkOption_2"}, {{10, [this] { Amplifier().SetValue("POS", 40000); }}, {20, [] {}}});
  Window().Press("cmdRecord");
  ASSERT_EQ(Column("vsRecordings", 1).size(), 1U);
  const Recording recording = ReadRecording(Folder().PathOf(Cell("vsRecordings", 1, 1)));
  EXPECT_EQ(recording.CurveOf("Target Position").back().y, 40000);
}

TEST_F(Recordings, TwoAreLaidOverEachOtherNamedNotedAndDeleted) {
  for (const int speed : {60, 90}) {
    Amplifier().SetValue("NFB", 0);
    Monitor({"chkOption_0", "chkOption_7", "chkOption_9"},
            {{2, [this] { Record(); }},
             {20, [&] { Amplifier().SetValue("NFB", speed); }},
             {40, [&] { Amplifier().SetValue("NFB", 0); }},
             {60, [this] { Record(); }}});
    data.clock.Advance(2s);
  }
  Main().Choose("mnuToolsRecordings");
  ASSERT_EQ(Column("vsRecordings", 1).size(), 2U);
  Window().grid("vsRecordings").RowChosen.Raise(1);
  Window().grid("vsRecordings").RowChosen.Raise(2);
  const TimeChartData& chart = Window().timeChart("chtTimes").shown;
  ASSERT_EQ(chart.lanes.size(), 3U);
  EXPECT_EQ(chart.lanes[1].name, "Motor Speed");
  ASSERT_EQ(chart.lanes[1].others.size(), 1U);
  EXPECT_EQ(Column("vsFigures", 0).front(), "Rise time, 10 to 90 % (s)");
  EXPECT_EQ(Window().grid("vsFigures").Source()->Columns(), 4);
  // At the start of motion both leave standstill at the same place.
  Window().Select("cmbAlign", "the start of motion");
  const auto leaves = [](const std::vector<ChartPoint>& points) {
    const auto moving = std::ranges::find_if(points, [](const auto& each) { return each.y > 0; });
    return std::prev(moving)->x;
  };
  const TimeChartData aligned = Window().timeChart("chtTimes").shown;
  EXPECT_NEAR(leaves(aligned.lanes[1].points), 0, 1e-9);
  EXPECT_NEAR(leaves(aligned.lanes[1].others[0].points), 0, 1e-9);
  // By hand the current one, which is the newer.
  Window().grid("vsRecordings").SetCurrent(1, 1);
  Window().Press("cmdLater");
  const TimeChartData moved = Window().timeChart("chtTimes").shown;
  EXPECT_NEAR(leaves(moved.lanes[1].points), 0, 1e-9);
  EXPECT_GT(leaves(moved.lanes[1].others[0].points), 0);
  Window().timeChart("chtTimes").Point.Raise(0.1);
  Window().timeChart("chtTimes").Point.Raise(0.35);
  EXPECT_EQ(Window().label("lblCursors").Text(), "A 0.100 s, B 0.350 s: 0.250 s apart");

  EXPECT_FALSE(Window().EditCell("vsRecordings", 1, 1, "a/b"));
  EXPECT_TRUE(Window().EditCell("vsRecordings", 1, 1, "stiffer"));
  EXPECT_TRUE(Window().EditCell("vsRecordings", 1, 3, "belt tightened"));
  EXPECT_EQ(ReadRecordingHeading(Folder().PathOf("stiffer")).note, "belt tightened");
  EXPECT_EQ(Cell("vsFigures", 0, 2), "stiffer");
  data.dialogs.answers.push_back(data.folder.At("figures.csv"));
  Window().Press("cmdSaveFigures");
  EXPECT_TRUE(std::filesystem::exists(data.folder.At("figures.csv")));
  data.boxes.Expect("The recording stiffer is deleted for good.\rDo you wish that?",
                    BoxAnswer::yes);
  Window().grid("vsRecordings").SetCurrent(1, 1);
  Window().Press("cmdDelete");
  EXPECT_EQ(Column("vsRecordings", 1).size(), 1U);
  EXPECT_EQ(Window().grid("vsFigures").Source()->Columns(), 2);
}

TEST_F(Recordings, TheMinuteBeforeAnAlarmIsKept) {
  Amplifier().SetValue("TREF", 30);
  Amplifier().SetBit("IN1", 3, true);
  Idle(5s);
  Amplifier().SetValue("TREF", 263);
  Idle(3s);
  Amplifier().RaiseAlarm("A.43");
  Idle(2s);
  EXPECT_EQ(Boxes(), Texts{});
  const Texts names = AlarmRecordings(Folder());
  ASSERT_EQ(names.size(), 1U) << "once, however often it is read";
  EXPECT_THAT(names.front(), testing::EndsWith(" alarm A.43"));
  const Recording recording = ReadRecording(Folder().PathOf(names.front()));
  const auto& torque = recording.CurveOf("Torque");
  ASSERT_GE(torque.size(), 7U);
  EXPECT_EQ(torque.front().y, 30);
  EXPECT_EQ(torque.back().y, 263);
  EXPECT_LE(torque.back().x, 0);
  EXPECT_LT(torque.front().x, -6);
  EXPECT_EQ(recording.CurveOf("Alarm").back().y, 1);
  EXPECT_THAT(recording.heading.cause, StartsWith("alarm A.43: Overload"));
  const auto& remarks = recording.heading.remarks;
  EXPECT_THAT(remarks, Contains("Cause: " + std::string(AdviceOn("A.43")->cause)));
  EXPECT_THAT(remarks, Contains("Remedy: " + std::string(AdviceOn("A.43")->remedy)));
  EXPECT_THAT(remarks, Contains(HasSubstr("VKLM Inputs: ")));
  EXPECT_THAT(remarks, Contains(StartsWith("Active step")));
  EXPECT_THAT(remarks, Contains(StartsWith("Log: ")));

  // The window of the alarms leads to it.
  data.forms.OnShow("frmAlarms", [&](headless::HeadlessForm& form) {
    EXPECT_EQ(form.comboBox("cmbRecording").Items(), names);
    form.Press("cmdRecording");
  });
  Main().Choose("mnuToolsAlarms");
  EXPECT_EQ(Cell("vsRecordings", 1, 0), "Hide");
  EXPECT_THAT(Column("vsDetails", 0), Contains("Remedy"));
  Window().Press("cmdExit");

  // And the report prints it.
  rptHX7Main report;
  PrintItems items{};
  items.back() = true;
  report.SetPrintReportItems(items);
  report.SetProject(Project());
  const PrintSection& section = report.Run().sections.front();
  EXPECT_EQ(section.title, "Latest Alarm");
  EXPECT_EQ(section.note, "Recording " + names.front() + ".");
  const std::vector<PrintCell> range{{"Torque (% of rated torque)"},
                                     {"from 30 to 263, at last 263"}};
  EXPECT_THAT(section.rows, Contains(range));

  // A warning is none, and the next alarm makes another recording.
  (void)Amplifier().Execute("ARES", Micros(0));
  Idle(2s);
  Amplifier().RaiseAlarm("A.91");
  Idle(2s);
  EXPECT_EQ(AlarmRecordings(Folder()).size(), 1U);
  Amplifier().RaiseAlarm("A.50");
  Idle(2s);
  EXPECT_EQ(AlarmRecordings(Folder()).size(), 2U);
}

// Each alarm of the catalogue that stops the axis has advice.
TEST_F(Recordings, EveryAlarmHasAdvice) {
  std::ifstream alarms(std::string(VELMOOR_SOURCES) + "/catalogue/data/alarms.txt");
  int count = 0;
  for (std::string text; std::getline(alarms, text);) {
    if (!text.starts_with("alarm A.") || text.starts_with("alarm A.9")) continue;
    const std::string display = text.substr(6, 4);
    EXPECT_NE(AdviceOn(display), nullptr) << display;
    ++count;
  }
  EXPECT_GT(count, 40);
}

TEST_F(Recordings, ClosingTheProjectEndsARecording) {
  Main().Choose("mnuToolsRecordings");
  Window().Press("cmdRecord");
  Idle(3s);
  data.boxes.Expect("All module forms will be unloaded.\rDo you wish to proceed?", BoxAnswer::ok);
  Main().Choose("mnuFileClose");
  EXPECT_FALSE(data.forms.IsOpen("frmRecordings"));
  ASSERT_EQ(Folder().Names().size(), 1U);
  const Recording recording = ReadRecording(Folder().PathOf(Folder().Names().front()));
  EXPECT_THAT(recording.heading.rate, HasSubstr("all items together"));
  EXPECT_GE(recording.CurveOf("Torque").size(), 2U);
}

}  // namespace
}  // namespace velmoor
