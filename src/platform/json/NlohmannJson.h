// Records as JSON, written by the library for that form.
#pragma once

#include "platform/JsonTexts.h"

namespace velmoor::json_texts {

class NlohmannJson final : public JsonTexts {
 public:
  [[nodiscard]] std::string Object(const std::vector<JsonField>& fields) const override;
};

}  // namespace velmoor::json_texts
