#include "simulator/memory/TableForms.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

using Normal = std::optional<std::string>;

constexpr int kFirmwareWithNewEvents = 3;
constexpr int kLastRow = 127;

bool IsDigits(std::string_view text, std::size_t most) {
  return !text.empty() && text.size() <= most &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

long long NumberOf(std::string_view digits) {
  long long value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

Normal Unsigned(std::string_view text, std::size_t digits) {
  if (!IsDigits(text, digits)) return std::nullopt;
  return PaddedNumber(NumberOf(text), digits);
}

Normal Signed(std::string_view text) {
  const bool hasSign = !text.empty() && (text.front() == '-' || text.front() == '+');
  const std::string_view digits = hasSign ? text.substr(1) : text;
  if (!IsDigits(digits, 8)) return std::nullopt;
  const long long value = NumberOf(digits);
  return PaddedNumber(text.front() == '-' ? -value : value, 8);
}

Normal Position(std::string_view text, int /*firmware*/) {
  if (text == "+INFINITE" || text == "-INFINITE" || text == "STOP" || text == "-") {
    return std::string(text);
  }
  if (text.size() < 3 || (text[0] != 'I' && text[0] != 'A') || (text[1] != '+' && text[1] != '-')) {
    return std::nullopt;
  }
  const Normal distance = Unsigned(text.substr(2), 8);
  return distance ? Normal(std::string(text.substr(0, 2)) + *distance) : std::nullopt;
}

Normal Speed(std::string_view text, int /*firmware*/) {
  return Unsigned(text, 8);
}

Normal RegistrationDistance(std::string_view text, int /*firmware*/) {
  return text == "-" ? Normal("-") : Signed(text);
}

Normal Outputs(std::string_view text, int /*firmware*/) {
  const bool fits = text.size() == 5 && text.find_first_not_of("AN:Z") == std::string_view::npos;
  return fits ? Normal(text) : std::nullopt;
}

bool IsEventSource(std::string_view text, int firmware) {
  if (text.empty() || text == "I" || text == "N" || text == "D" || text == ":") return true;
  if (text.size() != 4 || text.substr(0, 3) != "SEL") return false;
  const char last = firmware >= kFirmwareWithNewEvents ? '6' : '4';
  return text[3] >= '0' && text[3] <= last;
}

Normal EventText(std::string_view text, int firmware) {
  const std::size_t time = text.find('T');
  if (!IsEventSource(text.substr(0, time), firmware)) return std::nullopt;
  if (time == std::string_view::npos) return std::string(text);
  const Normal milliseconds = Unsigned(text.substr(time + 1), 5);
  if (!milliseconds) return std::nullopt;
  return std::string(text.substr(0, time + 1)) + *milliseconds;
}

Normal Loop(std::string_view text, int /*firmware*/) {
  const Normal count = Unsigned(text, 5);
  return count && *count != "00000" ? count : std::nullopt;
}

Normal Next(std::string_view text, int /*firmware*/) {
  if (text == "END") return std::string(text);
  return IsDigits(text, 3) && NumberOf(text) <= kLastRow ? Unsigned(text, 3) : std::nullopt;
}

using Form = Normal (*)(std::string_view, int);
constexpr std::array<Form, 8> kIndexForms{
    Position, Speed, RegistrationDistance, Speed, Outputs, EventText, Loop, Next};

}  // namespace

std::int64_t TableNumber(std::string_view text) {
  return ParseWhole(text).value_or(0);
}

std::string PaddedNumber(long long value, std::size_t digits) {
  std::string text = std::to_string(value < 0 ? -value : value);
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return value < 0 ? "-" + text : text;
}

Normal NormalIndexField(std::size_t field, std::string_view text, int firmware) {
  return text.empty() ? Normal("") : kIndexForms.at(field)(text, firmware);
}
Normal NormalZoneLimit(std::string_view text) {
  return text.empty() ? Normal("") : Signed(text);
}
Normal NormalJogSpeed(std::string_view text) {
  return text.empty() ? Normal("") : Signed(text);
}

}  // namespace velmoor
