// Factory defaults: cautions, order, stop, and what is told of a failure.

#include "AppSession.h"

namespace velmoor {
namespace {

constexpr const char* kServoOff =
    " require servo to be in off state!\rIf servo is on, servo will be turned off.\r"
    "Do you wish to proceed?";
constexpr const char* kServoOn = "Do you wish to turn servo back on?";

std::string Caution(const std::string& what, const std::string& entries) {
  return "Caution!  " + what + " will be reset to factory defaults.\r" + entries +
         " in the device should be uploaded and saved to a file first.\r"
         "Do you want to revert to factory default now?";
}

class Resets : public AppSession {
 protected:
  void SetUp() override {
    StartOnline();
    Amplifier().ForgetWhatWasAsked();
  }
  // The reset words in the order in which they went out.
  Texts Sent() {
    Texts words;
    for (const JournalEntry& entry : Amplifier().Journal()) {
      const std::string word = entry.line.substr(1);
      for (const char* known : {"PGMINIT", "JSPDINIT", "ZONEINIT", "PRMINIT", "SVOFF", "SVON"}) {
        if (word == known) words.push_back(word);
      }
    }
    return words;
  }
};

TEST_F(Resets, OneTableAsksAndResetsThatOneAlone) {
  struct Case {
    const char* command;
    const char* table;
    const char* word;
    const char* error;
  };
  const Case cases[] = {
      {"mnuToolsResetTableIndex", "Index", "PGMINIT",
       "Error resetting index table to factory default values!"},
      {"mnuToolsResetTableJog", "Jog", "JSPDINIT",
       "Error resetting jog table to factory default values!"},
      {"mnuToolsResetTableZone", "Zone", "ZONEINIT",
       "Error resetting zone table to factory default values!"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.command);
    const std::string table = c.table;
    const std::string caution = Caution(table + " table", table + " table entries");
    data.boxes.Expect(caution, BoxAnswer::no);
    Main().Choose(c.command);
    EXPECT_EQ(Sent(), Texts{});
    data.boxes.Expect(caution, BoxAnswer::yes);
    Main().Choose(c.command);
    EXPECT_EQ(Sent(), Texts{c.word});
    EXPECT_EQ(Status(), "System Status: Reset " + table + " Table Defaults Complete");
    line.faults.Add({.kind = FaultKind::deviceError, .match = c.word, .text = "E5A1"});
    data.boxes.Expect(caution, BoxAnswer::yes);
    Main().Choose(c.command);
    EXPECT_TRUE(data.boxes.shown.back().text.starts_with(c.error));
    EXPECT_EQ(Status(), "System Status: Reset " + table + " Table Defaults Failed");
    EXPECT_TRUE(Form().IsOnline()) << "a refusal is no lost line";
    Amplifier().ForgetWhatWasAsked();
  }
}

TEST_F(Resets, AllTablesGoInOrderBehindADialogWithoutACurrentBar) {
  data.boxes.Expect(Caution("All tables", "Table entries"), BoxAnswer::yes);
  data.forms.OnShow("frmDialogStop", [](headless::HeadlessForm& form) {
    EXPECT_EQ(form.Caption(), "Reset All Tables");
    EXPECT_FALSE(form.progressBar("pgbCurrent").Visible());
  });
  Main().Choose("mnuToolsResetTablesAll");
  EXPECT_EQ(Sent(), (Texts{"PGMINIT", "JSPDINIT", "ZONEINIT"}));
  EXPECT_FALSE(data.forms.IsOpen("frmDialogStop"));
  EXPECT_EQ(data.boxes.shown.size(), 1u);
}

TEST_F(Resets, AStopLeavesTheRestUntouched) {
  data.boxes.Expect(Caution("All tables", "Table entries"), BoxAnswer::yes);
  data.forms.OnShow("frmDialogStop", [](headless::HeadlessForm& form) { form.Press("cmdStop"); });
  Main().Choose("mnuToolsResetTablesAll");
  EXPECT_EQ(Sent(), Texts{"PGMINIT"});
  EXPECT_EQ(Status(), "System Status: Reset Index Table Terminated");
  EXPECT_EQ(data.boxes.shown.back().text, "Reset All Table Defaults terminated!");
  EXPECT_FALSE(Form().StopProcedure());
}

TEST_F(Resets, TheFirstFailureEndsTheSequence) {
  line.faults.Add({.kind = FaultKind::deviceError, .match = "JSPDINIT", .text = "E5A1"});
  data.boxes.Expect(Caution("All tables", "Table entries"), BoxAnswer::yes);
  Main().Choose("mnuToolsResetTablesAll");
  EXPECT_EQ(Sent(), (Texts{"PGMINIT", "JSPDINIT"}));
  EXPECT_TRUE(data.boxes.shown.back().text.starts_with(
      "Error resetting tables to factory default values!\r"));
}

TEST_F(Resets, ParametersNeedTheServoOffAndComeBackAtTheFactorySpeed) {
  const std::string caution = Caution("All parameters", "Parameters");
  const std::string servoOff = std::string("Reset to factory default parameters") + kServoOff;
  data.boxes.Expect(caution, BoxAnswer::yes);
  data.boxes.Expect(servoOff, BoxAnswer::cancel);
  Main().Choose("mnuToolsResetParametersAll");
  EXPECT_EQ(data.boxes.shown.back().text, "Reset to factory defaults aborted!");
  EXPECT_EQ(Sent(), Texts{});
  Amplifier().State().axis.SwitchServo(true);
  ASSERT_TRUE(Amplifier().State().memory.parameters.Write(0x81D, "777"));
  data.boxes.Expect(caution, BoxAnswer::yes);
  data.boxes.Expect(servoOff, BoxAnswer::ok);
  data.boxes.Expect(kServoOn, BoxAnswer::yes);
  Main().Choose("mnuToolsResetParametersAll");
  EXPECT_EQ(Sent(), (Texts{"SVOFF", "PRMINIT", "SVON"}));
  EXPECT_NE(Amplifier().State().memory.parameters.Value(0x81D), 777);
  EXPECT_EQ(Form().BaudRate(), 9600);
  EXPECT_TRUE(Form().IsOnline());
}

TEST_F(Resets, AServoThatStaysOnEndsTheResetBeforeItBegins) {
  line.faults.Add({.kind = FaultKind::deviceError, .match = "SVOFF", .text = "E5A1"});
  data.boxes.Expect(Caution("All tables and parameters", "Table and parameter entries"),
                    BoxAnswer::yes);
  data.boxes.Expect(std::string("Reset to all factory defaults") + kServoOff, BoxAnswer::ok);
  Main().Choose("mnuToolsResetDefaultsAll");
  EXPECT_EQ(Sent(), Texts{"SVOFF"});
  EXPECT_TRUE(data.boxes.shown.back().text.starts_with("Error turning servo off!\r"));
}

TEST_F(Resets, EverythingGoesInOrderAndTheServoIsAskedAboutAfterAStopToo) {
  const std::string caution = Caution("All tables and parameters", "Table and parameter entries");
  const std::string servoOff = std::string("Reset to all factory defaults") + kServoOff;
  data.boxes.Expect(caution, BoxAnswer::yes);
  data.boxes.Expect(servoOff, BoxAnswer::ok);
  data.boxes.Expect(kServoOn, BoxAnswer::no);
  Main().Choose("mnuToolsResetDefaultsAll");
  EXPECT_EQ(Sent(), (Texts{"SVOFF", "PGMINIT", "JSPDINIT", "ZONEINIT", "PRMINIT"}));
  EXPECT_EQ(Project().WhatIsDirty(),
            "Mechanical System, All parameters, Index Position table, Jog table, Zone table");
  Amplifier().ForgetWhatWasAsked();
  data.boxes.Expect(caution, BoxAnswer::yes);
  data.boxes.Expect(servoOff, BoxAnswer::ok);
  data.boxes.Expect(kServoOn, BoxAnswer::no);
  data.forms.OnShow("frmDialogStop", [](headless::HeadlessForm& form) { form.Press("cmdStop"); });
  Main().Choose("mnuToolsResetDefaultsAll");
  EXPECT_EQ(Sent(), (Texts{"SVOFF", "PGMINIT"}));
  EXPECT_EQ(data.boxes.Count("Reset All Defaults terminated!"), 1);
}

TEST_F(Resets, AreOfferedOnlineOnly) {
  EXPECT_TRUE(Main().command("mnuToolsResetDefaultsAll").Enabled());
  Main().Choose("mnuToolsOffline");
  for (const char* const command :
       {"mnuToolsResetDefaultsAll", "mnuToolsResetParametersAll", "mnuToolsResetTablesAll",
        "mnuToolsResetTableIndex", "mnuToolsResetTableJog", "mnuToolsResetTableZone"}) {
    EXPECT_FALSE(Main().command(command).Enabled()) << command;
  }
  EXPECT_TRUE(Main().command("mnuToolsDownloadAll").Enabled()) << "a transfer connects by itself";
}

// ---- the line

TEST_F(Resets, ASilentAmplifierEndsOfflineAfterTheOneMessage) {
  line.faults.Add({.kind = FaultKind::silence, .count = 0});
  data.boxes.Expect(Caution("Jog table", "Jog table entries"), BoxAnswer::yes);
  Main().Choose("mnuToolsResetTableJog");
  EXPECT_EQ(data.boxes.shown.size(), 2u);
  EXPECT_EQ(data.boxes.shown.back().text,
            "Error resetting jog table to factory default values!\rNo response error.\r\r"
            "Resetting the jog table (0JSPDINIT): no answer within 5 s.\r\r"
            "16 items stay on offer (Jog table): Download New completes it.");
  EXPECT_EQ(Status(), "System Status: Offline");
  EXPECT_FALSE(port.IsOpen());
}

TEST_F(Resets, APulledPlugIsNoticedWhileNothingIsAskedAndToldOnce) {
  PauseInSec(1);
  EXPECT_EQ(Boxes(), Texts{});
  port.Unplug();
  data.boxes.Expect("The connection to the hardware was lost!", BoxAnswer::no);
  PauseInSec(3);
  EXPECT_EQ(Boxes(), Texts{"The connection to the hardware was lost!\rCOM1 is gone.\r"
                           "The project is unchanged.\r\rDo you wish to try again?"});
  EXPECT_EQ(Status(), "System Status: Offline");
  EXPECT_EQ(Main().Panel(StatusPanel::model), "");
}

}  // namespace
}  // namespace velmoor
