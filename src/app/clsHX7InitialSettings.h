// The panel that shows the communications settings while the session is built.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Form.h"

namespace velmoor {

class frmInitialSettings {
 public:
  // `iCOM` counts from 0; the panel shows the port's own number.
  void Show(const std::string& sAxis, std::int32_t lBaud, std::int16_t iCOM);

 private:
  std::unique_ptr<Form> form_;
};

class clsHX7InitialSettings {
 public:
  void Show_Settings(const std::string& sAxis, std::int32_t lBaud, std::int16_t iCOM);
  void Unload_Settings() { frm_.reset(); }

 private:
  std::unique_ptr<frmInitialSettings> frm_;
};

}  // namespace velmoor
