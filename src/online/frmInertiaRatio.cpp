#include "online/frmInertiaRatio.h"

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kInterval{2000};

}  // namespace

void frmInertiaRatio::FormLoad() {
  timer_ = world().forms->NewTimer();
  timer_->SetInterval(kInterval);
  connections_ += timer_->Tick.Connect([this] { tmrTimer_Timer(); });
  connections_ += ui().cmdSet.Click.Connect([this] { cmdSet_Click(); });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  timer_->SetEnabled(true);
}

void frmInertiaRatio::FormUnload() {
  timer_->SetEnabled(false);
}

void frmInertiaRatio::tmrTimer_Timer() {
  const auto token = Token();
  std::int32_t lngIdentified = 0;
  if (gMainForm->Helix7()->GetInertiaRatio(lngIdentified) != kSuccess) {
    ui().lblIdentified.SetText("ERROR");
    return Fail();
  }
  ui().lblIdentified.SetText(NumberText(lngIdentified));
  YieldEvents();
  if (token.expired()) return;
  std::string strActual;
  const ResultCode result = gMainForm->Helix7()->GetParameter("103", strActual);
  const auto actual = ParseFloat(Trim(strActual));
  if (result != kSuccess || !actual) {
    ui().lblActual.SetText("ERROR");
    return Fail();
  }
  ui().lblActual.SetText(NumberText(*actual));
  YieldEvents();
}

// The window closes itself after one failure, deliberately.
void frmInertiaRatio::Fail() {
  const auto token = Token();
  timer_->SetEnabled(false);
  const std::string cause = CauseOf(gMainForm->Helix7()->LatestFailure(), *gMainForm->Alarm());
  ShowExclamation("Cannot identify or read inertia ratio!\rCheck communications and retry!\r\r" +
                  cause);
  if (!token.expired()) Unload();
}

void frmInertiaRatio::cmdSet_Click() {
  const ResultCode result = gMainForm->Helix7()->SetInertiaRatio();
  if (result == kSuccess) {
    ShowInformation("Inertia Ratio was set successfully!");
  } else {
    DisplayError(result, "Inertia Ratio failed to set!");
  }
}

}  // namespace velmoor
