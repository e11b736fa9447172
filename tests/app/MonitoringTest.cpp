// The monitoring window on a simulated axis.

#include <algorithm>

#include "AppSession.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

class Monitoring : public AppSession {
 protected:
  void SetUp() override {
    StartOnline();
    Main().Choose("mnuToolsMonitoring");
  }
  headless::HeadlessForm& Window() { return data.forms.Get("frmMonitoring"); }
  void Tick(const std::string& name) { Window().Check(name, true); }
  // Presses the start button; `passes` yields later the stop button.
  void Monitor(int passes) {
    data.events.AtYield(passes, [this] { Window().Press("cmdMonitoring"); });
    Amplifier().ForgetWhatWasAsked();
    Window().Press("cmdMonitoring");
  }
  std::string Shown(const std::string& label) { return Window().label(label).Text(); }
  // Also when it is not live any more.
  bool IsLit(const std::string& lamp) { return Window().lamp(lamp).LampTone() != Tone::normal; }
  SimulatedAxis& Axis() { return Amplifier().State().axis; }
};

TEST_F(Monitoring, ReadsTheTickedItemsInOrderAndNothingElse) {
  Tick("chkOption_7");
  Tick("chkOption_0");
  Tick("chkInput_1");
  Monitor(7);
  std::vector<std::string> asked;
  for (const JournalEntry& entry : Amplifier().Journal()) asked.push_back(entry.line);
  ASSERT_GE(asked.size(), 6U);
  const Texts pass{"0PUN", "0NFB", "0IN2"};
  for (std::size_t i = 0; i < asked.size(); ++i) EXPECT_EQ(asked[i], pass[i % 3]) << i;
  EXPECT_EQ(Window().button("cmdMonitoring").Caption(), "Begin &Monitor");
  EXPECT_EQ(Status(), "System Status: Monitoring Stand By");
  EXPECT_FALSE(Project().Monitoring().GetMonitoringNotDoneStatus());
}

TEST_F(Monitoring, ShowsValuesInBothUnits) {
  Amplifier().SetValue("PUN", -12345);
  Amplifier().SetValue("NFB", 120);
  Amplifier().SetValue("TREF", 80);
  for (const char* const tick : {"chkOption_0", "chkOption_7", "chkOption_9"}) Tick(tick);
  Monitor(5);
  EXPECT_EQ(Shown("lblValue_0") + Shown("lblUnit_0"), "-12345reference units");
  EXPECT_EQ(Shown("lblValue_7") + Shown("lblUnit_7"), "120rpm");
  EXPECT_EQ(Shown("lblValue_9") + Shown("lblUnit_9"), "80% of rated torque");
  Window().Choose("optUnits", 1);
  // The template's machine: 5 mm a turn, 1000 counts a mm.
  EXPECT_EQ(Shown("lblValue_0") + Shown("lblUnit_0"), "-12.345mm");
  EXPECT_EQ(Shown("lblValue_7") + Shown("lblUnit_7"), "10.000mm/seconds");
  EXPECT_EQ(Shown("lblValue_9"), "80");
}

TEST_F(Monitoring, LightsTheLampsOfTheSetBits) {
  Amplifier().SetBit("IN2", 3, true);
  Amplifier().SetValue("STS", 0b1000010);
  Tick("chkOption_10");
  Tick("chkInput_1");
  EXPECT_TRUE(Window().lamp("lmpStatus_1").Enabled());
  EXPECT_FALSE(Window().lamp("lmpVKLMInput_2").Enabled());
  Monitor(4);
  EXPECT_FALSE(IsLit("lmpStatus_0"));
  EXPECT_TRUE(IsLit("lmpStatus_1"));
  EXPECT_TRUE(IsLit("lmpStatus_6"));
  EXPECT_TRUE(IsLit("lmpRX900Input_3"));
  EXPECT_FALSE(IsLit("lmpVKLMInput_2"));
  EXPECT_EQ(Shown("lblRX900Input_3"), "/SEL0;/JOGN, Pin 9");
  EXPECT_EQ(Shown("lblVKLMInput_1"), "/SEL5, Pin 41");
}

