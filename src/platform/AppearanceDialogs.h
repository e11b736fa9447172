// Port: the dialogs in which the user picks a font of fixed width or a colour.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmoor {

struct FontChoice {
  std::string name;
  int points = 0;
};

class AppearanceDialogs {
 public:
  virtual ~AppearanceDialogs() = default;
  // Nothing after Cancel.
  virtual std::optional<FontChoice> ChooseFont(const FontChoice& present) = 0;
  // 0xRRGGBB.
  virtual std::optional<std::uint32_t> ChooseColor(const std::string& title,
                                                   std::uint32_t present) = 0;
};

}  // namespace velmoor
