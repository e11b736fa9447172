// The terminal: what a typed key does, what a line does, and that nothing crosses a line under way.
#include <algorithm>

#include "TerminalFixture.h"
#include "link/CommandWords.h"
#include "online/TerminalWords.h"

namespace velmoor {
namespace {

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
    SCOPED_TRACE(row.key.event.code);
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
  EXPECT_EQ(Rows(), (Texts{"1PRM800", refusal, "RUN", refusal, "PRM800", refusal,
                           "> The address of the axis comes first: 0PRM800"}));
  EXPECT_EQ(Screen().boldText.substr(0, 34), refusal);
  // The empty line takes two rows.
  EXPECT_EQ(Screen().CursorRow(), 10);
}

TEST_F(Terminal, ArrowsBringBackWhatWasEntered) {
  Open();
  Line("0PRM800");
  Line("0ALM");
  Line("0ALM");
  Amplifier().ForgetWhatWasAsked();
  const auto press = [this](int code) {
    Press(Plain(code, 0));
    return Screen().RowText(Screen().CursorRow());
  };
  Type("0X");
  EXPECT_EQ(press(keys::kUp), "0ALM") << "a line that is entered twice is kept once";
  EXPECT_EQ(press(keys::kUp), "0PRM800");
  EXPECT_EQ(press(keys::kUp), "0PRM800");
  EXPECT_EQ(press(keys::kDown), "0ALM");
  Enter();
  EXPECT_EQ(Sent(), Texts{"0ALM"});
  EXPECT_EQ(press(keys::kDown), "") << "behind the last there is an empty line";
}

TEST_F(Terminal, TabCompletesAndListsWordsWithTheirMeaning) {
  Open();
  const struct {
    const char* typed;
    const char* completed;
    const char* listed;  // the first row that was written; empty: none
  } kCases[] = {{"0ALMT", "0ALMTRCCLR", ""},
                {"0ZO", "0ZONE", ""},
                {"0ZONE", "0ZONE", "  ZONENT      zone table, lower limit"},
                {"TUN", "0TUNESTORE", ""},
                {"SCRIPTL", "SCRIPTLIST", ""},
                {"0SCRIPTL", "0SCRIPTL", ""},
                {"0PRM8", "0PRM8", ""}};
  for (const auto& entry : kCases) {
    SCOPED_TRACE(entry.typed);
    Window().ChooseCommand("mnuEditClear");
    while (!Rows().empty()) Press(Plain(keys::kBackspace, '\b'));
    Type(entry.typed);
    Press(Plain(keys::kTab, '\t'));
    EXPECT_EQ(Screen().RowText(Screen().CursorRow()), entry.completed);
    if (*entry.listed != '\0') {
      EXPECT_EQ(Rows().at(1), entry.listed);
    }
    Window().ChooseCommand("mnuEditClear");
  }
}

TEST_F(Terminal, EveryWordOfTheWireHasItsMeaning) {
  const auto known = [](std::string_view word) {
    return std::ranges::count(TerminalWords(), word, &TerminalWord::word) == 1;
  };
  for (const auto word : kSimpleCommands) EXPECT_TRUE(known(word)) << word;
  for (const auto word : kValueCommands) EXPECT_TRUE(known(word)) << word;
  for (const auto word : kReadInfoCommands) EXPECT_TRUE(known(word)) << word;
  for (const auto& field : kIndexTableCommands) EXPECT_TRUE(known(field.word)) << field.word;
  for (const auto& field : kZoneTableCommands) EXPECT_TRUE(known(field.word)) << field.word;
  for (const auto& field : kJogTableCommands) EXPECT_TRUE(known(field.word)) << field.word;
  for (const auto word :
       {kRigidityCommand, kInertiaRatioCommand, kHomeOffsetCommand, kAlarmHistoryCommand,
        kParameterCommand, kJogForwardCommand, kJogReverseCommand}) {
    EXPECT_TRUE(known(word)) << word;
  }
}

TEST_F(Terminal, AnswersBearTheTimeWhereTheUserWishes) {
  Open();
  data.clock.SetTimeOfDay(9, 2, 18);
  Window().ChooseCommand("mnuViewTimeStamps");
  Line("0PRM800");
  EXPECT_EQ(Rows(), (Texts{"0PRM800", "09:02:18 > 0PN800=00000001"}));
  Window().ChooseCommand("mnuViewTimeStamps");
  Line("0PRM801");
  EXPECT_TRUE(Rows().back().starts_with("> ")) << Rows().back();
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
    EXPECT_FALSE(Window().command("mnuEditPaste").Enabled());
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
  ExpectHeartbeat();
}

TEST_F(Terminal, ClosingWhileALineIsOnItsWayIsHarmless) {
  Open();
  data.events.AtYield(0, [this] { Window().Unload(); });
  Line("0PRM800");
  EXPECT_FALSE(data.forms.IsOpen("frmTerminal"));
  EXPECT_EQ(Tool().Appearance().SizeFont, 10);
}

}  // namespace
}  // namespace velmoor
