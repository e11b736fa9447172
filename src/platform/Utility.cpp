#include "platform/Utility.h"

#include <limits>
#include <numbers>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr const char* kNotNumeric = "Value must be numeric!";
constexpr const char* kNotWhole = "Value must be an integer!";

bool Check(bool accepted, const char* words, std::string& strError) {
  strError = accepted ? "" : words;
  return accepted;
}

template <typename Whole>
bool IsWholeWithin(std::string_view text, std::string& strError) {
  const auto number = ParseWhole(text);
  return Check(number && std::in_range<Whole>(*number), kNotWhole, strError);
}

}  // namespace

double GetCircleConstant() {
  return std::numbers::pi;
}

bool IsFloatText(std::string_view text, std::string& strError) {
  return Check(IsFloatText(text), kNotNumeric, strError);
}

bool IsFloatText(std::string_view text) {
  return ParseFloat(text).has_value();
}

bool IsPositiveFloatText(std::string_view text) {
  return ParseFloat(text).value_or(0) > 0;
}

bool IsWholeNumberText(std::string_view text, std::string& strError) {
  return Check(IsWholeNumberText(text), kNotWhole, strError);
}

bool IsWholeNumberText(std::string_view text) {
  text = Trim(text);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsLongText(std::string_view text, std::string& strError) {
  return IsWholeWithin<std::int32_t>(text, strError);
}

bool IsIntegerText(std::string_view text, std::string& strError) {
  return IsWholeWithin<std::int16_t>(text, strError);
}

bool IsHexText(std::string_view text) {
  return !text.empty() &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

std::string PadToDigits(std::string_view text, std::size_t digits) {
  return std::string(text.size() < digits ? digits - text.size() : 0, '0') + std::string(text);
}

std::uint32_t HexDigitValue(std::string_view text) {
  return ParseHex(text).value_or(0);
}

std::string RoundTextToDigits(std::string_view text, int digits) {
  return FixedText(text, digits);
}

std::string FormatToResolution(std::string_view text, int resolution) {
  return FixedText(text, resolution);
}

}  // namespace velmoor
