// The terminal: what a typed key does, what a line does, and that nothing crosses a line under way.

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

using namespace std::chrono_literals;

constexpr const char* kLeaving = "Do you wish to save session log before exiting?";

struct Key {
  KeyEvent event;
  char character;
};
Key Plain(int code, char character) {
  return {{.code = code}, character};
}
Key Shifted(int code, char character) {
  return {{.code = code, .shift = true}, character};
}

class Terminal : public AppSession {
 protected:
  void SetUp() override { StartOnline(); }
  void Open() {
    Main().Choose("mnuToolsTerminal");
    ASSERT_TRUE(data.forms.IsOpen("frmTerminal"));
    data.boxes.shown.clear();
    Amplifier().ForgetWhatWasAsked();
  }
  headless::HeadlessForm& Window() { return data.forms.Get("frmTerminal"); }
  headless::HeadlessTerminalScreen& Screen() { return Window().terminalScreen("Vt1"); }
  clsHX7Terminal& Tool() { return Project().Terminal(); }

  // A key reaches the screen as the adapter passes it on.
  void Press(const Key& key) {
    KeyEvent event = key.event;
    headless::HeadlessTerminalScreen& screen = Screen();
    screen.KeyDown.Raise(event);
    const bool types = !event.handled && key.character != 0 && data.forms.IsOpen("frmTerminal");
    if (types) screen.KeyPress.Raise(key.character);
  }
  void Type(const std::string& text) {
    for (const char c : text) {
      const bool digit = c >= '0' && c <= '9';
      Press(digit ? Plain(c, c) : Plain(UpperCase({&c, 1}).front(), c));
    }
  }
  void Enter() { Press(Plain(keys::kEnter, '\r')); }
  void Line(const std::string& text) {
    Type(text);
    Enter();
  }
  // The rows in use, without the empty ones.
  Texts Rows() {
    Texts rows;
    for (int row = 1; row <= Screen().Rows(); ++row) {
      if (!Screen().RowText(row).empty()) rows.push_back(Screen().RowText(row));
    }
    return rows;
  }
  Texts Sent() {
    Texts sent;
    for (const JournalEntry& entry : Amplifier().Journal()) sent.push_back(entry.line);
    return sent;
  }
  void Heartbeat() { data.events.WaitForEvents(30s); }
  std::string Saved(const std::string& name) { return data.files.ReadAll(data.folder.At(name)); }
};

// ---- opening

TEST_F(Terminal, WarnsAndExcludesMonitoring) {
  Main().Choose("mnuToolsTerminal");
  EXPECT_EQ(Boxes(), (Texts{"Warning!  Careless usage of Terminal Emulator may\r"
                            "result in bodily harm and/or machinery damage!"}));
  Main().Choose("mnuToolsTerminal");
  EXPECT_EQ(Boxes(), Texts{});
  Main().Choose("mnuToolsMonitoring");
  EXPECT_EQ(Boxes(), (Texts{"Monitoring can take place only if Terminal Emulator is closed."}));
  Window().Unload();
  EXPECT_FALSE(Form().ToolOpened(ToolWindow::terminal));
  Main().Choose("mnuToolsMonitoring");
  Main().Choose("mnuToolsTerminal");
  EXPECT_EQ(Boxes(), (Texts{"Terminal Emulator can only be used when Monitoring is closed."}));
  EXPECT_FALSE(data.forms.IsOpen("frmTerminal"));
}

TEST_F(Terminal, OpensThoughTheEchoSettingCannotBeRead) {
  Main().Choose("mnuToolsOffline");
  data.boxes.shown.clear();
  Main().Choose("mnuToolsTerminal");
  EXPECT_EQ(data.boxes.Count(
                "Hardware is not ready, or communication\rprocess settings are not set correctly."),
            1);
  EXPECT_TRUE(data.forms.IsOpen("frmTerminal"));
}

// ---- typing

