#include "app/clsHX7Procedure.h"

#include "platform/Events.h"
#include "platform/World.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kRefresh{100};
// An estimate from fewer steps jumps about.
constexpr int kStepsForEstimate = 5;

std::string MinutesText(std::chrono::milliseconds time) {
  const auto seconds = time.count() / 1000;
  const std::string rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

}  // namespace

frmDialogStop::frmDialogStop(const clsHX7Procedure& procedure, std::string strCaption,
                             bool blnShowCurrent)
    : procedure_(procedure),
      strCaption_(std::move(strCaption)),
      blnShowCurrent_(blnShowCurrent),
      start_(WorkTime()) {}

void frmDialogStop::FormLoad() {
  form().SetCaption(strCaption_);
  connections_ += ui().cmdStop.Click.Connect([this] { cmdStop_Click(); });
  tmrUpdate_ = world().forms->NewTimer();
  connections_ += tmrUpdate_->Tick.Connect([this] { UpdateProgress(); });
  tmrUpdate_->SetInterval(kRefresh);
  tmrUpdate_->SetEnabled(true);
  ui().pgbCurrent.SetVisible(blnShowCurrent_);
  ui().lblCurrent.SetVisible(blnShowCurrent_);
  UpdateProgress();
}

void frmDialogStop::UpdateProgress() {
  if (blnShowCurrent_) {
    ui().pgbCurrent.SetProgress(procedure_.CurrentFinished, procedure_.CurrentSteps);
    ui().lblCurrent.SetText(procedure_.Current);
  }
  ui().pgbTotal.SetProgress(procedure_.Finished, procedure_.Steps);
  ui().lblTotal.SetText(procedure_.Total);
  UpdateTimes();
}

void frmDialogStop::UpdateTimes() {
  const std::chrono::milliseconds elapsed = WorkTime() - start_;
  std::string text = "Elapsed: " + MinutesText(elapsed);
  const int left = procedure_.Steps - procedure_.Finished;
  if (procedure_.Finished >= kStepsForEstimate && left > 0) {
    text += "   Remaining: " + MinutesText(elapsed * left / procedure_.Finished);
  }
  ui().lblTime.SetText(text);
}

void frmDialogStop::cmdStop_Click() {
  gMainForm->SetStopProcedure(true);
  ui().cmdStop.SetEnabled(false);
}

void clsHX7Procedure::Show_Procedure(const std::string& strCaption, bool blnShowCurrent) {
  frmProcedure_ = std::make_unique<frmDialogStop>(*this, strCaption, blnShowCurrent);
  (void)frmProcedure_->Show(FormMode::blocking);
}

void clsHX7Procedure::Unload_Procedure() {
  frmProcedure_.reset();
}

}  // namespace velmoor
