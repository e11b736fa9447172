#include "app/clsHX7InitialSettings.h"

namespace velmoor {

void frmInitialSettings::FormLoad() {
  ui().lblAxis.SetText(sAxis_);
  ui().lblBaudRate.SetText(std::to_string(lBaud_));
  ui().lblCOM.SetText(std::to_string(iCOM_ + 1));
}

void clsHX7InitialSettings::Show_Settings(const std::string& sAxis, std::int32_t lBaud,
                                          std::int16_t iCOM) {
  frm_ = std::make_unique<frmInitialSettings>(sAxis, lBaud, iCOM);
  (void)frm_->Show(FormMode::splash);
}

}  // namespace velmoor
