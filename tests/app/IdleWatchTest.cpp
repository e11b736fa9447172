// What the main window tells of the line while nobody uses it, and of a search.
#include "AppSession.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

class IdleWatch : public AppSession {
 protected:
  // Time goes by in the main window.
  void Idle(std::chrono::milliseconds time) {
    for (auto passed = 0ms; passed < time; passed += 100ms) {
      port.Advance(100ms);
      data.events.Yield();
    }
  }
  std::string Line() { return Main().Panel(StatusPanel::line); }
  int Looks() { return Amplifier().Asked("ALM"); }
};

TEST_F(IdleWatch, AsksOnceASecondAndShowsAnAlarmAtOnce) {
  StartOnline();
  EXPECT_EQ(Line(), "Online");
  Amplifier().ForgetWhatWasAsked();
  Idle(10s);
  EXPECT_GE(Looks(), 9);
  EXPECT_LE(Looks(), 11);
  EXPECT_EQ(Amplifier().Asked("STS"), Looks());
  EXPECT_EQ(Amplifier().Asked("PRM="), 0) << "it only reads";
  Amplifier().RaiseAlarm("A.40");
  Idle(1100ms);
  EXPECT_EQ(Line(), "In alarm A.40: Overspeed");
  EXPECT_EQ(Main().StatusTone(), Tone::alarm);
  EXPECT_EQ(Status(), "System Status: In alarm A.40: Overspeed");
  EXPECT_EQ(Boxes(), Texts{});
  Main().ChoosePanel(StatusPanel::line);
  EXPECT_TRUE(Form().ToolOpened(ToolWindow::monitoring));
  Amplifier().ForgetWhatWasAsked();
  Idle(3s);
  EXPECT_EQ(Looks(), 0) << "the window reads by itself";
  data.forms.Get("frmMonitoring").Press("cmdExit");
  (void)Amplifier().Execute("ARES", Micros(0));
  Idle(1100ms);
  EXPECT_EQ(Line(), "Online");
  EXPECT_EQ(Main().StatusTone(), Tone::good);
}

TEST_F(IdleWatch, NamesAlarmsInGermanOnceThatIsChosen) {
  StartOnline();
  Amplifier().RaiseAlarm("A.40");
  Idle(1100ms);
  EXPECT_FALSE(Main().command("mnuViewGermanAlarms").Checked());
  Main().command("mnuViewGermanAlarms").SetChecked(true);
  Main().Choose("mnuViewGermanAlarms");
  Idle(1100ms);
  EXPECT_EQ(Line(), "In alarm A.40: Überdrehzahl");
  module.reset();
  ASSERT_TRUE(Start(path));
  EXPECT_TRUE(Main().command("mnuViewGermanAlarms").Checked());
  EXPECT_EQ(gMainForm->Alarm()->GetAlarmName("A.40"), "Überdrehzahl");
  EXPECT_EQ(gMainForm->Alarm()->GetErrorName("E210"), "Befehl, Zeile oder Wert abgelehnt");
}

TEST_F(IdleWatch, ASilentAmplifierIsNoticedWithinThreeSeconds) {
  StartOnline();
  Idle(2s);
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  data.boxes.Expect(
      "The connection to the hardware was lost!\rThe amplifier does not answer.\r"
      "The project is unchanged.\r\rDo you wish to try again?",
      BoxAnswer::no);
  const auto before = data.clock.Monotonic();
  while (Form().IsOnline() && data.clock.Monotonic() - before < 10s) Idle(100ms);
  EXPECT_LT(data.clock.Monotonic() - before, 3s);
  EXPECT_TRUE(Line().starts_with("Lost ")) << Line();
  EXPECT_EQ(Main().StatusTone(), Tone::faint);
  EXPECT_FALSE(port.IsOpen());
  Idle(5s);
  EXPECT_EQ(Boxes().size(), 1U) << "told once";
}

