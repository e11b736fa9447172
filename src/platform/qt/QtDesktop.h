// What the program asks of the desktop beside windows: its text viewer, its fonts and colours.
#pragma once

#include "platform/AppearanceDialogs.h"
#include "platform/TextViewer.h"

namespace velmoor::qt {

class QtTextViewer final : public TextViewer {
 public:
  [[nodiscard]] bool IsAvailable() const override;
  bool Open(const std::string& path) override;
};

class QtAppearanceDialogs final : public AppearanceDialogs {
 public:
  std::optional<FontChoice> ChooseFont(const FontChoice& present) override;
  std::optional<std::uint32_t> ChooseColor(const std::string& title,
                                           std::uint32_t present) override;
};

}  // namespace velmoor::qt
