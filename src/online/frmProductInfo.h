// What the hardware says it is.
#pragma once

#include <string>

#include "link/ResultCode.h"
#include "online/OnlineWindow.h"

namespace velmoor {

class frmProductInfo final : public OnlineWindow {
 public:
  frmProductInfo() : OnlineWindow("frmProductInfo") {}

 protected:
  void FormLoad() override;

 private:
  void RetrieveInfo();
  ResultCode GetOptionInfo();
  ResultCode GetServoAndMotorInfo();
  ResultCode GetEncoderInfo();
  void DisplayInfo();

  std::string strOptionVer_, strOptionYSpec_;
  std::string strServoModel_, strServoVer_, strServoYSpec_, strMotorModel_;
  std::string strEncoderModel_, strEncoderRes_, strEncoderVer_;
};

}  // namespace velmoor
