// Modules, tool windows, and which menus and tools are offered.

#include "app/HelpTopics.h"
#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "platform/Form.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// Menus, and entries of the menus that are always there, that need an open project.
constexpr const char* kProjectCommands[] = {
    "mnuEdit",     "mnuModule",     "mnuTools",         "mnuWindow",
    "mnuFileSave", "mnuFileSaveAs", "mnuFilePageSetup", "mnuFilePrint",
};
// Entries of those menus that are tools of the standard tool bar too.
constexpr const char* kProjectTools[] = {
    "mnuEditCut",          "mnuEditCopy",       "mnuEditPaste",    "mnuEditUndo",
    "mnuEditRedo",         "mnuToolsOnline",    "mnuToolsOffline", "mnuToolsCommunicationsSettings",
    "mnuToolsDownloadNew", "mnuToolsUploadAll",
};
constexpr const char* kInitialCommands[] = {"mnuFile",     "mnuView",    "mnuHelp",
                                            "mnuFileOpen", "mnuFileNew", "mnuFileExit"};
// Entries that need a connected amplifier; the transfers connect by themselves.
constexpr const char* kOnlineCommands[] = {
    "mnuToolsResetDefaultsAll", "mnuToolsResetParametersAll", "mnuToolsResetTablesAll",
    "mnuToolsResetTableIndex",  "mnuToolsResetTableJog",      "mnuToolsResetTableZone",
};

}  // namespace

// ---- what is offered

void frmMain::EnableByState() {
  window_->SetCommandEnabled("mnuToolsOnline", !blnIsOnline);
  window_->SetCommandEnabled("mnuToolsOffline", blnIsOnline);
  for (const char* const name : kOnlineCommands) window_->SetCommandEnabled(name, blnIsOnline);
}

void frmMain::EnableInitialMenuOptions(bool bState) {
  for (const char* const name : kInitialCommands) window_->SetCommandEnabled(name, bState);
}

void frmMain::DisplayFullMenuBar(bool bState) {
  for (const char* const name : kProjectCommands) window_->SetCommandVisible(name, bState);
  projectShown_ = bState;
}

void frmMain::DisplayFullModuleToolBar(bool bState) {
  for (const char* const name : kProjectTools) window_->SetCommandVisible(name, bState);
  for (const ModuleInfo& module : kModules) window_->SetCommandVisible(module.command, bState);
  window_->SetToolBarVisible(ToolBar::module,
                             bState && window_->CommandChecked("mnuViewToolbarModule"));
  if (!bState) window_->SetPanel(StatusPanel::module, "");
}

void frmMain::ShowToolBars() {
  window_->SetToolBarVisible(ToolBar::standard, window_->CommandChecked("mnuViewToolbarStandard"));
  window_->SetToolBarVisible(ToolBar::module,
                             projectShown_ && window_->CommandChecked("mnuViewToolbarModule"));
}

void frmMain::ShowStatusBar() {
  window_->SetStatusBarVisible(window_->CommandChecked("mnuViewStatusBar"));
}

void frmMain::mnuHelpContents_Click() {
  ShowHelpFor(nullptr);
}

void frmMain::mnuHelpAbout_Click() {
  frmAbout().Show();
}

// ---- modules

void frmMain::ChooseModule(Module module) {
  // The choice itself has pressed the tool already: show the module that is in force.
  ShowModule();
  bool Cancel = false;
  const bool RetVal = UnloadModuleTools(module, Cancel);
  if (!RetVal) ShowExclamation("Error unloading existing tool windows!");
  if (RetVal && !Cancel) eSelectedModule = module;
  ShowModule();
}

void frmMain::ShowModule() {
  for (std::size_t i = 0; i < kModules.size(); ++i) {
    window_->SetCommandChecked(kModules[i].command, static_cast<Module>(i) == eSelectedModule);
  }
  window_->SetPanel(StatusPanel::module, kModules[static_cast<std::size_t>(eSelectedModule)].text);
}

bool frmMain::UnloadModuleTools(Module eNotThisModule, bool& Cancel) {
  if (eNotThisModule == eSelectedModule) return true;
  return Trapped("frmMain.UnloadModuleTools: ", [&Cancel] {
    if (world().forms->Shown().empty()) return true;
    Cancel = !AskOkCancel(
        "All opened tool windows will be unloaded prior to switching modules.\r"
        "Uncommitted data will lost.  Do you wish to proceed?");
    if (!Cancel) Cancel = !UnloadAllForms();
    return true;
  });
}

bool frmMain::UnloadAllForms() {
  for (Form* const form : world().forms->Shown()) form->Unload();
  return world().forms->Shown().empty();
}

}  // namespace velmoor
