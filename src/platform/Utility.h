// The small text library that the tools and windows share: numeric checks, digit texts, rounding.
//
// Each check clears `strError` when it accepts, and otherwise fills it with words of its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

// The number pi; turns a diameter into the travel of one turn.
[[nodiscard]] double GetCircleConstant();

// A decimal floating-point number: "Value must be numeric!" otherwise.
[[nodiscard]] bool IsFloatText(std::string_view text, std::string& strError);
[[nodiscard]] bool IsFloatText(std::string_view text);
// A decimal floating-point number above 0.
[[nodiscard]] bool IsPositiveFloatText(std::string_view text);
// A whole number: "Value must be an integer!" otherwise.
[[nodiscard]] bool IsWholeNumberText(std::string_view text, std::string& strError);
[[nodiscard]] bool IsWholeNumberText(std::string_view text);
// A whole number within 32 and 16 bits.
[[nodiscard]] bool IsLongText(std::string_view text, std::string& strError);
[[nodiscard]] bool IsIntegerText(std::string_view text, std::string& strError);
// One or more hexadecimal digits and nothing else.
[[nodiscard]] bool IsHexText(std::string_view text);

// Fills on the left with "0" to `digits` characters; a longer text stays as it is.
[[nodiscard]] std::string PadToDigits(std::string_view text, std::size_t digits);
// The number that one or more hexadecimal digits stand for; 0 for any other text.
[[nodiscard]] std::uint32_t HexDigitValue(std::string_view text);
// The number in the text with `digits` decimals; a text that is no number is an error
// (NumberError).
[[nodiscard]] std::string RoundTextToDigits(std::string_view text, int digits);
// The same, under the name that the tables use.
[[nodiscard]] std::string FormatToResolution(std::string_view text, int resolution);

}  // namespace velmoor
