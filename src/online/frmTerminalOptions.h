// Font and colours of the terminal.
#pragma once

#include <string>

#include "layouts/frmTerminalOptions.h"
#include "online/TerminalAppearance.h"
#include "windows/Dialog.h"

namespace velmoor {

class frmTerminalOptions final : public WindowOf<layouts::frmTerminalOptions, Dialog> {
 public:
  explicit frmTerminalOptions(const TerminalAppearance& appearance) : appearance_(appearance) {}

  [[nodiscard]] const TerminalAppearance& Appearance() const { return appearance_; }

 protected:
  void FormLoad() override;

 private:
  void cmdFont_Click();
  void ChooseColor(const char* title, std::string TerminalAppearance::*color);
  void ShowSample();

  TerminalAppearance appearance_;
};

}  // namespace velmoor
