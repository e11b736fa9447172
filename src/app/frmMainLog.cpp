// The log, as the Help menu offers it.

#include "app/frmMain.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Settings.h"
#include "platform/TextViewer.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kTrafficSetting = "LogTraffic";

}  // namespace

void frmMain::ReadFromRegistryLogSettings() {
  Log* const log = CurrentLog();
  const bool keeps = world().settings->ReadNumber(kTrafficSetting, 0) != 0;
  if (log != nullptr) log->SetKeepsTraffic(keeps);
  ui_.commands[MainCommand::mnuHelpLog].SetEnabled(log != nullptr && !log->Path().empty());
  ui_.commands[MainCommand::mnuHelpLogTraffic].SetEnabled(log != nullptr);
  ui_.commands[MainCommand::mnuHelpLogTraffic].SetChecked(log != nullptr && keeps);
}

void frmMain::mnuHelpLog_Click() {
  const std::string path = CurrentLog()->Path();
  TextViewer* const viewer = world().textViewer;
  const bool shown = viewer != nullptr && viewer->IsAvailable() && viewer->Open(path);
  if (!shown) ShowExclamation("The log could not be shown!\rIt lies in\r" + path);
}

// The choice holds for the next sessions too: what is looked for may happen at their start.
void frmMain::mnuHelpLogTraffic_Click() {
  const bool keeps = ui_.commands[MainCommand::mnuHelpLogTraffic].Checked();
  CurrentLog()->SetKeepsTraffic(keeps);
  LogInformation("session", keeps ? "Line traffic is logged." : "Line traffic is not logged.");
  Trapped("frmMain.mnuHelpLogTraffic_Click: ", [keeps] {
    world().settings->Write(kTrafficSetting, keeps ? "1" : "0");
    return true;
  });
}

}  // namespace velmoor
