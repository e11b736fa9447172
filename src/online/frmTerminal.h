// The terminal's window: what is typed goes out as it stands, the answer comes back on the screen.
// A script memory holds lines that are run in one go, a log every line that was shown or entered.
//
// Lines go out one after the other: while one is on its way, keys wait until it is answered, and
// while a script runs, Escape or Stop ends it and every other key is dropped.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "layouts/frmTerminal.h"
#include "online/TerminalAppearance.h"
#include "online/TerminalWords.h"
#include "platform/Keys.h"
#include "windows/Window.h"

namespace velmoor {

class clsHX7Terminal;

class frmTerminal final : public WindowOf<layouts::frmTerminal> {
 public:
  // `owner` reads and writes the files; it owns this window.
  explicit frmTerminal(clsHX7Terminal& owner) : owner_(owner) {}

  [[nodiscard]] const std::vector<std::string>& Log() const { return strLog_; }
  [[nodiscard]] const std::vector<std::string>& Script() const { return strScript_; }
  void SetScript(std::vector<std::string> lines);
  [[nodiscard]] const TerminalAppearance& Appearance() const { return appearance_; }
  // Shown at once when the window is open.
  void SetAppearance(const TerminalAppearance& appearance);

  Event<> CommunicationDown;

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  // A key that arrived while a line was on its way.
  struct WaitingKey {
    KeyEvent key;
    char character = 0;  // 0: it types none
  };
  class Busy;
  enum class Work { none, line, script };

  void CheckHardwareEchoSetting();
  void ConnectMenu();

  // ---- typing
  void Vt1_KeyDown(KeyEvent& key);
  void VT1_KeyPress(char character);
  void JudgeKey(KeyEvent& key);
  void TypeCharacter(char character);
  void DropLastCharacter();
  void ReplaceLine(const std::string& line);
  // A line that was entered before, earlier or later than the one on show.
  void Recall(bool earlier);
  void CompleteLine();
  void ListWords(std::span<const TerminalWord> words);
  void EnterLine();
  void ServeWaitingKeys();

  // ---- lines
  void SendSerialCommand();
  void SendToScripting();
  // The words that both kinds of lines know. True: the line was one of them.
  bool CarryOutWord(const std::string& line);
  // False: the window has closed meanwhile.
  bool ExecuteSerialCommand(const std::string& strCmd);
  void RunCurrentScriptBuffer();
  void ClearScriptMemory(bool blnMenuItem);
  void ListCurrentScriptMemory(bool blnMenuItem);
  void TurnScriptOn(bool blnMenuItem);
  void TurnScriptOff(bool blnMenuItem);
  void SetWork(Work work);

  // ---- screen
  TerminalScreen& Vt1() { return ui().Vt1; }
  void UpdateDisplay(const std::string& strText);
  void TellFailure(const std::string& strText);  // the same in the bold colour
  void AdvanceRowInVT();
  // Gives a message a row of its own where a line is being typed, and the line another behind it.
  void TellBesideTyping(const std::string& strText);
  void UpdateState();

  // ---- menus
  void OpenLog();
  void OpenScript();
  bool SaveLog();  // false: it could not be written, of which the user was told
  void SaveScript();
  void SaveAndUnload();
  void Copy();
  void Paste();
  void ClearScreen();
  void ToggleAutoResize();
  void ToggleStatusLine();
  void ShowOptions();
  void StopScript() { stop_ = true; }

  void Timer1_Timer();

  clsHX7Terminal& owner_;
  // The time in front of what is shown, where the user wishes.
  [[nodiscard]] std::string Stamp() const;

  std::string strBuffer_;
  std::vector<std::string> history_;  // the lines that were entered
  std::size_t recalled_ = 0;          // the place of the one on show; behind the last: none
  bool timeStamps_ = false;
  std::vector<std::string> strLog_, strScript_;
  bool blnScriptMode_ = false;
  bool blnHasEcho_ = true;
  bool blnDoNotAppendToBuffer_ = false;
  bool blnNumPadAdd_ = false, blnNumPadSubtract_ = false, blnBackSpace_ = false;
  bool autoResize_ = true, statusLine_ = true;
  Work work_ = Work::none;
  bool stop_ = false;  // the script ends behind the line under way
  std::deque<WaitingKey> waiting_;
  TerminalAppearance appearance_;
  std::unique_ptr<Timer> timer_;  // while the window is open
};

}  // namespace velmoor
