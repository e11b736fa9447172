#include "online/frmHomePosition.h"

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr double kMostCounts = 99999999;
constexpr const char* kCannotReset = "Error resetting absolute encoder!";

}  // namespace

void frmHomePosition::FormLoad() {
  const Project& project = OpenedProject();
  strUnits_ = project.DistanceUnits();
  iResolution_ = project.Resolution();
  dblCFDistance_ = project.ConversionForDistance();
  blnNeedsSaving_ = false;
  ui().lblUnits.SetText(strUnits_);
  strOldValue_ = strStartValue_ = homing_.GetHomingOffset();
  ui().txtOffset.SetText(strOldValue_);
  ui().cmdAbsReset.SetEnabled(IsAbsoluteEncoderInUse());
  connections_ +=
      ui().txtOffset.Validate.Connect([this](bool& cancel) { txtOffset_Validate(cancel); });
  connections_ += ui().cmdUpdate.Click.Connect([this] { cmdUpdate_Click(); });
  connections_ += ui().cmdAbsReset.Click.Connect([this] { cmdAbsReset_Click(); });
  connections_ += ui().cmdCancel.Click.Connect([this] { Unload(); });
}

void frmHomePosition::FormUnload() {
  const auto before = ParseFloat(Trim(strStartValue_));
  const auto now = ParseFloat(Trim(strOldValue_));
  blnNeedsSaving_ = before != now;
}

// An absolute encoder may be used as an incremental one: Pn002's third digit from the right tells.
bool frmHomePosition::IsAbsoluteEncoderInUse() {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  if (helix.GetEncoderType(strEncoderType_) != kSuccess) return false;
  if (LowerCase(Trim(strEncoderType_)) != "absolute") return false;
  std::string strPn002;
  if (helix.GetParameter("002", strPn002) != kSuccess) return false;
  return Mid(Right(Trim(strPn002), 4), 2, 1) == "0";
}

// ---- the offset

double frmHomePosition::CountsOf(const std::string& text) const {
  return ParseFloat(Trim(text)).value_or(0) * dblCFDistance_;
}

bool frmHomePosition::IsWithinAllowableRange(const std::string& text) const {
  const double counts = RoundHalfEven(CountsOf(text));
  return counts >= -kMostCounts && counts <= kMostCounts;
}

void frmHomePosition::Restore(bool& Cancel) {
  ui().txtOffset.SetText(strOldValue_);
  ui().txtOffset.SelectAll();
  Cancel = true;
}

void frmHomePosition::txtOffset_Validate(bool& Cancel) {
  const std::string text = ui().txtOffset.Text();
  std::string strError;
  if (!IsFloatText(text, strError)) {
    ShowExclamation(strError + "\rOffset value must be numeric!");
    return Restore(Cancel);
  }
  if (!IsWithinAllowableRange(text)) {
    ShowExclamation("Offset value out of range!\rValue must be in the range from " +
                    FixedText(-kMostCounts / dblCFDistance_, iResolution_) + " and " +
                    FixedText(kMostCounts / dblCFDistance_, iResolution_) + "!");
    return Restore(Cancel);
  }
  strOldValue_ = FormatToResolution(text, iResolution_);
  ui().txtOffset.SetText(strOldValue_);
}

void frmHomePosition::cmdUpdate_Click() {
  bool refused = false;
  txtOffset_Validate(refused);
  if (refused) return;
  if (!AskExclamationYesNo("Caution!  This action will set the home offset position!\r"
                           "Do you wish to proceed?")) {
    return;
  }
  const auto token = Token();
  const bool done = Trapped("Update Homing Offset: ", [this] { return UpdateOffset(); });
  if (done && !token.expired()) Unload();
}

bool frmHomePosition::UpdateOffset() {
  Status.Raise("Home Offset Position Updating");
  const std::string text = ui().txtOffset.Text();
  lngOffset_ = ToInt32(RoundHalfEven(CountsOf(text)));
  const ResultCode result = gMainForm->Helix7()->SetHomeOffset(lngOffset_);
  if (result != kSuccess) {
    DisplayError(result, "Error setting home offset position!");
    return false;
  }
  homing_.UploadHomingOffset();
  homing_.SetHomingOffset(text);
  Status.Raise("Home Offset Position Update Complete");
  return true;
}

void frmHomePosition::cmdAbsReset_Click() {
  if (!AskGraveYesNo("Caution!  This action will clear the absolute encoder position!\r"
                     "Do you wish to proceed?")) {
    return;
  }
  const BusyPointer busy;
  clsHX7Helix7& helix = *gMainForm->Helix7();
  ResultCode result = helix.ResetAbsoluteEncoder();
  if (result == kSuccess) result = helix.ResetHardware();
  if (result == kSuccess) {
    ShowInformation("Successful encoder reset!");
  } else {
    DisplayError(result, kCannotReset);
  }
}

}  // namespace velmoor
