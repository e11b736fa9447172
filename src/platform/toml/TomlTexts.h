// Texts of keys and values, read by the library for that form.
#pragma once

#include "platform/KeyedText.h"

namespace velmoor::toml_texts {

class TomlTexts final : public KeyedTexts {
 public:
  [[nodiscard]] KeyedNode Read(std::string_view text) const override;
};

}  // namespace velmoor::toml_texts
