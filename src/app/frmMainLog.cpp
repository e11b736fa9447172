// The log, as the Help menu offers it.

#include "app/frmMain.h"
#include "platform/Log.h"
#include "platform/Settings.h"
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
  if (log_.IsOpen()) return log_.BringToFront();
  (void)log_.Show(FormMode::modeless);
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
