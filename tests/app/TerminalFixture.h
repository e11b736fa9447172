// The terminal's window with the simulated amplifier behind it, and a user who types.
#pragma once

#include "AppSession.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {

struct Key {
  KeyEvent event;
  char character;
};
inline Key Plain(int code, char character) {
  return {{.code = code}, character};
}
inline Key Shifted(int code, char character) {
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
  void Heartbeat() { data.events.WaitForEvents(std::chrono::seconds(30)); }
  void ExpectHeartbeat() {
    const std::size_t asked = Sent().size();
    Heartbeat();
    EXPECT_EQ(Sent().size(), asked + 1);
  }
  std::string Saved(const std::string& name) { return data.files.ReadAll(data.folder.At(name)); }
};

}  // namespace velmoor
