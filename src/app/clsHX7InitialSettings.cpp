#include "app/clsHX7InitialSettings.h"

#include "platform/World.h"

namespace velmoor {

void frmInitialSettings::Show(const std::string& sAxis, std::int32_t lBaud, std::int16_t iCOM) {
  form_ = world().forms->Load("frmInitialSettings");
  form_->label("lblAxis").SetText(sAxis);
  form_->label("lblBaudRate").SetText(std::to_string(lBaud));
  form_->label("lblCOM").SetText(std::to_string(iCOM + 1));
  form_->Show(FormMode::splash);
}

void clsHX7InitialSettings::Show_Settings(const std::string& sAxis, std::int32_t lBaud,
                                          std::int16_t iCOM) {
  frm_ = std::make_unique<frmInitialSettings>();
  frm_->Show(sAxis, lBaud, iCOM);
}

}  // namespace velmoor
