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

frmDialogStop::frmDialogStop(const clsHX7Procedure& procedure, bool blnShowCurrent)
    : procedure_(procedure),
      blnShowCurrent_(blnShowCurrent),
      start_(world().clock->Monotonic()),
      form_(world().forms->Load("frmDialogStop")) {
  connections_ += form_->QueryUnload.Connect([](bool& cancel) { cancel = true; });
  connections_ += form_->button("cmdStop").Click.Connect([this] { cmdStop_Click(); });
  Timer& tmrUpdate = form_->timer("tmrUpdate");
  connections_ += tmrUpdate.Tick.Connect([this] { UpdateProgress(); });
  tmrUpdate.SetInterval(kRefresh);
  tmrUpdate.SetEnabled(true);
  form_->progressBar("pgbCurrent").SetVisible(blnShowCurrent);
  form_->label("lblCurrent").SetVisible(blnShowCurrent);
}

void frmDialogStop::Show(const std::string& strCaption) {
  form_->SetCaption(strCaption);
  UpdateProgress();
  form_->Show(FormMode::blocking);
}

void frmDialogStop::UpdateProgress() {
  if (blnShowCurrent_) {
    form_->progressBar("pgbCurrent")
        .SetProgress(procedure_.CurrentFinished, procedure_.CurrentSteps);
    form_->label("lblCurrent").SetText(procedure_.Current);
  }
  form_->progressBar("pgbTotal").SetProgress(procedure_.Finished, procedure_.Steps);
  form_->label("lblTotal").SetText(procedure_.Total);
  UpdateTimes();
}

void frmDialogStop::UpdateTimes() {
  const std::chrono::milliseconds elapsed = world().clock->Monotonic() - start_;
  std::string text = "Elapsed: " + MinutesText(elapsed);
  const int left = procedure_.Steps - procedure_.Finished;
  if (procedure_.Finished >= kStepsForEstimate && left > 0) {
    text += "   Remaining: " + MinutesText(elapsed * left / procedure_.Finished);
  }
  form_->label("lblTime").SetText(text);
}

void frmDialogStop::cmdStop_Click() {
  gMainForm->SetStopProcedure(true);
  form_->button("cmdStop").SetEnabled(false);
}

void clsHX7Procedure::Show_Procedure(const std::string& strCaption, bool blnShowCurrent) {
  frmProcedure_ = std::make_unique<frmDialogStop>(*this, blnShowCurrent);
  frmProcedure_->Show(strCaption);
}

void clsHX7Procedure::Unload_Procedure() {
  frmProcedure_.reset();
}

}  // namespace velmoor
