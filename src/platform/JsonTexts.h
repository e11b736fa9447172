// Port: records as JSON, for programs that read what this one prints.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

struct JsonField {
  enum class Kind : std::uint8_t {
    text,
    number,  // a number, null for an empty text, and what is no number as the text that it is
    flag     // true for "1"
  };

  std::string name;
  std::string text;
  Kind kind = Kind::text;
};

class JsonTexts {
 public:
  virtual ~JsonTexts() = default;
  // One object on one line, its fields in that order. Bytes that are no UTF-8 are written out
  // ("\x9b"); nothing else is changed.
  [[nodiscard]] virtual std::string Object(const std::vector<JsonField>& fields) const = 0;
};

}  // namespace velmoor
