// Modules, tool windows, and which menus and tools are offered.

#include "app/ConnectionMenu.h"
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
constexpr MainCommand kProjectCommands[] = {
    MainCommand::mnuEdit,
    MainCommand::mnuModule,
    MainCommand::mnuWindow,
    MainCommand::mnuFileClose,
    MainCommand::mnuFileSave,
    MainCommand::mnuFileSaveAs,
    MainCommand::mnuFilePageSetup,
    MainCommand::mnuFilePrint,
    MainCommand::mnuFileExportText,
    MainCommand::mnuFileImportText,
    MainCommand::mnuToolsIndexer,
    MainCommand::mnuToolsMechanicalSystem,
    MainCommand::mnuToolsTuning,
    MainCommand::mnuToolsEditor,
    MainCommand::mnuToolsServoJog,
    MainCommand::mnuToolsMonitoring,
    MainCommand::mnuToolsTerminal,
    MainCommand::mnuToolsInertiaRatio,
    MainCommand::mnuToolsHomePosition,
    MainCommand::mnuToolsUpload,
    MainCommand::mnuToolsDownload,
    MainCommand::mnuToolsCompare,
    MainCommand::mnuToolsReset,
    MainCommand::mnuViewHistory,
    MainCommand::mnuToolsRecordings,
};
// Entries of those menus that are tools of the standard tool bar too.
constexpr MainCommand kProjectTools[] = {
    MainCommand::mnuEditCut,        MainCommand::mnuEditCopy, MainCommand::mnuEditPaste,
    MainCommand::mnuEditUndo,       MainCommand::mnuEditRedo, MainCommand::mnuToolsDownloadNew,
    MainCommand::mnuToolsUploadAll,
};
// What a session offers without a project, once it is built.
constexpr MainCommand kInitialCommands[] = {
    MainCommand::mnuFile,
    MainCommand::mnuView,
    MainCommand::mnuTools,
    MainCommand::mnuLine,
    MainCommand::mnuHelp,
    MainCommand::mnuFileOpen,
    MainCommand::mnuFileNew,
    MainCommand::mnuFileReadAmplifier,
    MainCommand::mnuFileCompare,
    MainCommand::mnuFileExit,
    MainCommand::mnuLineOpen,
    MainCommand::mnuLineSearch,
    MainCommand::mnuToolsCommunicationsSettings,
    MainCommand::mnuToolsSimulated,
    MainCommand::mnuToolsAlarms,
    MainCommand::mnuToolsProductInformation,
};
// Entries that need a connected amplifier; the transfers connect by themselves.
constexpr MainCommand kOnlineCommands[] = {
    MainCommand::mnuToolsResetDefaultsAll, MainCommand::mnuToolsResetParametersAll,
    MainCommand::mnuToolsResetTablesAll,   MainCommand::mnuToolsResetTableIndex,
    MainCommand::mnuToolsResetTableJog,    MainCommand::mnuToolsResetTableZone,
};

}  // namespace

// ---- what is offered

void frmMain::EnableByState() {
  ui_.commands[MainCommand::mnuToolsOnline].SetEnabled(ready_ && !blnIsOnline);
  ui_.commands[MainCommand::mnuToolsOffline].SetEnabled(blnIsOnline);
  for (const MainCommand command : kOnlineCommands) ui_.commands[command].SetEnabled(blnIsOnline);
  EnableConnectionMenu(ui_, ready_, operations_.connection.State() == LineState::searching);
}

void frmMain::EnableInitialMenuOptions(bool bState) {
  ready_ = bState;
  for (const MainCommand command : kInitialCommands) ui_.commands[command].SetEnabled(bState);
  EnableByState();
  // The look for a motor is over.
  if (bState) ShowStatusText(operations_.connection.StateText());
  UpdatePages();
}

void frmMain::DisplayFullMenuBar(bool bState) {
  for (const MainCommand command : kProjectCommands) ui_.commands[command].SetVisible(bState);
  projectShown_ = bState;
}

void frmMain::DisplayFullModuleToolBar(bool bState) {
  for (const MainCommand command : kProjectTools) ui_.commands[command].SetVisible(bState);
  for (const ModuleInfo& module : kModules) ui_.commands[module.command].SetVisible(bState);
  window_->SetToolBarVisible(ToolBar::module,
                             bState && ui_.commands[MainCommand::mnuViewToolbarModule].Checked());
  if (!bState) window_->SetPanel(StatusPanel::module, "");
}

void frmMain::ShowToolBars() {
  window_->SetToolBarVisible(ToolBar::standard,
                             ui_.commands[MainCommand::mnuViewToolbarStandard].Checked());
  window_->SetToolBarVisible(
      ToolBar::module, projectShown_ && ui_.commands[MainCommand::mnuViewToolbarModule].Checked());
}

void frmMain::ShowStatusBar() {
  window_->SetStatusBarVisible(ui_.commands[MainCommand::mnuViewStatusBar].Checked());
}

void frmMain::mnuHelpContents_Click() {
  ShowHelpFor(nullptr);
}

void frmMain::mnuHelpAbout_Click() {
  (void)frmAbout().Show(FormMode::modal);
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
    ui_.commands[kModules[i].command].SetChecked(static_cast<Module>(i) == eSelectedModule);
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
