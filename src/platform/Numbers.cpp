#include "platform/Numbers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>

namespace velmoor {
namespace {

constexpr int kMostPlaces = 22;  // 10^22 is the largest power of ten that a double holds exactly

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// A decimal number as its digits: value = 0.d1d2d3... times ten to the power `point`.
struct Decimal {
  bool negative = false;
  std::string digits;  // without leading zeros
  int point = 0;       // place of the decimal point behind that many digits

  [[nodiscard]] bool IsZero() const { return digits.empty(); }
};

// `text` is trimmed and has passed IsFloatForm.
Decimal DecimalFromText(std::string_view text) {
  Decimal result;
  std::size_t i = 0;
  if (text[i] == '+' || text[i] == '-') result.negative = text[i++] == '-';
  bool behindPoint = false;
  for (; i < text.size() && (IsDigit(text[i]) || text[i] == '.'); ++i) {
    if (text[i] == '.') {
      behindPoint = true;
      continue;
    }
    if (result.digits.empty() && text[i] == '0') {
      if (behindPoint) --result.point;
      continue;
    }
    result.digits += text[i];
    if (!behindPoint) ++result.point;
  }
  if (i < text.size()) {
    int exponent = 0;
    const char* first = text.data() + i + 1;
    if (*first == '+') ++first;
    const auto [end, error] = std::from_chars(first, text.data() + text.size(), exponent);
    if (error != std::errc{} || std::abs(exponent) > 400) throw NumberError("Overflow");
    result.point += exponent;
  }
  while (!result.digits.empty() && result.digits.back() == '0') result.digits.pop_back();
  if (result.digits.empty()) result.point = 0;
  return result;
}

// Keeps `places` digits behind the point, ties away from zero.
void RoundDecimal(Decimal& number, int places) {
  const int keep = number.point + places;
  if (keep < 0) {
    number.digits.clear();
    return;
  }
  const auto kept = static_cast<std::size_t>(keep);
  if (kept >= number.digits.size()) return;
  const bool up = number.digits[kept] >= '5';
  number.digits.resize(kept);
  if (!up) return;
  std::size_t i = kept;
  while (i > 0 && number.digits[i - 1] == '9') number.digits[--i] = '0';
  if (i > 0) {
    ++number.digits[i - 1];
  } else {
    number.digits.insert(number.digits.begin(), '1');
    ++number.point;
  }
}

std::string PlainText(const Decimal& number, int places) {
  std::string whole, fraction;
  for (int i = 0; i < number.point; ++i) {
    const auto at = static_cast<std::size_t>(i);
    whole += at < number.digits.size() ? number.digits[at] : '0';
  }
  if (whole.empty()) whole = "0";
  for (int i = 0; i < places; ++i) {
    const int at = number.point + i;
    const bool inside = at >= 0 && static_cast<std::size_t>(at) < number.digits.size();
    fraction += inside ? number.digits[static_cast<std::size_t>(at)] : '0';
  }
  const bool zero = (whole + fraction).find_first_not_of('0') == std::string::npos;
  std::string text = number.negative && !zero ? "-" : "";
  text += whole;
  if (!fraction.empty()) text += "." + fraction;
  return text;
}

std::string PlainText(const Decimal& number) {
  return PlainText(number, std::max(0, static_cast<int>(number.digits.size()) - number.point));
}

bool IsFloatForm(std::string_view text) {
  std::size_t i = 0, digits = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  for (; i < text.size() && IsDigit(text[i]); ++i) ++digits;
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && IsDigit(text[i]); ++i) ++digits;
  }
  if (digits == 0) return false;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    const std::size_t first = i;
    while (i < text.size() && IsDigit(text[i])) ++i;
    if (i == first) return false;
  }
  return i == text.size();
}

// The power of ten of the first digit that counts, in a text that has passed IsFloatForm; one too
// large to be told is a large one of its sign.
std::int64_t DecimalExponent(std::string_view text) {
  constexpr std::int64_t kLarge = 1'000'000'000;
  const std::size_t mark = text.find_first_of("eE");
  const std::string_view digits = text.substr(0, mark);
  const std::size_t first = digits.find_first_of("123456789");
  if (first == std::string_view::npos) return -kLarge;
  const std::size_t point = std::min(digits.find('.'), digits.size());
  std::int64_t exponent = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  if (first < point) --exponent;
  if (mark == std::string_view::npos) return exponent;
  const auto told = ParseWhole(text.substr(mark + 1));
  if (told && std::abs(*told) < kLarge) return exponent + *told;
  return text[mark + 1] == '-' ? -kLarge : kLarge;
}

