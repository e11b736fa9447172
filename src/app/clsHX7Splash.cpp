#include "app/clsHX7Splash.h"

#include "app/Version.h"
#include "platform/Events.h"
#include "platform/Settings.h"
#include "platform/World.h"

namespace velmoor {

void frmSplash::FormLoad() {
  const std::string version = world().settings->ReadText("CurrentVersion", kProgramVersion);
  ui().lblVersion.SetText("Version " + version);
  ui().lblStartupMessage.SetText("");
}

void clsHX7Splash::Show(int intPauseTimeInSec) {
  world().events->SetBusyPointer(true);
  frm_ = std::make_unique<frmSplash>();
  (void)frm_->Show(FormMode::splash);
  YieldEvents();
  PauseInSec(static_cast<float>(intPauseTimeInSec));
}

void clsHX7Splash::Unload_Splash() {
  if (!frm_) return;
  frm_.reset();
  world().events->SetBusyPointer(false);
}

}  // namespace velmoor
