// The terminal's lines: how they are typed, what their words do, how they go out.

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "link/clsHX7Helix7.h"
#include "online/frmTerminal.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

bool IsLetter(int code) {
  return code >= 'A' && code <= 'Z';
}
bool IsDigit(int code) {
  return code >= '0' && code <= '9';
}

// The narrow set that a line is made of, deliberately.
bool CanEnterLine(char character) {
  const auto capital = UpperCase({&character, 1}).front();
  return IsLetter(capital) || IsDigit(capital) ||
         std::string_view(":=+-").find(capital) != std::string_view::npos;
}

// Whether the character that the key types belongs to the line.
bool KeyCounts(const KeyEvent& key) {
  if (IsLetter(key.code)) return !key.ctrl && !key.alt;
  if (key.code == keys::kColon) return key.shift && !key.ctrl && !key.alt;
  if (key.code == keys::kEquals) return key.shift || key.ctrl == key.alt;
  const bool plain =
      IsDigit(key.code) || (key.code >= keys::kPad0 && key.code <= keys::kPad0 + 9) ||
      key.code == keys::kPadPlus || key.code == keys::kMinus || key.code == keys::kPadMinus;
  return plain && !key.AnyShift();
}

}  // namespace

// Keeps the line, from the first byte to the last answer, for one line or one script.
class frmTerminal::Busy {
 public:
  Busy(frmTerminal& window, Work work)
      : window_(window), token_(window.Token()), before_(window.work_) {
    window_.SetWork(work);
  }
  ~Busy() {
    if (!token_.expired()) window_.SetWork(before_);
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  frmTerminal& window_;
  std::weak_ptr<const void> token_;
  Work before_;
};

void frmTerminal::SetWork(Work work) {
  work_ = work;
  timer_->SetEnabled(work == Work::none);
  UpdateState();
}

// ---- typing

void frmTerminal::Vt1_KeyDown(KeyEvent& key) {
  if (work_ == Work::script) {
    if (key.code == keys::kEscape) StopScript();
    key.handled = true;
  } else if (work_ == Work::line) {
    waiting_.push_back({key, 0});
  } else {
    const auto token = Token();
    JudgeKey(key);
    if (!token.expired()) ServeWaitingKeys();
  }
}

void frmTerminal::VT1_KeyPress(char character) {
  if (work_ == Work::line && !waiting_.empty()) {
    waiting_.back().character = character;
  } else if (work_ == Work::none) {
    TypeCharacter(character);
  }
}

// What was typed while the line was on its way, now that it is answered.
void frmTerminal::ServeWaitingKeys() {
  const auto token = Token();
  while (!waiting_.empty() && work_ == Work::none) {
    WaitingKey next = waiting_.front();
    waiting_.pop_front();
    JudgeKey(next.key);
    if (token.expired()) return;
    if (!next.key.handled && next.character != 0) TypeCharacter(next.character);
  }
}

void frmTerminal::JudgeKey(KeyEvent& key) {
  blnNumPadAdd_ = blnNumPadSubtract_ = blnBackSpace_ = false;
  blnDoNotAppendToBuffer_ = !KeyCounts(key);
  if (!blnDoNotAppendToBuffer_) {
    blnNumPadAdd_ = key.code == keys::kPadPlus;
    blnNumPadSubtract_ = key.code == keys::kPadMinus;
  } else if (key.code == keys::kBackspace) {
    blnBackSpace_ = true;
  } else if (key.code == keys::kEnter) {
    // Its character must not meet a window that the line has closed, or a line typed meanwhile.
    key.handled = true;
    EnterLine();
  } else if (!key.AnyShift() && (key.code == keys::kUp || key.code == keys::kDown)) {
    key.handled = true;
    Recall(key.code == keys::kUp);
  } else if (!key.AnyShift() && key.code == keys::kTab) {
    key.handled = true;
    CompleteLine();
  } else if (key.ctrl && !key.alt && key.code == 'C') {
    Copy();
  } else if (key.ctrl && !key.alt && key.code == 'V') {
    key.handled = true;
    Paste();
  }
}

void frmTerminal::TypeCharacter(char character) {
  if (std::exchange(blnDoNotAppendToBuffer_, false)) {
    if (std::exchange(blnBackSpace_, false)) DropLastCharacter();
    return;
  }
  std::string text = UpperCase({&character, 1});
  if (std::exchange(blnNumPadAdd_, false)) text = "+";
  if (std::exchange(blnNumPadSubtract_, false)) text = "-";
  if (!CanEnterLine(text.front())) return;
  strBuffer_ += text;
  Vt1().Write(text);
}

// The row is drawn anew from its first column, over whatever stood there; so are the rows before it
// of a line that is longer than one.
void frmTerminal::DropLastCharacter() {
  TerminalScreen& screen = Vt1();
  const int columns = screen.Columns();
  const int length = static_cast<int>(strBuffer_.size());
  // Behind a full row the cursor stands at its end, or at the next one's begin.
  const bool onNextRow = length > 0 && screen.CursorColumn() == 1;
  const int rowsBefore = onNextRow ? length / columns : std::max(0, length - 1) / columns;
  if (!strBuffer_.empty()) strBuffer_.pop_back();
  const int left = static_cast<int>(strBuffer_.size());
  screen.MoveCursor(screen.CursorRow() - rowsBefore, 1);
  // The blank may be what scrolls the screen, so the row of the cursor is its own.
  screen.Write(strBuffer_ + " ");
  screen.MoveCursor(screen.CursorRow(), left % columns + 1);
}

void frmTerminal::ReplaceLine(const std::string& line) {
  while (!strBuffer_.empty()) DropLastCharacter();
  strBuffer_ = line;
  Vt1().Write(line);
}

void frmTerminal::Recall(bool earlier) {
  if (earlier ? recalled_ == 0 : recalled_ >= history_.size()) return;
  if (earlier) {
    --recalled_;
  } else {
    ++recalled_;
  }
  ReplaceLine(recalled_ < history_.size() ? history_[recalled_] : std::string());
}

// Several words that go on alike are listed below the line, which is shown anew behind them.
void frmTerminal::CompleteLine() {
  const Completion completion = Complete(strBuffer_, gMainForm->Axis());
  if (completion.words.size() > 1 && completion.line == strBuffer_) {
    AdvanceRowInVT();
    ListWords(completion.words);
  } else if (completion.line != strBuffer_) {
    ReplaceLine(completion.line);
  }
}

void frmTerminal::ListWords(std::span<const TerminalWord> words) {
  constexpr std::size_t kColumn = 12;
  if (Vt1().CursorColumn() > 1) AdvanceRowInVT();
  for (const TerminalWord& word : words) {
    std::string line(word.word);
    line.resize(kColumn, ' ');
    Vt1().Write("  " + line + std::string(word.meaning));
    AdvanceRowInVT();
  }
  Vt1().Write(strBuffer_);
}

void frmTerminal::EnterLine() {
  if (!strBuffer_.empty() && (history_.empty() || history_.back() != strBuffer_)) {
    history_.push_back(strBuffer_);
  }
  recalled_ = history_.size();
  AdvanceRowInVT();
  if (blnScriptMode_) {
    SendToScripting();
  } else {
    SendSerialCommand();
  }
}

// ---- lines

bool frmTerminal::CarryOutWord(const std::string& line) {
  struct Word {
    std::string_view word;
    void (*run)(frmTerminal& window);
  };
  static constexpr std::array<Word, 7> kWords{{
      {"END", [](frmTerminal& f) { f.SaveAndUnload(); }},
      {"EXIT", [](frmTerminal& f) { f.SaveAndUnload(); }},
      {"QUIT", [](frmTerminal& f) { f.SaveAndUnload(); }},
      {"SCRIPTCLEAR", [](frmTerminal& f) { f.ClearScriptMemory(false); }},
      {"SCRIPTLIST", [](frmTerminal& f) { f.ListCurrentScriptMemory(false); }},
      {"SCRIPTOFF", [](frmTerminal& f) { f.TurnScriptOff(false); }},
      {"SCRIPTON",
       [](frmTerminal& f) {
         // Scripting that is on already stays so without a word.
         if (!f.blnScriptMode_) f.TurnScriptOn(false);
       }},
  }};
  const auto found = std::ranges::find(kWords, std::string_view(line), &Word::word);
  if (found == kWords.end()) return false;
  found->run(*this);
  return true;
}

void frmTerminal::SendSerialCommand() {
  const std::string line(Trim(std::exchange(strBuffer_, {})));
  if (line.empty()) return AdvanceRowInVT();
  strLog_.push_back(Stamp() + line);
  if (CarryOutWord(line)) return;
  // The first character alone is compared, deliberately.
  if (line.substr(0, 1) == gMainForm->Axis()) {
    (void)ExecuteSerialCommand(line);
  } else {
    TellFailure("> *** ERROR WITH AXIS ADDRESS! ***");
    if (LacksAxis(line)) {
      UpdateDisplay("> The address of the axis comes first: " + gMainForm->Axis() + line);
    }
  }
}

void frmTerminal::SendToScripting() {
  const std::string line(Trim(std::exchange(strBuffer_, {})));
  if (line.empty()) return AdvanceRowInVT();
  strLog_.push_back(Stamp() + line);
  if (line == "RUN") {
    AdvanceRowInVT();
    RunCurrentScriptBuffer();
  } else if (!CarryOutWord(line)) {
    // Whatever axis it names: only lines that are sent at once are tested.
    strScript_.push_back(line);
    UpdateState();
  }
}

bool frmTerminal::ExecuteSerialCommand(const std::string& strCmd) {
  const auto token = Token();
  const Busy busy(*this, work_ == Work::none ? Work::line : work_);
  std::string strReturn;
  // A success without an answer, as of an amplifier that does not echo, is shown as an error too,
  // deliberately.
  (void)gMainForm->Helix7()->SendToSerial(strCmd, strReturn);
  YieldEvents();
  if (token.expired()) return false;
  if (strReturn.empty()) {
    TellFailure("> *** ERROR SENDING SERIAL RESPONSE! ***");
  } else {
    UpdateDisplay("> " + UpperCase(strReturn));
  }
  return true;
}

void frmTerminal::RunCurrentScriptBuffer() {
  if (strScript_.empty()) {
    UpdateDisplay("> NO COMMANDS IN SCRIPT MEMORY TO EXECUTE!");
    return;
  }
  const auto token = Token();
  stop_ = false;
  const Busy busy(*this, Work::script);
  // A failed line is told and the next one goes out, deliberately.
  const std::vector<std::string> lines = strScript_;
  for (const std::string& line : lines) {
    UpdateDisplay(line);
    if (!ExecuteSerialCommand(line) || token.expired()) return;
    if (!stop_) continue;
    TellFailure("> *** SCRIPT STOPPED! ***");
    return;
  }
}

void frmTerminal::ClearScriptMemory(bool blnMenuItem) {
  strScript_.clear();
  if (blnMenuItem) UpdateDisplay("SCRIPTCLEAR");
  UpdateDisplay("> SCRIPTING MEMORY CLEARED");
  UpdateState();
}

void frmTerminal::ListCurrentScriptMemory(bool blnMenuItem) {
  if (blnMenuItem) UpdateDisplay("SCRIPTLIST");
  if (strScript_.empty()) {
    UpdateDisplay("> NO CONTENTS IN SCRIPT MEMORY!");
    return;
  }
  UpdateDisplay("> CURRENT SCRIPT MEMORY:");
  for (const std::string& line : strScript_) UpdateDisplay("> " + line);
}

void frmTerminal::TurnScriptOn(bool blnMenuItem) {
  if (blnMenuItem) UpdateDisplay("SCRIPTON");
  UpdateDisplay("> SCRIPTING ON");
  blnScriptMode_ = true;
  UpdateState();
}

void frmTerminal::TurnScriptOff(bool blnMenuItem) {
  if (blnMenuItem) UpdateDisplay("SCRIPTOFF");
  UpdateDisplay("> SCRIPTING OFF");
  blnScriptMode_ = false;
  UpdateState();
}

}  // namespace velmoor