template <typename Float>
std::string ScientificText(Float value, int significant) {
  char buffer[64];
  const auto result =
      significant > 0
          ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                          significant - 1)
          : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
  return {buffer, result.ptr};
}

void RequireFinite(double value) {
  if (!std::isfinite(value)) throw NumberError("Overflow");
}

void RequirePlaces(int places) {
  if (places < 0 || places > kMostPlaces) throw NumberError("Invalid number of decimal places");
}

}  // namespace

double RoundHalfEven(double value) {
  RequireFinite(value);
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

double RoundToPlaces(double value, int places) {
  RequirePlaces(places);
  RequireFinite(value);
  const double scale = PowerOfTen(places);
  const double scaled = value * scale;
  if (!(std::fabs(scaled) < 9007199254740992.0)) return value;  // 2^53: no decimals left to round
  return RoundHalfEven(scaled) / scale;
}

std::int32_t ToInt32(double value) {
  const double whole = RoundHalfEven(value);
  if (whole < -2147483648.0 || whole > 2147483647.0) throw NumberError("Overflow");
  return static_cast<std::int32_t>(whole);
}

std::int16_t ToInt16(double value) {
  return Narrow<std::int16_t>(ToInt32(value));
}

std::optional<double> ParseFloat(std::string_view text) {
  text = Trim(text);
  if (!IsFloatForm(text)) return std::nullopt;
  if (text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    // Too small reads as 0, too large is no number.
    if (DecimalExponent(text) < 0) return 0.0;
    return std::nullopt;
  }
  if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<std::int64_t> ParseWhole(std::string_view text) {
  text = Trim(text);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (text.empty() || !IsDigit(text.front())) return std::nullopt;
  }
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<std::uint32_t> ParseHex(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (text.empty() || error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::int32_t Int32FromText(std::string_view text) {
  if (const auto whole = ParseWhole(text)) return Narrow<std::int32_t>(*whole);
  const auto number = ParseFloat(text);
  if (!number) throw NumberError("Type mismatch: '" + std::string(text) + "' is not a number");
  return ToInt32(*number);
}

std::int32_t Int32FromCell(std::string_view text) {
  return Trim(text).empty() ? 0 : Int32FromText(text);
}

std::string NumberText(double value) {
  RequireFinite(value);
  return PlainText(DecimalFromText(ScientificText(value, 15)));
}

std::string NumberText(float value) {
  RequireFinite(static_cast<double>(value));
  return PlainText(DecimalFromText(ScientificText(value, 0)));
}

std::string FixedText(double value, int places) {
  RequireFinite(value);
  return FixedText(std::string_view(ScientificText(value, 15)), places);
}

std::string FixedText(std::string_view text, int places) {
  RequirePlaces(places);
  text = Trim(text);
  if (!IsFloatForm(text)) {
    throw NumberError("Type mismatch: '" + std::string(text) + "' is not a number");
  }
  Decimal number = DecimalFromText(text);
  RoundDecimal(number, places);
  return PlainText(number, places);
}

std::string HexText(std::uint32_t value, int digits) {
  char buffer[16];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, 16);
  const std::string text = UpperCase({buffer, result.ptr});
  const auto wanted = static_cast<std::size_t>(std::max(digits, 0));
  return text.size() < wanted ? std::string(wanted - text.size(), '0') + text : text;
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string Left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, count));
}

std::string Right(std::string_view text, std::size_t count) {
  return std::string(text.size() <= count ? text : text.substr(text.size() - count));
}

std::string Mid(std::string_view text, std::size_t first, std::size_t count) {
  if (first == 0 || first > text.size()) return {};
  return std::string(text.substr(first - 1, count));
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return result;
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return result;
}

double PowerOfTen(int exponent) {
  double result = 1;
  for (int i = 0; i < std::abs(exponent); ++i) result *= 10;
  return exponent < 0 ? 1 / result : result;
}

}  // namespace velmoor
