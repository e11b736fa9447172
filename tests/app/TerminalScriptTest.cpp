// The terminal's scripts, its log, and how it looks.
#include "TerminalFixture.h"

namespace velmoor {
namespace {

constexpr const char* kLeaving = "Do you wish to save session log before exiting?";

// ---- scripts

TEST_F(Terminal, ScriptLinesAreStoredUntestedAndGoOutAtRun) {
  Open();
  Line("SCRIPTON");
  EXPECT_FALSE(Window().command("mnuScriptOn").Enabled());
  Line("0PRM800");
  Line("SCRIPTON");
  Line("1PRM800");
  Line("SCRIPTLIST");
  EXPECT_EQ(Sent(), Texts{});
  EXPECT_EQ(Rows(), (Texts{"SCRIPTON", "> SCRIPTING ON", "0PRM800", "SCRIPTON", "1PRM800",
                           "SCRIPTLIST", "> CURRENT SCRIPT MEMORY:", "> 0PRM800", "> 1PRM800"}));
  Window().ChooseCommand("mnuEditClear");
  Line("RUN");
  // The second line fails, as no axis 1 answers; the script goes through.
  EXPECT_EQ(Sent(), Texts{"0PRM800"});
  EXPECT_EQ(Rows(), (Texts{"RUN", "0PRM800", "> 0PN800=00000001", "1PRM800",
                           "> *** ERROR SENDING SERIAL RESPONSE! ***"}));
  Window().ChooseCommand("mnuEditClear");
  Line("SCRIPTOFF");
  Line("SCRIPTCLEAR");
  Line("SCRIPTLIST");
  EXPECT_EQ(Rows(),
            (Texts{"SCRIPTOFF", "> SCRIPTING OFF", "SCRIPTCLEAR", "> SCRIPTING MEMORY CLEARED",
                   "SCRIPTLIST", "> NO CONTENTS IN SCRIPT MEMORY!"}));
}

TEST_F(Terminal, MenuActionsReadAsIfTyped) {
  Open();
  for (const char* const command :
       {"mnuScriptOn", "mnuScriptClearMemory", "mnuScriptListMemory", "mnuScriptOff"}) {
    Window().ChooseCommand(command);
  }
  EXPECT_EQ(Rows(), (Texts{"SCRIPTON", "> SCRIPTING ON", "SCRIPTCLEAR",
                           "> SCRIPTING MEMORY CLEARED", "SCRIPTLIST",
                           "> NO CONTENTS IN SCRIPT MEMORY!", "SCRIPTOFF", "> SCRIPTING OFF"}));
}

TEST_F(Terminal, AnEmptyMemoryHasNothingToRun) {
  Open();
  Window().ChooseCommand("mnuScriptOn");
  Line("RUN");
  EXPECT_EQ(Rows().back(), "> NO COMMANDS IN SCRIPT MEMORY TO EXECUTE!");
  EXPECT_EQ(Sent(), Texts{});
}

class RunningTerminal : public Terminal {
 protected:
  void SetUp() override {
    Terminal::SetUp();
    Open();
    Window().ChooseCommand("mnuScriptOn");
    for (int i = 0; i < 3; ++i) Line("0PRM800");
  }
  static constexpr std::size_t kLines = 3;
};

TEST_F(RunningTerminal, ScriptEndsAtEscapeOrStopBehindTheLineUnderWay) {
  const std::function<void()> ways[] = {[this] { Press(Plain(keys::kEscape, '\x1b')); },
                                        [this] { Window().ChooseCommand("mnuScriptStop"); }};
  for (const auto& stop : ways) {
    Amplifier().ForgetWhatWasAsked();
    data.events.AtYield(0, stop);
    Line("RUN");
    EXPECT_EQ(Sent().size(), 1U);
    EXPECT_EQ(Rows().back(), "> *** SCRIPT STOPPED! ***");
    EXPECT_FALSE(Window().command("mnuScriptStop").Enabled());
    ExpectHeartbeat();
  }
}

TEST_F(RunningTerminal, KeysBesideEscapeAreDroppedSoThatNoSecondRunBegins) {
  data.events.AtYield(1, [this] {
    EXPECT_FALSE(Window().command("mnuFileOpenScript").Enabled());
    Line("RUN");
  });
  Line("RUN");
  EXPECT_EQ(Sent().size(), kLines);
  EXPECT_EQ(Tool().SaveScriptToFile(data.folder.At("a.tsc")), true);
  EXPECT_EQ(Saved("a.tsc"), "0PRM800\n0PRM800\n0PRM800\n");
}

TEST_F(RunningTerminal, ClosingOrLosingTheProjectEndsTheScript) {
  data.events.AtYield(1, [this] { Window().Unload(); });
  Line("RUN");
  EXPECT_EQ(Sent().size(), 2U);
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::terminal));
  Open();
  Window().ChooseCommand("mnuScriptOn");
  Line("0PRM800");
  Line("RUN");
  EXPECT_EQ(Rows().back(), "> 0PN800=00000001");
}

