// Numbers and their texts. Nothing here looks at the locale: the decimal point is ".", always.
//
// Overflow, bad text and non-finite values are errors (NumberError), never a wrapped or silent
// value.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace velmoor {

class NumberError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The same number in a narrower type. Throws NumberError("Overflow") when it does not fit.
template <std::integral To, std::integral From>
[[nodiscard]] constexpr To Narrow(From value) {
  if (!std::in_range<To>(value)) throw NumberError("Overflow");
  return static_cast<To>(value);
}

// ---- rounding

// To the nearest whole number, ties to even. Throws on NaN and infinity.
[[nodiscard]] double RoundHalfEven(double value);
// The same to `places` decimals, 0 to 22; a value too large to have such decimals stays as it is.
[[nodiscard]] double RoundToPlaces(double value, int places);
// Rounded half to even and fitted into the type. Throws on overflow, NaN and infinity.
[[nodiscard]] std::int32_t ToInt32(double value);
[[nodiscard]] std::int16_t ToInt16(double value);

// ---- text to number

// A decimal floating-point text: sign, digits with at most one point, exponent; blanks around it
// are allowed, separators, hexadecimal, "inf" and "nan" are not. Nothing for any other text.
[[nodiscard]] std::optional<double> ParseFloat(std::string_view text);
// A whole number: sign and digits, blanks around it allowed; nothing when it exceeds 64 bits.
[[nodiscard]] std::optional<std::int64_t> ParseWhole(std::string_view text);
// One or more hexadecimal digits of either case, no prefix; nothing when it exceeds 32 bits.
[[nodiscard]] std::optional<std::uint32_t> ParseHex(std::string_view text);
// A decimal text as a 32-bit number, rounded half to even. Throws on overflow and on other texts,
// the empty one included.
[[nodiscard]] std::int32_t Int32FromText(std::string_view text);
// The same, with 0 for an empty text: how cells are read.
[[nodiscard]] std::int32_t Int32FromCell(std::string_view text);

// ---- number to text

// Up to 15 significant digits, no exponent, no trailing zeros behind the point.
[[nodiscard]] std::string NumberText(double value);
// The shortest text that reads back as the same 32-bit float, no exponent.
[[nodiscard]] std::string NumberText(float value);
template <std::integral Whole>
[[nodiscard]] std::string NumberText(Whole value) {
  return std::to_string(value);
}
// Fixed notation with `places` decimals (0 to 22), ties away from zero in decimal; never "-0.00".
[[nodiscard]] std::string FixedText(double value, int places);
// The number in `text` in that form, rounded as decimal digits without a detour over binary. Throws
// NumberError when the text is no number.
[[nodiscard]] std::string FixedText(std::string_view text, int places);
// Upper-case hexadecimal, padded on the left with "0" to `digits`.
[[nodiscard]] std::string HexText(std::uint32_t value, int digits = 1);

// ---- texts

[[nodiscard]] std::string_view Trim(std::string_view text);
[[nodiscard]] std::string Left(std::string_view text, std::size_t count);
[[nodiscard]] std::string Right(std::string_view text, std::size_t count);
// `count` characters from the place `first`, counted from 1; shorter or empty where the text ends.
[[nodiscard]] std::string Mid(std::string_view text, std::size_t first, std::size_t count);
[[nodiscard]] std::string LowerCase(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);
// 10 to the power `exponent`.
[[nodiscard]] double PowerOfTen(int exponent);

}  // namespace velmoor
