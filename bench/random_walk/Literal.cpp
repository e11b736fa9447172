#include "random_walk/Literal.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace velmoor::walk {

Kind KindOf(const std::string& pn) {
  if (pn == "Pn81B" || pn == "Pn81C" || pn == "Pn81D" || pn == "Pn821" || pn == "Pn822" ||
      pn == "Pn828") {
    return Kind::distance;
  }
  if (pn == "Pn81E" || pn == "Pn825" || pn == "Pn826" || pn == "Pn827") return Kind::speed;
  if (pn == "Pn81F" || pn == "Pn820") return Kind::acceleration;
  return Kind::plain;
}

long double FactorFor(Kind kind, int resolution, const std::string& time) {
  const long double perTime = time == "minutes" ? 1 : 60;
  const long double distance = powl(10, resolution);
  switch (kind) {
    case Kind::distance:
      return distance;
    case Kind::speed:
      return distance * perTime / 1000;
    case Kind::acceleration:
      return distance * perTime * perTime / 60000000;
    case Kind::plain:
      break;
  }
  return 1;
}

std::optional<long double> Number(const std::string& text) {
  const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const std::string digits = text.substr(sign);
  const bool decimal = digits.find_first_not_of("0123456789.") == std::string::npos &&
                       digits.find_first_of("0123456789") != std::string::npos &&
                       digits.find('.') == digits.rfind('.');
  if (!decimal) return std::nullopt;
  return std::strtold(text.c_str(), nullptr);
}

std::string Rounded(const std::string& text, int places) {
  const bool negative = !text.empty() && text[0] == '-';
  std::string digits = text.substr(!text.empty() && (negative || text[0] == '+') ? 1 : 0);
  if (digits.find('.') == std::string::npos) digits += '.';
  digits.append(static_cast<std::size_t>(places) + 1, '0');
  const std::size_t end = digits.find('.') + 1 + static_cast<std::size_t>(places);
  bool up = digits[end] >= '5';
  digits = "0" + digits.substr(0, end);
  for (std::size_t i = digits.size(); up && i-- > 0;) {
    if (digits[i] == '.') continue;
    up = digits[i] == '9';
    digits[i] = up ? '0' : static_cast<char>(digits[i] + 1);
  }
  if (places == 0) digits.pop_back();
  while (digits.size() > 1 && digits[0] == '0' && digits[1] != '.') digits.erase(0, 1);
  const bool nothing = digits.find_first_not_of("0.") == std::string::npos;
  return (negative && !nothing ? "-" : "") + digits;
}

std::string Fixed(long double value, int places) {
  char text[128];
  // Digits enough to round once more, as decimal digits.
  (void)std::snprintf(text, sizeof text, "%.*Lf", places + 9, value);
  return Rounded(text, places);
}

int PlacesOf(const std::string& text) {
  const std::size_t point = text.find('.');
  return point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

long double CountsOf(const std::string& text, long double factor) {
  return rintl(Number(text).value_or(0) * factor);
}

bool Means(const std::string& text, long double factor, const std::string& count) {
  const auto number = Number(text);
  const auto counts = Number(count);
  if (!number || !counts || count.find('.') != std::string::npos) return false;
  const long double exact = *number * factor;
  return fabsl(exact - *counts) <= 0.5L + fabsl(exact) * 1e-15L;
}

}  // namespace velmoor::walk
