#include "app/clsHX7Splash.h"

#include "app/Version.h"
#include "platform/Events.h"
#include "platform/Settings.h"
#include "platform/World.h"

namespace velmoor {

void frmSplash::Show() {
  form_ = world().forms->Load("frmSplash");
  Form_Load();
  form_->Show(FormMode::splash);
}

void frmSplash::Form_Load() {
  const std::string version = world().settings->ReadText("CurrentVersion", kProgramVersion);
  form_->label("lblVersion").SetText("Version " + version);
  form_->label("lblStartupMessage").SetText("");
}

void clsHX7Splash::Show(int intPauseTimeInSec) {
  world().events->SetBusyPointer(true);
  frm_ = std::make_unique<frmSplash>();
  frm_->Show();
  YieldEvents();
  PauseInSec(static_cast<float>(intPauseTimeInSec));
}

void clsHX7Splash::Unload_Splash() {
  if (!frm_) return;
  frm_.reset();
  world().events->SetBusyPointer(false);
}

}  // namespace velmoor
