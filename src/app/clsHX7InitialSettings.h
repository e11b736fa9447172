// The panel that shows the communications settings while the session is built.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "layouts/frmInitialSettings.h"
#include "windows/Window.h"

namespace velmoor {

class frmInitialSettings final : public WindowOf<layouts::frmInitialSettings> {
 public:
  // `iCOM` counts from 0; the panel shows the port's own number.
  frmInitialSettings(std::string sAxis, std::int32_t lBaud, std::int16_t iCOM)
      : sAxis_(std::move(sAxis)), lBaud_(lBaud), iCOM_(iCOM) {}

 protected:
  void FormLoad() override;

 private:
  std::string sAxis_;
  std::int32_t lBaud_;
  std::int16_t iCOM_;
};

class clsHX7InitialSettings {
 public:
  void Show_Settings(const std::string& sAxis, std::int32_t lBaud, std::int16_t iCOM);
  void Unload_Settings() { frm_.reset(); }

 private:
  std::unique_ptr<frmInitialSettings> frm_;
};

}  // namespace velmoor