TEST_F(IdleWatch, OneLateAnswerIsNoLoss) {
  StartOnline();
  for (const char* const word : {"ALM", "STS"}) {
    line.faults.Clear();
    line.faults.Add({.kind = FaultKind::lateAnswer, .match = word, .delay = 700ms});
    Idle(5s);
    EXPECT_EQ(Line(), "Online") << word;
  }
  EXPECT_EQ(Boxes(), Texts{});
}

// One that is back within a moment is known by what it has forgotten.
TEST_F(IdleWatch, ALostReferencePositionIsTold) {
  StartOnline();
  line.faults.Add(
      {.kind = FaultKind::wrongAnswer, .match = "STS", .count = 2, .text = "0STS=00000100"});
  Idle(2200ms);
  EXPECT_EQ(Status(), "System Status: Online");
  Idle(1s);
  EXPECT_EQ(Status(),
            "System Status: The reference position is lost: the amplifier was restarted, or seeks "
            "it anew");
  EXPECT_EQ(Line(), "Online");
}

TEST_F(IdleWatch, IsSwitchedOffForGood) {
  StartOnline();
  Amplifier().RaiseAlarm("A.40");
  Idle(1100ms);
  EXPECT_EQ(Line(), "In alarm A.40: Overspeed");
  Main().command("mnuToolsIdleWatch").SetChecked(false);
  Main().Choose("mnuToolsIdleWatch");
  EXPECT_EQ(Line(), "Online") << "an old alarm does not stay";
  Amplifier().ForgetWhatWasAsked();
  Idle(5s);
  EXPECT_EQ(Looks(), 0);
  EXPECT_EQ(data.settings.ReadNumber("IdleWatch", 1), 0);
}

// The transfers are as long with it as without.
TEST_F(IdleWatch, StaysOutOfAnyOtherFlow) {
  StartOnline();
  Idle(2s);
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect("All parameter and table data will be downloaded", BoxAnswer::ok);
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_EQ(LastHead(), "Download All complete!");
  EXPECT_GT(Amplifier().Asked("PRM="), 100);
  EXPECT_EQ(Looks(), 0);
}

// ---- a search

TEST_F(IdleWatch, ASearchTellsWhatItTriesAndCanBeStopped) {
  path = data.MakeProject("line1.spj");
  ASSERT_TRUE(Start(path));
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  Texts seen;
  data.forms.OnShow("frmDialogStop", [&](headless::HeadlessForm& form) {
    seen.push_back(Line());
    form.Press("cmdStop");
  });
  data.boxes.Expect("Error autoconnecting with hardware!", BoxAnswer::no);
  const auto before = data.clock.Monotonic();
  Main().Choose("mnuToolsOnline");
  EXPECT_LT(data.clock.Monotonic() - before, 2500ms) << "a whole search takes three seconds";
  EXPECT_EQ(seen, Texts{"Asking axis 0 at 19200 bit/s"});
  EXPECT_EQ(data.boxes.shown.front().text,
            "Error autoconnecting with hardware!\r"
            "Do you wish to establish communications manually?\r\rThe search was stopped.");
  EXPECT_EQ(Line(), "Offline");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_EQ(Form().Procedure(), nullptr);
}

TEST_F(IdleWatch, WhatEndsOfflineLeavesThePortToOthers) {
  path = data.MakeProject("line1.spj");
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  ASSERT_TRUE(Start(path));
  EXPECT_FALSE(port.IsOpen()) << "behind a start without answer";
  EXPECT_EQ(Line(), "Offline");
  data.boxes.Expect("Error autoconnecting", BoxAnswer::no);
  Main().Choose("mnuToolsOnline");
  EXPECT_FALSE(port.IsOpen());
  Main().Choose("mnuToolsDownloadAll");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_TRUE(Main().command("mnuToolsOnline").Enabled());
  EXPECT_FALSE(Main().command("mnuToolsOffline").Enabled());
}

}  // namespace
}  // namespace velmoor
