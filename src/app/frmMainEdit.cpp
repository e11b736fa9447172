// The Edit menu, which acts on the active window.

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "app/frmMain.h"
#include "platform/Form.h"
#include "platform/MessageBoxes.h"
#include "platform/World.h"
#include "tables/TableWindow.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {
namespace {

constexpr MainCommand kEditCommands[] = {MainCommand::mnuEditCut, MainCommand::mnuEditCopy,
                                         MainCommand::mnuEditPaste, MainCommand::mnuEditUndo,
                                         MainCommand::mnuEditRedo};

}  // namespace

void frmMain::ConnectEditMenu() {
  projectConnections_ +=
      clsProject->ToolClosed.Connect([this](Tool) { UpdateEditIconToolButtons(); });
  projectConnections_ +=
      clsProject->EditStateChanged.Connect([this](Tool) { UpdateEditIconToolButtons(); });
  for (MotionTable* const table : std::initializer_list<MotionTable*>{
           &clsProject->Position(), &clsProject->Jog(), &clsProject->Zone()}) {
    projectConnections_ += table->EditStateChanged.Connect([this] { UpdateEditIconToolButtons(); });
  }
}

EditTarget* frmMain::ActiveEditTarget() {
  if (!clsProject) return nullptr;
  if (clsProject->Position().Window().IsActive()) return &clsProject->Position().Window();
  if (clsProject->Jog().Window().IsActive()) return &clsProject->Jog().Window();
  if (clsProject->Zone().Window().IsActive()) return &clsProject->Zone().Window();
  for (ParameterToolBase* const tool : clsProject->ParameterTools()) {
    if (tool->Window().IsActive()) return &tool->Window();
  }
  return nullptr;
}

void frmMain::UpdateEditIconToolButtons() {
  const EditTarget* const target = ActiveEditTarget();
  const bool copy = target != nullptr && target->CanCopy();
  const bool states[] = {
      target != nullptr && target->CanCut(), copy, target != nullptr && target->CanPaste(),
      target != nullptr && target->CanUndo(), target != nullptr && target->CanRedo()};
  for (std::size_t i = 0; i < std::size(kEditCommands); ++i) {
    ui_.commands[kEditCommands[i]].SetEnabled(states[i]);
  }
}

bool frmMain::ApplyPending(const std::string& offer) {
  std::vector<GridWindow*> pending;
  std::string names;
  for (const ToolInfo& info : Tools()) {
    GridWindow& window = clsProject->WindowOf(info.tool);
    if (!window.EndEdit()) return false;
    if (!window.IsOpen() || !window.NotCommitted()) continue;
    pending.push_back(&window);
    names += "\r" + std::string(info.item);
  }
  if (pending.empty()) return true;
  const BoxAnswer answer = AskYesNoCancel(
      "What was edited in these windows was not applied yet:" + names + "\r\r" + offer);
  if (answer != BoxAnswer::yes) return answer == BoxAnswer::no;
  return std::ranges::all_of(pending, [](GridWindow* window) { return window->CommitPending(); });
}

void frmMain::mnuEditCut_Click() {
  if (EditTarget* const target = ActiveEditTarget()) target->Cut();
}

void frmMain::mnuEditCopy_Click() {
  if (EditTarget* const target = ActiveEditTarget()) target->Copy();
}

void frmMain::mnuEditPaste_Click() {
  if (EditTarget* const target = ActiveEditTarget()) target->Paste();
}

void frmMain::mnuEditUndo_Click() {
  if (EditTarget* const target = ActiveEditTarget()) target->Undo();
}

void frmMain::mnuEditRedo_Click() {
  if (EditTarget* const target = ActiveEditTarget()) target->Redo();
}

}  // namespace velmoor
