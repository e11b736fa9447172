// Message boxes of the desktop.
#pragma once

#include "platform/MessageBoxes.h"

namespace velmoor::qt {

class QtMessageBoxes final : public MessageBoxes {
 public:
  BoxAnswer Show(BoxKind kind, BoxButtons buttons, const std::string& text,
                 const std::string& title, BoxTick* tick) override;
};

}  // namespace velmoor::qt
