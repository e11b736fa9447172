// A clipboard in memory.
#pragma once

#include "platform/Clipboard.h"

namespace velmoor::headless {

class HeadlessClipboard final : public Clipboard {
 public:
  void SetText(const std::string& next) override { text = next; }
  [[nodiscard]] std::string Text() const override { return text; }

  std::string text;
};

}  // namespace velmoor::headless
