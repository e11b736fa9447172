#include "online/frmTerminal.h"

#include "link/clsHX7Helix7.h"
#include "online/clsHX7Terminal.h"
#include "online/frmTerminalOptions.h"
#include "platform/Clipboard.h"
#include "platform/Events.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/TextViewer.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

using Id = layouts::frmTerminal::Id;

constexpr std::chrono::milliseconds kHeartbeat{30000};
constexpr const char* kLogFilter = "Log File (*.log)|*.log";
constexpr const char* kScriptFilter = "Terminal Script File (*.tsc)|*.tsc";

}  // namespace

// ---- opening and closing

void frmTerminal::FormLoad() {
  strBuffer_.clear();
  history_.clear();
  recalled_ = 0;
  strLog_.clear();
  strScript_.clear();
  waiting_.clear();
  blnScriptMode_ = false;
  blnDoNotAppendToBuffer_ = blnNumPadAdd_ = blnNumPadSubtract_ = blnBackSpace_ = false;
  work_ = Work::none;
  stop_ = false;
  ApplyAppearance(appearance_, Vt1());
  connections_ += Vt1().KeyDown.Connect([this](KeyEvent& key) { Vt1_KeyDown(key); });
  connections_ += Vt1().KeyPress.Connect([this](char character) { VT1_KeyPress(character); });
  ConnectMenu();
  ui().commands[Id::mnuViewAutoResize].SetChecked(autoResize_);
  ui().commands[Id::mnuViewStatusLine].SetChecked(statusLine_);
  ui().commands[Id::mnuViewTimeStamps].SetChecked(timeStamps_);
  ui().lblStatusLine.SetVisible(statusLine_);
  CheckHardwareEchoSetting();
  UpdateState();
  timer_ = world().forms->NewTimer();
  timer_->SetInterval(kHeartbeat);
  connections_ += timer_->Tick.Connect([this] { Timer1_Timer(); });
  timer_->SetEnabled(true);
  Vt1().SetFocus();
}

void frmTerminal::FormUnload() {
  timer_->SetEnabled(false);
}

void frmTerminal::CheckHardwareEchoSetting() {
  std::string strValue;
  if (gMainForm->Helix7()->GetParameter("800", strValue) != kSuccess) {
    ShowExclamation(
        "Hardware is not ready, or communication\rprocess settings are not set correctly.");
    return;
  }
  const auto setting = ParseFloat(Trim(strValue));
  if (!setting) return;
  if (*setting == 0 || *setting == 2 || *setting == 5) blnHasEcho_ = false;
  if (*setting == 1 || *setting == 3 || *setting == 4 || *setting == 6 || *setting == 7) {
    blnHasEcho_ = true;
  }
}

void frmTerminal::SetAppearance(const TerminalAppearance& appearance) {
  appearance_ = appearance;
  if (!IsOpen()) return;
  ApplyAppearance(appearance_, Vt1());
  if (autoResize_) Vt1().FitWindow();
}

void frmTerminal::SetScript(std::vector<std::string> lines) {
  strScript_ = std::move(lines);
  if (IsOpen()) UpdateState();
}

// ---- menus

void frmTerminal::ConnectMenu() {
  const auto on = [this](Id command, const std::function<void()>& work) {
    connections_ += ui().commands[command].Chosen.Connect(work);
  };
  on(Id::mnuFileOpenLog, [this] { OpenLog(); });
  on(Id::mnuFileOpenScript, [this] { OpenScript(); });
  on(Id::mnuFileSaveLog, [this] { (void)SaveLog(); });
  on(Id::mnuFileSaveScript, [this] { SaveScript(); });
  on(Id::mnuFileExit, [this] { SaveAndUnload(); });
  on(Id::mnuEditCopy, [this] { Copy(); });
  on(Id::mnuEditPaste, [this] { Paste(); });
  on(Id::mnuEditClear, [this] { ClearScreen(); });
  on(Id::mnuScriptOn, [this] { TurnScriptOn(true); });
  on(Id::mnuScriptOff, [this] { TurnScriptOff(true); });
  on(Id::mnuScriptClearMemory, [this] { ClearScriptMemory(true); });
  on(Id::mnuScriptListMemory, [this] { ListCurrentScriptMemory(true); });
  on(Id::mnuScriptStop, [this] { StopScript(); });
  on(Id::mnuViewAutoResize, [this] { ToggleAutoResize(); });
  on(Id::mnuViewStatusLine, [this] { ToggleStatusLine(); });
  on(Id::mnuViewOptions, [this] { ShowOptions(); });
  on(Id::mnuViewWords, [this] { ListWords(TerminalWords()); });
  on(Id::mnuViewTimeStamps, [this] {
    timeStamps_ = !timeStamps_;
    ui().commands[Id::mnuViewTimeStamps].SetChecked(timeStamps_);
  });
}

void frmTerminal::OpenLog() {
  TextViewer* const viewer = world().textViewer;
  if (viewer == nullptr || !viewer->IsAvailable()) {
    ShowExclamation(
        "Registry cannot determine location of default text file editor!\r"
        "Text file editor is required to view log file.");
    return;
  }
  const auto path = world().dialogs->OpenFile({"Open Log", kLogFilter, "log", "", ""});
  if (path && !viewer->Open(*path)) ShowExclamation("Log file could not be launched!");
}