// ---- heartbeat

TEST_F(Terminal, ALostLineIsToldOnceBesideWhatIsBeingTyped) {
  Open();
  Heartbeat();
  EXPECT_EQ(Rows(), Texts{});
  Type("0P");
  port.Unplug();
  data.boxes.Expect("The connection to the hardware was lost!\rCOM1 is gone.", BoxAnswer::no);
  Heartbeat();
  Heartbeat();
  EXPECT_EQ(
      Rows(),
      (Texts{"0P", "> *** COMMUNICATIONS ERROR!  CANNOT COMMUNICATE WITH HARDWARE! ***", "0P"}));
  EXPECT_EQ(Status(), "System Status: Offline");
}

// ---- files and leaving

TEST_F(Terminal, AScriptIsSavedLoadedTrimmedAndListedInAnyMode) {
  Open();
  Window().ChooseCommand("mnuScriptOn");
  Line("0PRM800");
  Window().ChooseCommand("mnuScriptOff");
  data.dialogs.answers = {data.folder.At("a.tsc")};
  Window().ChooseCommand("mnuFileSaveScript");
  EXPECT_EQ(data.dialogs.shown.back().request.title, "Save Script As");
  EXPECT_EQ(data.dialogs.shown.back().request.filter, "Terminal Script File (*.tsc)|*.tsc");
  EXPECT_EQ(Saved("a.tsc"), "0PRM800\n");
  data.files.WriteDurably(data.folder.At("b.tsc"), "  0PRM801 \r\n\r\n0TYPE");
  data.boxes.Expect(
      "Script file will be loaded to replace existing script memory!\rDo you wish to continue?",
      BoxAnswer::ok);
  data.dialogs.answers = {data.folder.At("b.tsc")};
  Window().ChooseCommand("mnuFileOpenScript");
  EXPECT_EQ(data.dialogs.shown.back().request.title, "Open Script");
  EXPECT_TRUE(Window().command("mnuScriptOn").Enabled());
  Window().ChooseCommand("mnuEditClear");
  Line("SCRIPTLIST");
  EXPECT_EQ(Rows(), (Texts{"SCRIPTLIST", "> CURRENT SCRIPT MEMORY:", "> 0PRM801", "> 0TYPE"}));
}

TEST_F(Terminal, EndInSmallLettersSavesTheLogAndLeaves) {
  Open();
  Line("0prm800");
  data.boxes.Expect(kLeaving, BoxAnswer::yes);
  data.dialogs.answers = {data.folder.At("a.log")};
  Line("end");
  EXPECT_EQ(data.dialogs.shown.back().request.title, "Save Log As");
  EXPECT_EQ(Saved("a.log"), "0PRM800\n> 0PN800=00000001\nEND\n");
  EXPECT_FALSE(data.forms.IsOpen("frmTerminal"));
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::terminal));
}

