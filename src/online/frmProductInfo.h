// What the hardware says it is.
#pragma once

#include <string>

#include "layouts/frmProductInfo.h"
#include "link/ResultCode.h"
#include "windows/Window.h"

namespace velmoor {

class frmProductInfo final : public WindowOf<layouts::frmProductInfo> {
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