void frmTerminal::OpenScript() {
  const auto token = Token();
  if (!AskOkCancel("Script file will be loaded to replace existing script memory!\r"
                   "Do you wish to continue?") ||
      token.expired()) {
    return;
  }
  const auto path = world().dialogs->OpenFile({"Open Script", kScriptFilter, "tsc", "", ""});
  if (path && !token.expired()) owner_.OpenScriptFile(*path);
}

bool frmTerminal::SaveLog() {
  const auto token = Token();
  const auto path = world().dialogs->SaveFile({"Save Log As", kLogFilter, "log", "", ""}, true);
  return !path || token.expired() || owner_.SaveLogToFile(*path);
}

void frmTerminal::SaveScript() {
  const auto token = Token();
  const auto path =
      world().dialogs->SaveFile({"Save Script As", kScriptFilter, "tsc", "", ""}, true);
  if (path && !token.expired()) owner_.SaveScriptToFile(*path);
}

void frmTerminal::SaveAndUnload() {
  const auto token = Token();
  stop_ = true;
  const bool save = AskYesNo("Do you wish to save session log before exiting?");
  if (token.expired()) return;
  // A log that could not be written would be lost with the window.
  if (save && !SaveLog()) return;
  if (!token.expired()) Unload();
}

void frmTerminal::Copy() {
  const std::string selected = Vt1().SelectedText();
  if (!selected.empty() && world().clipboard != nullptr) world().clipboard->SetText(selected);
}

// Types the first line of the clipboard, as far as its characters can be typed; sends nothing.
void frmTerminal::Paste() {
  if (work_ != Work::none || world().clipboard == nullptr) return;
  blnDoNotAppendToBuffer_ = blnNumPadAdd_ = blnNumPadSubtract_ = blnBackSpace_ = false;
  const std::string text = world().clipboard->Text();
  for (const char character : text.substr(0, text.find_first_of("\r\n"))) TypeCharacter(character);
}

void frmTerminal::ClearScreen() {
  Vt1().Clear();
  Vt1().Write(strBuffer_);
}

void frmTerminal::ToggleAutoResize() {
  autoResize_ = !autoResize_;
  ui().commands[Id::mnuViewAutoResize].SetChecked(autoResize_);
  if (autoResize_) Vt1().FitWindow();
}

void frmTerminal::ToggleStatusLine() {
  statusLine_ = !statusLine_;
  ui().commands[Id::mnuViewStatusLine].SetChecked(statusLine_);
  ui().lblStatusLine.SetVisible(statusLine_);
}

void frmTerminal::ShowOptions() {
  const auto token = Token();
  frmTerminalOptions window(appearance_);
  const bool accepted = window.Ask();
  if (!token.expired() && accepted) SetAppearance(window.Appearance());
}

// ---- screen

std::string frmTerminal::Stamp() const {
  constexpr std::size_t kDay = 11;  // of "2026-03-01 14:05:09"
  return timeStamps_ ? MomentText(world().clock->Now()).substr(kDay) + " " : std::string();
}

void frmTerminal::UpdateDisplay(const std::string& strText) {
  const std::string line = Stamp() + strText;
  strLog_.push_back(line);
  Vt1().Write(line);
  AdvanceRowInVT();
}

void frmTerminal::TellFailure(const std::string& strText) {
  Vt1().SetBold(true);
  UpdateDisplay(strText);
  Vt1().SetBold(false);
}

void frmTerminal::AdvanceRowInVT() {
  TerminalScreen& screen = Vt1();
  if (screen.CursorRow() == screen.Rows()) screen.ScrollUp();
  screen.MoveCursor(screen.CursorRow() + 1, 1);
}

void frmTerminal::TellBesideTyping(const std::string& strText) {
  if (!strBuffer_.empty()) AdvanceRowInVT();
  TellFailure(strText);
  Vt1().Write(strBuffer_);
}

void frmTerminal::UpdateState() {
  const bool free = work_ == Work::none;
  ui().commands[Id::mnuScriptOn].SetEnabled(free && !blnScriptMode_);
  ui().commands[Id::mnuScriptOff].SetEnabled(free && blnScriptMode_);
  for (const Id command : {Id::mnuFileOpenScript, Id::mnuEditPaste, Id::mnuScriptClearMemory,
                           Id::mnuScriptListMemory, Id::mnuEditClear, Id::mnuViewWords}) {
    ui().commands[command].SetEnabled(free);
  }
  ui().commands[Id::mnuScriptStop].SetEnabled(work_ == Work::script);
  std::string text = work_ == Work::script ? "Script runs: Esc stops it"
                     : blnScriptMode_      ? "Scripting: lines are stored, RUN sends them"
                                           : "Direct: lines are sent to axis " + gMainForm->Axis();
  text += "   |   Script memory: " + NumberText(strScript_.size()) +
          (strScript_.size() == 1 ? " line" : " lines");
  text += blnHasEcho_ ? "   |   Echo on" : "   |   Echo off: answers cannot be shown";
  ui().lblStatusLine.SetText(text);
}

// ---- heartbeat

void frmTerminal::Timer1_Timer() {
  // Somebody else is on the line, or is asked something.
  if (work_ != Work::none || world().forms->InputBlocked()) return;
  std::string strType;
  if (gMainForm->Helix7()->GetServoType(strType) == kSuccess) return;
  // Told once: the next line that is sent begins anew.
  timer_->SetEnabled(false);
  TellBesideTyping("> *** COMMUNICATIONS ERROR!  CANNOT COMMUNICATE WITH HARDWARE! ***");
  CommunicationDown.Raise();
}

}  // namespace velmoor