// Nobody may take a value of yesterday for that of now.
TEST_F(Monitoring, WhatIsNotLiveIsGreyAndTellsItsTime) {
  Amplifier().SetValue("PUN", 40);
  Amplifier().SetBit("IN2", 3, true);
  Tick("chkOption_0");
  Tick("chkOption_7");
  Tick("chkInput_1");
  EXPECT_EQ(Shown("lblAge"), "");
  std::vector<Tone> live;
  data.events.AtYield(4, [&] {
    live = {Window().label("lblValue_0").TextTone(), Window().lamp("lmpRX900Input_3").LampTone()};
    EXPECT_EQ(Shown("lblAge"), "Live");
    line.faults.Add({.kind = FaultKind::deviceError, .match = "NFB", .count = 0});
  });
  Monitor(9);
  EXPECT_EQ(live, (std::vector{Tone::normal, Tone::good}));
  EXPECT_EQ(Shown("lblValue_0"), "40");
  EXPECT_EQ(Window().label("lblValue_0").TextTone(), Tone::faint);
  EXPECT_TRUE(Window().label("lblValue_0").ToolTip().starts_with("As of "));
  EXPECT_EQ(Window().label("lblValue_7").TextTone(), Tone::faint) << "refused while others live";
  EXPECT_EQ(Window().lamp("lmpRX900Input_3").LampTone(), Tone::faint);
  EXPECT_EQ(Window().lamp("lmpRX900Input_2").LampTone(), Tone::normal);
  EXPECT_TRUE(Shown("lblAge").starts_with("As of ")) << Shown("lblAge");
}

TEST_F(Monitoring, WhatWasWatchedIsTickedTheNextTime) {
  for (const char* const tick : {"chkOption_7", "chkOutput_1", "chkAlarm"}) Tick(tick);
  Window().Press("cmdExit");
  Main().Choose("mnuToolsMonitoring");
  for (const char* const tick : {"chkOption_7", "chkOutput_1", "chkAlarm"}) {
    EXPECT_TRUE(Window().checkBox(tick).Value()) << tick;
  }
  EXPECT_FALSE(Window().checkBox("chkOption_0").Value());
  Amplifier().ForgetWhatWasAsked();
  Monitor(4);
  EXPECT_GE(Amplifier().Asked("NFB"), 1);
  EXPECT_GE(Amplifier().Asked("OUT2"), 1);
  EXPECT_EQ(Amplifier().Asked("PUN"), 0);
}

TEST_F(Monitoring, OldFirmwareHasTwoLinesLess) {
  Project().Monitoring().Unload_Monitoring();
  Amplifier().State().settings.firmware = 2;
  Main().Choose("mnuToolsMonitoring");
  EXPECT_EQ(Shown("lblVKLMInput_1"), "Unavailable, Pin 41");
  EXPECT_EQ(Shown("lblVKLMInput_5"), "Unavailable, Pin 45");
}

TEST_F(Monitoring, ShowsAlarmsAndReadsTheirHistoryAtEachPassOfAnAlarm) {
  Amplifier().RaiseAlarm("A.40");
  Amplifier().RaiseAlarm("A.9F");
  Amplifier().SetError("E210");
  Tick("chkAlarm");
  Monitor(3);
  EXPECT_EQ(Shown("lblAlarm") + " " + Shown("lblStatus"), "A.9F E19F");
  EXPECT_EQ(Shown("lblComment"), "Warning: indexer card");
  EXPECT_EQ(Shown("lblError"), "E210");
  EXPECT_EQ(Window().label("lblError").TextTone(), Tone::alarm);
  EXPECT_EQ(Shown("lblErrorComment"), "Command, row or value refused");
  // Ten at the start and ten more at each pass.
  const int passes = Amplifier().Asked("ERR");
  ASSERT_GE(passes, 2);
  EXPECT_EQ(Amplifier().Asked("ALM"), 10 + 11 * passes);
  headless::HeadlessGrid& history = Window().grid("vsHistory");
  ASSERT_EQ(history.Source()->Rows(), 3);
  EXPECT_EQ(history.Source()->Text(1, 2), "A.9F");
  EXPECT_EQ(history.Source()->Text(2, 0), "Overspeed");
  EXPECT_EQ(history.Source()->Text(2, 1), "A.40");
}

TEST_F(Monitoring, ItsButtonsResetTheSystemTheAlarmAndTheHistory) {
  Amplifier().RaiseAlarm("A.40");
  Window().Press("cmdAlarm_1");
  EXPECT_EQ(Amplifier().State().alarm.current, "");
  Window().Press("cmdAlarm_2");
  EXPECT_TRUE(Amplifier().State().alarm.history.empty());
  EXPECT_EQ(Shown("lblHistoryComment"), "No alarms.");
  Amplifier().ForgetWhatWasAsked();
  Window().Press("cmdAlarm_0");
  EXPECT_EQ(Amplifier().Asked("RES"), 1);
  port.Advance(1s);
  EXPECT_EQ(Boxes(), Texts{});
  struct Case {
    const char* button;
    const char* command;
    const char* words;
    const char* asked;
  };
  const Case cases[] = {
      {"cmdAlarm_0", "RES", "Error resetting system!", "Restarting the amplifier (0RES)"},
      {"cmdAlarm_1", "ARES", "Error resetting current alarm!", "Resetting the alarm (0ARES)"},
      {"cmdAlarm_2", "ALMTRCCLR", "Error resetting alarm history!",
       "Clearing the alarm history (0ALMTRCCLR)"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.button);
    line.faults.Add({.kind = FaultKind::deviceError, .match = row.command, .text = "E5A1"});
    Window().Press(row.button);
    EXPECT_EQ(Boxes(), Texts{std::string(row.words) + "\rDevice is busy\r\r" + row.asked +
                             ": refused with E5A1 \"Device is busy\"."});
    port.Advance(1s);
  }
}