TEST_F(Terminal, OnlyTheNarrowSetOfKeysEntersALine) {
  struct Case {
    Key key;
    const char* typed;
  };
  const KeyEvent ctrlA{.code = 'A', .ctrl = true};
  const KeyEvent altA{.code = 'A', .alt = true};
  const KeyEvent ctrlEquals{.code = keys::kEquals, .ctrl = true};
  const KeyEvent altEquals{.code = keys::kEquals, .alt = true};
  const KeyEvent ctrlShiftEquals{.code = keys::kEquals, .shift = true, .ctrl = true};
  const KeyEvent ctrlShiftColon{.code = keys::kColon, .shift = true, .ctrl = true};
  const Case cases[] = {
      {Plain('A', 'a'), "A"},
      {Shifted('Z', 'Z'), "Z"},
      {{ctrlA, 'a'}, ""},
      {{altA, 'a'}, ""},
      {Plain('7', '7'), "7"},
      {Shifted('7', '7'), ""},
      {Plain(keys::kPad0 + 9, '9'), "9"},
      {Shifted(keys::kPad0 + 9, '9'), ""},
      {Shifted(keys::kColon, ':'), ":"},
      {Plain(keys::kColon, ':'), ""},
      {{ctrlShiftColon, ':'}, ""},
      {Plain(keys::kEquals, '='), "="},
      {Shifted(keys::kEquals, '+'), "+"},
      {{ctrlShiftEquals, '+'}, "+"},
      {{ctrlEquals, '='}, ""},
      {{altEquals, '='}, ""},
      {Plain(keys::kPadPlus, '?'), "+"},
      {Shifted(keys::kPadPlus, '+'), ""},
      {Plain(keys::kMinus, '-'), "-"},
      {Shifted(keys::kMinus, '-'), ""},
      {Plain(keys::kPadMinus, '?'), "-"},
      {Shifted(keys::kPadMinus, '-'), ""},
      {Plain(keys::kSpace, ' '), ""},
      {Plain(0, '*'), ""},
  };
  Open();
  for (const Case& row : cases) {
    Press(row.key);
    EXPECT_EQ(Screen().RowText(1), row.typed) << "key " << row.key.event.code;
    Press(Plain(keys::kBackspace, '\b'));
    EXPECT_EQ(Screen().RowText(1), "");
    EXPECT_EQ(Screen().CursorColumn(), 1);
  }
}

TEST_F(Terminal, AKeyWithoutACharacterDoesNotSwallowTheNextOne) {
  Open();
  Press({{.code = 0, .shift = true}, 0});
  Press(Shifted('A', 'A'));
  EXPECT_EQ(Screen().RowText(1), "A");
}

TEST_F(Terminal, BackspaceTakesTheLastCharacterAlsoBeyondARow) {
  Open();
  Type(std::string(80, '1') + "ab");
  EXPECT_EQ(Screen().RowText(2), "AB");
  for (int i = 0; i < 3; ++i) Press(Plain(keys::kBackspace, '\b'));
  EXPECT_EQ(Screen().RowText(1), std::string(79, '1'));
  EXPECT_EQ(Screen().RowText(2), "");
  EXPECT_EQ(Screen().CursorRow(), 1);
  EXPECT_EQ(Screen().CursorColumn(), 80);
  Type("c");
  EXPECT_EQ(Screen().RowText(1), std::string(79, '1') + "C");
  EXPECT_EQ(Screen().RowText(2), "");
}

TEST_F(Terminal, APasteTypesTheFirstLineThroughTheSameFilterAndSendsNothing) {
  Open();
  data.clipboard.text = "0 prm*800\n0RES\n";
  Press({{.code = 'V', .ctrl = true}, '\x16'});
  EXPECT_EQ(Screen().RowText(1), "0PRM800");
  Press({{.code = 0, .shift = true}, 0});
  Window().ChooseCommand("mnuEditPaste");
  EXPECT_EQ(Screen().RowText(1), "0PRM8000PRM800");
  EXPECT_EQ(Sent(), Texts{});
}

TEST_F(Terminal, CopyTakesTheSelectedText) {
  Open();
  data.clipboard.text = "kept";
  Window().ChooseCommand("mnuEditCopy");
  EXPECT_EQ(data.clipboard.text, "kept");
  Screen().selected = "> 0PRM8001";
  Press({{.code = 'C', .ctrl = true}, '\x03'});
  EXPECT_EQ(data.clipboard.text, "> 0PRM8001");
}

// ---- direct lines