TEST_F(Terminal, ALogThatCannotBeWrittenKeepsTheWindow) {
  Open();
  data.boxes.Expect(kLeaving, BoxAnswer::yes);
  data.dialogs.answers = {data.folder.At("none/a.log")};
  Line("QUIT");
  EXPECT_TRUE(data.forms.IsOpen("frmTerminal"));
  data.boxes.Expect(kLeaving, BoxAnswer::no);
  Window().ChooseCommand("mnuFileExit");
  EXPECT_FALSE(data.forms.IsOpen("frmTerminal"));
}

TEST_F(Terminal, ALogIsShownByTheDesktop) {
  Open();
  data.dialogs.answers = {"/logs/a.log"};
  Window().ChooseCommand("mnuFileOpenLog");
  EXPECT_EQ(data.dialogs.shown.back().request.title, "Open Log");
  EXPECT_EQ(data.textViewer.opened, Texts{"/logs/a.log"});
  data.textViewer.starts = false;
  data.dialogs.answers = {"/logs/a.log"};
  Window().ChooseCommand("mnuFileOpenLog");
  data.textViewer.available = false;
  Window().ChooseCommand("mnuFileOpenLog");
  EXPECT_EQ(Boxes(), (Texts{"Log file could not be launched!",
                            "Registry cannot determine location of default text file editor!\r"
                            "Text file editor is required to view log file."}));
}

// ---- appearance

TEST_F(Terminal, TheAppearanceIsChosenShownAndKept) {
  Open();
  data.appearance.fonts = {{"Mono", 14}};
  data.appearance.colors = {0x010203, 0x0a0b0c, 0xf0f1f2};
  const auto choose = [](headless::HeadlessForm& form) {
    for (const char* const button : {"cmdFont", "cmdForeColor", "cmdBoldColor", "cmdBackColor"}) {
      form.Press(button);
    }
  };
  data.forms.OnShow("frmTerminalOptions", [&](headless::HeadlessForm& form) {
    choose(form);
    form.Press("cmdOK");
  });
  Window().ChooseCommand("mnuViewOptions");
  EXPECT_EQ(Screen().fontName, "Mono");
  EXPECT_EQ(Screen().fontPoints, 14);
  EXPECT_EQ(Screen().textColor, 0x010203U);
  EXPECT_EQ(Screen().boldColor, 0x0a0b0cU);
  EXPECT_EQ(Screen().backgroundColor, 0xf0f1f2U);
  EXPECT_EQ(Screen().fits, 1);

  data.appearance.fonts = {{"Other", 20}};
  data.appearance.colors = {1, 2, 3};
  data.forms.OnShow("frmTerminalOptions", [&](headless::HeadlessForm& form) {
    choose(form);
    form.Press("cmdCancel");
  });
  Window().ChooseCommand("mnuViewOptions");
  EXPECT_EQ(Screen().fontName, "Mono");
  Window().Unload();
  const auto& kept = data.settings.values;
  EXPECT_EQ(kept.at("TerminalFontName"), "Mono");
  EXPECT_EQ(kept.at("TerminalFontSize"), "14");
  EXPECT_EQ(kept.at("TerminalFontColor"), "#010203");
  EXPECT_EQ(kept.at("TerminalBoldColor"), "#0A0B0C");
  EXPECT_EQ(kept.at("TerminalBGColor"), "#F0F1F2");
}

TEST_F(Terminal, BadSettingsGiveTheDefaults) {
  data.settings.values = {{"TerminalFontSize", "9999"}, {"TerminalFontColor", "red"}};
  Open();
  EXPECT_EQ(Screen().fontName, "fixedsys");
  EXPECT_EQ(Screen().fontPoints, 10);
  EXPECT_EQ(Screen().textColor, 0xe4e7eaU);
}

TEST_F(Terminal, TheStatusLineCanBeHidden) {
  Open();
  EXPECT_TRUE(Window().command("mnuViewStatusLine").Checked());
  Window().ChooseCommand("mnuViewStatusLine");
  EXPECT_FALSE(Window().label("lblStatusLine").Visible());
  Window().ChooseCommand("mnuViewAutoResize");
  EXPECT_FALSE(Window().command("mnuViewAutoResize").Checked());
}

}  // namespace
}  // namespace velmoor