TEST_F(Monitoring, AFailedReadShowsTheErrorAndGoesOn) {
  line.faults.Add({.kind = FaultKind::notGood, .match = "PUN", .count = 0});
  Tick("chkOption_0");
  Tick("chkOption_7");
  Monitor(6);
  EXPECT_GE(Amplifier().Asked("NFB"), 2);
  EXPECT_EQ(Amplifier().Asked("ERR"), Amplifier().Asked("PUN"));
  EXPECT_EQ(Boxes(), Texts{});
}

// With an alarm the history is read in every pass.
TEST_F(Monitoring, AnUnreadableHistoryIsToldOnce) {
  Amplifier().RaiseAlarm("A.40");
  line.faults.Add({.kind = FaultKind::noDelimiter, .match = "ALM3", .count = 0});
  Tick("chkAlarm");
  Monitor(8);
  EXPECT_GE(Amplifier().Asked("ALM"), 8);
  const std::string cause = "Reading the alarm (0ALM3): no usable value in the answer \"0ALM3\".";
  EXPECT_EQ(Boxes(),
            Texts{"Error getting alarm history!\rRead value not found error.\r\r" + cause});
  EXPECT_EQ(Shown("lblHistoryComment"), cause);
  line.faults.Clear();
  Monitor(4);
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(Monitoring, OfflineItSaysSoAndDoesNotStart) {
  Main().Choose("mnuToolsOffline");
  Window().Press("cmdMonitoring");
  EXPECT_EQ(Boxes(), Texts{"System is offline."});
  EXPECT_EQ(Window().button("cmdMonitoring").Caption(), "Begin &Monitor");
  EXPECT_EQ(Status(), "System Status: Offline");
}

// A silent line or a pulled plug: one box, offline, and the window stays.
TEST_F(Monitoring, ALostLineEndsItWithOneBox) {
  for (const bool silent : {true, false}) {
    if (!Form().IsOnline()) Main().Choose("mnuToolsOnline");
    Tick("chkOption_0");
    Tick("chkAlarm");
    data.events.AtYield(5, [this, silent] {
      if (silent) {
        line.faults.Add({.kind = FaultKind::silence, .match = "", .count = 0});
      } else {
        port.Unplug();
      }
    });
    data.boxes.Expect("The connection to the hardware was lost!", BoxAnswer::no);
    Window().Press("cmdMonitoring");
    EXPECT_FALSE(Form().IsOnline());
    EXPECT_EQ(Boxes(), Texts{"The connection to the hardware was lost!\r"
                             "The amplifier does not answer.\rThe project is unchanged.\r\r"
                             "Do you wish to try again?"});
    EXPECT_EQ(Status(), "System Status: Offline");
    EXPECT_EQ(Window().button("cmdMonitoring").Caption(), "Begin &Monitor");
    line.faults.Clear();
    port.Plug();
  }
}

TEST_F(Monitoring, WithNothingTickedItWaitsWithoutAnExchange) {
  const auto before = data.clock.Monotonic();
  Monitor(20);
  EXPECT_EQ(Amplifier().Journal().size(), 0U);
  EXPECT_GE(data.clock.Monotonic() - before, 150ms);
}

// Whatever an event between two items does, the loop ends and nothing of it is touched again.
TEST_F(Monitoring, ClosingOpeningAnotherProjectOrGoingOfflineEndsTheLoop) {
  Tick("chkOption_0");
  data.events.AtYield(4, [this] { Window().Press("cmdExit"); });
  Window().Press("cmdMonitoring");
  EXPECT_FALSE(data.forms.IsOpen("frmMonitoring"));
  EXPECT_EQ(Status(), "System Status: Monitoring Exited");
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::monitoring));

  Main().Choose("mnuToolsMonitoring");
  Tick("chkOption_0");
  data.events.AtYield(4, [this] { Main().Choose("mnuToolsOffline"); });
  Window().Press("cmdMonitoring");
  EXPECT_EQ(Window().button("cmdMonitoring").Caption(), "Begin &Monitor");

  Main().Choose("mnuToolsOnline");
  const std::string other = data.MakeProject("line2.spj");
  data.boxes.Expect("All module forms will be unloaded.", BoxAnswer::ok);
  data.events.AtYield(4, [this, &other] { Form().ParseCommand(other); });
  Window().Press("cmdMonitoring");
  EXPECT_EQ(Main().Caption(), "Velmoor - line2");
}

