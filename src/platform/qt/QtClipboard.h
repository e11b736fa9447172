// The desktop's clipboard.
#pragma once

#include "platform/Clipboard.h"

namespace velmoor::qt {

class QtClipboard final : public Clipboard {
 public:
  void SetText(const std::string& text) override;
  [[nodiscard]] std::string Text() const override;
};

}  // namespace velmoor::qt
