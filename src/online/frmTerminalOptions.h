// Font and colours of the terminal.
#pragma once

#include <string>

#include "online/OnlineWindow.h"
#include "online/TerminalAppearance.h"

namespace velmoor {

class frmTerminalOptions final : public OnlineWindow {
 public:
  explicit frmTerminalOptions(const TerminalAppearance& appearance)
      : OnlineWindow("frmTerminalOptions"), appearance_(appearance) {}

  // The window was left by OK.
  [[nodiscard]] bool Accepted() const { return accepted_; }
  [[nodiscard]] const TerminalAppearance& Appearance() const { return appearance_; }

 protected:
  void FormLoad() override;

 private:
  void cmdFont_Click();
  void ChooseColor(const char* title, std::string TerminalAppearance::*color);
  void ShowSample();

  TerminalAppearance appearance_;
  bool accepted_ = false;
};

}  // namespace velmoor