TEST_F(Terminal, ALineGoesOutInCapitalsAndItsAnswerComesBack) {
  Open();
  Line("0prm800");
  EXPECT_EQ(Sent(), Texts{"0PRM800"});
  EXPECT_EQ(Rows(), (Texts{"0PRM800", "> 0PN800=00000001"}));
}

TEST_F(Terminal, ALineForAnotherAxisOrWithoutContentStaysHere) {
  Open();
  Line("1PRM800");
  Line("RUN");
  Line("");
  Line("PRM800");
  EXPECT_EQ(Sent(), Texts{});
  const char* const refusal = "> *** ERROR WITH AXIS ADDRESS! ***";
  EXPECT_EQ(Rows(), (Texts{"1PRM800", refusal, "RUN", refusal, "PRM800", refusal}));
  EXPECT_EQ(Screen().boldText.substr(0, 34), refusal);
  // The empty line takes two rows.
  EXPECT_EQ(Screen().CursorRow(), 9);
}

TEST_F(Terminal, WithoutEchoOrAnswerTheErrorLineIsShown) {
  Open();
  port.Unplug();
  Line("0PRM800");
  EXPECT_EQ(Rows(), (Texts{"0PRM800", "> *** ERROR SENDING SERIAL RESPONSE! ***"}));
}

TEST_F(Terminal, TheScreenScrollsAtItsLastRow) {
  Open();
  for (int i = 0; i < 13; ++i) Line("1A");
  EXPECT_EQ(Screen().CursorRow(), 24);
  EXPECT_EQ(Screen().RowText(24), "");
  EXPECT_EQ(Screen().RowText(23), "> *** ERROR WITH AXIS ADDRESS! ***");
}

// Type-ahead is served behind the answer, in its order; keys are not lost and lines not mixed.
TEST_F(Terminal, KeysThatArriveWhileALineIsOnItsWayWaitForItsAnswer) {
  Open();
  data.events.AtYield(0, [this] {
    EXPECT_FALSE(Window().CommandEnabled("mnuEditPaste"));
    EXPECT_FALSE(Window().timer("Timer1").Enabled());
    Line("0PRM801");
    Type("0T");
  });
  Line("0PRM800");
  EXPECT_EQ(Sent(), (Texts{"0PRM800", "0PRM801"}));
  const Texts rows = Rows();
  ASSERT_EQ(rows.size(), 5U);
  EXPECT_EQ(rows[1], "> 0PN800=00000001");
  EXPECT_EQ(rows[2], "0PRM801");
  EXPECT_EQ(rows[4], "0T");
  EXPECT_TRUE(Window().timer("Timer1").Enabled());
}

TEST_F(Terminal, ClosingWhileALineIsOnItsWayIsHarmless) {
  Open();
  data.events.AtYield(0, [this] { Window().Unload(); });
  Line("0PRM800");
  EXPECT_FALSE(data.forms.IsOpen("frmTerminal"));
  EXPECT_EQ(Tool().Appearance().SizeFont, 10);
}

// ---- scripts

TEST_F(Terminal, ScriptLinesAreStoredUntestedAndGoOutAtRun) {
  Open();
  Line("SCRIPTON");
  EXPECT_FALSE(Window().CommandEnabled("mnuScriptOn"));
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
    EXPECT_FALSE(Window().CommandEnabled("mnuScriptStop"));
    EXPECT_TRUE(Window().timer("Timer1").Enabled());
  }
}

TEST_F(RunningTerminal, KeysBesideEscapeAreDroppedSoThatNoSecondRunBegins) {
  data.events.AtYield(1, [this] {
    EXPECT_FALSE(Window().CommandEnabled("mnuFileOpenScript"));
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
  EXPECT_TRUE(Window().CommandEnabled("mnuScriptOn"));
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
  EXPECT_TRUE(Window().CommandChecked("mnuViewStatusLine"));
  Window().ChooseCommand("mnuViewStatusLine");
  EXPECT_FALSE(Window().label("lblStatusLine").Visible());
  Window().ChooseCommand("mnuViewAutoResize");
  EXPECT_FALSE(Window().CommandChecked("mnuViewAutoResize"));
}

}  // namespace
}  // namespace velmoor
