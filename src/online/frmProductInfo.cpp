#include "online/frmProductInfo.h"

#include <array>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "session/Session.h"

namespace velmoor {

void frmProductInfo::FormLoad() {
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  if (!gMainForm->IsOnline()) return;
  RetrieveInfo();
  DisplayInfo();
}

void frmProductInfo::RetrieveInfo() {
  std::string strError;
  const auto add = [&strError](const char* what, ResultCode result) {
    if (result == kSuccess) return;
    const std::string cause = CauseOf(gMainForm->Helix7()->LatestFailure(), *gMainForm->Alarm());
    strError +=
        (strError.empty() ? "" : "\r\r") + std::string(what) + ResultText(result) + "\r" + cause;
  };
  add("Option Information Error: ", GetOptionInfo());
  add("Servo and Motor Information Error: ", GetServoAndMotorInfo());
  add("Encoder Information Error: ", GetEncoderInfo());
  if (!strError.empty()) ShowExclamation(strError);
}

ResultCode frmProductInfo::GetOptionInfo() {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  const ResultCode result = helix.GetOptionVersion(strOptionVer_);
  return result == kSuccess ? helix.GetOptionYSpec(strOptionYSpec_) : result;
}

ResultCode frmProductInfo::GetServoAndMotorInfo() {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  ResultCode result = helix.GetServoModel(strServoModel_);
  if (result == kSuccess) result = helix.GetServoVersion(strServoVer_);
  if (result == kSuccess) result = helix.GetServoYSpec(strServoYSpec_);
  if (result == kSuccess) result = helix.GetMotorModel(strMotorModel_);
  return result;
}

ResultCode frmProductInfo::GetEncoderInfo() {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  ResultCode result = helix.GetEncoderType(strEncoderModel_);
  if (result == kSuccess) result = helix.GetEncoderResolutionBits(strEncoderRes_);
  if (result == kSuccess) result = helix.GetEncoderVersion(strEncoderVer_);
  return result;
}

void frmProductInfo::DisplayInfo() {
  const std::array<const std::string*, 9> values{
      &strOptionVer_,  &strOptionYSpec_,  &strServoModel_, &strServoVer_,  &strServoYSpec_,
      &strMotorModel_, &strEncoderModel_, &strEncoderRes_, &strEncoderVer_};
  for (std::size_t i = 0; i < values.size(); ++i) {
    ui().lblValues_[i].SetText(*values[i]);
  }
}

}  // namespace velmoor
