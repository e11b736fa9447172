// Port: texts of keys and values that people write and version control compares, in the form TOML;
// and how such a text is written.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

struct KeyedEntry;

// A value of such a text, with its line.
struct KeyedNode {
  enum class Kind : std::uint8_t {
    text,
    whole,   // a whole number of up to 64 bits
    number,  // finite, with decimals
    list,
    table,
    other  // what no file of this program holds: a date, true, infinity
  };

  Kind kind = Kind::table;
  int line = 1;                       // from 1
  std::string text;                   // of a text; numbers in plain decimal form
  std::vector<KeyedNode> items{};     // of a list
  std::vector<KeyedEntry> entries{};  // of a table, in the order of the text

  // Null where a table has no such key.
  [[nodiscard]] const KeyedNode* Find(std::string_view key) const;
};

struct KeyedEntry {
  std::string key;
  KeyedNode value;
};

// A text that is none of that form, or names a key twice. what() is the reason alone.
class KeyedTextError : public std::runtime_error {
 public:
  KeyedTextError(int line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  [[nodiscard]] int Line() const { return line_; }

 private:
  int line_;
};

class KeyedTexts {
 public:
  virtual ~KeyedTexts() = default;
  // The table of the whole text. Throws KeyedTextError.
  [[nodiscard]] virtual KeyedNode Read(std::string_view text) const = 0;
};

// ---- writing

// In quotes, on one line. Bytes that are no UTF-8 are written out ("\x9b"): the form has none.
[[nodiscard]] std::string QuotedText(std::string_view text);
// With what is no UTF-8 written out.
[[nodiscard]] std::string InUtf8(std::string_view text);
// A number as it stands where the form takes it so, anything else in quotes: "12.500", "\"-\"".
[[nodiscard]] std::string NumberOrQuoted(std::string_view text);
// `text` behind "# ", on one line.
[[nodiscard]] std::string KeyedComment(std::string_view text);

}  // namespace velmoor