TEST_F(Monitoring, ATransferInItsMidstRunsWholeAndMonitoringGoesOn) {
  Tick("chkOption_0");
  // The amplifier was never given a machine.
  data.boxes.Expect("All existing table data and parameter data", BoxAnswer::yes);
  data.boxes.Expect("Could not upload Mechanical System Parameters", BoxAnswer::yes);
  data.forms.OnShow("frmCompare", [](headless::HeadlessForm& form) { form.Unload(); });
  data.boxes.Expect("All tables and parameters successfully uploaded", BoxAnswer::no);
  data.events.AtYield(4, [this] { Main().Choose("mnuToolsUploadAll"); });
  bool stopped = false;
  data.events.AtYield(20000, [this, &stopped] {
    stopped = true;
    Window().Press("cmdMonitoring");
  });
  Window().Press("cmdMonitoring");
  EXPECT_TRUE(stopped);
  EXPECT_TRUE(Boxes().back().ends_with("Commit uploaded data to project?"));
  EXPECT_TRUE(Form().IsOnline());
}

TEST_F(Monitoring, ItsRecordingIsBoundedAndKeepsThePeaks) {
  ItemSamples recording;
  const int samples = static_cast<int>(ItemSamples::kMostSamples) + 1000;
  for (int i = 0; i < samples; ++i) recording.Add(i * 0.01, i == samples - 777 ? 5000 : i % 7);
  EXPECT_EQ(recording.Samples().size(), ItemSamples::kMostSamples);
  EXPECT_DOUBLE_EQ(recording.Samples().front().time, 10);
  const auto shown = recording.Between(0, 1000, 500);
  EXPECT_LE(shown.size(), 502U);
  EXPECT_EQ(std::ranges::max(shown, {}, &ItemSamples::Sample::raw).raw, 5000);
  EXPECT_TRUE(std::ranges::is_sorted(shown, {}, &ItemSamples::Sample::time));
  EXPECT_EQ(recording.Between(20, 20.05, 500).size(), 7U);
}

TEST_F(Monitoring, TheChartFollowsPausesZoomsAndIsSaved) {
  Tick("chkOption_0");
  port.SetPaced(true);
  ASSERT_TRUE(Axis().SwitchServo(true));
  Axis().Jog(1, 1000);
  Monitor(300);
  headless::HeadlessTimeChart& chart = Window().timeChart("chtValues");
  ASSERT_EQ(chart.shown.lanes.size(), 1U);
  const auto& points = chart.shown.lanes[0].points;
  EXPECT_EQ(chart.shown.lanes[0].name, "Current Position");
  EXPECT_GT(points.size(), 100U);
  // 1000000 counts a minute.
  const double seconds = points.back().x - points[points.size() / 2].x;
  EXPECT_NEAR(points.back().y - points[points.size() / 2].y, seconds * 1e6 / 60, 500);
  chart.Zoom.Raise(chart.shown.to, 0.1);
  EXPECT_NEAR(chart.shown.to - chart.shown.from, 1, 1e-6);
  const double end = chart.shown.to;
  chart.Pan.Raise(-1.5);
  EXPECT_TRUE(Window().checkBox("chkPauseChart").Value());
  EXPECT_NEAR(chart.shown.to, end - 1.5, 1e-6);
  // What lies under the pointer stays there.
  chart.Zoom.Raise(end - 2, 0.5);
  EXPECT_NEAR(chart.shown.from, end - 2.25, 1e-6);
  EXPECT_NEAR(chart.shown.to, end - 1.75, 1e-6);
  data.dialogs.answers.push_back(data.folder.At("values.csv"));
  Window().Press("cmdSaveChart");
  const std::string csv = data.files.ReadAll(data.folder.At("values.csv"));
  EXPECT_TRUE(csv.starts_with("time,item,raw,value,unit\n"));
  EXPECT_NE(csv.find(",PUN,"), std::string::npos);
  Window().Press("cmdClearChart");
  EXPECT_TRUE(chart.shown.lanes.empty());
}

}  // namespace
}  // namespace velmoor
