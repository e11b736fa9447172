#include "link/ModelStrings.h"

#include <span>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

using CodeTable = std::span<const std::pair<std::string_view, std::string_view>>;

std::string LetterOf(CodeTable table, std::string_view code) {
  for (const auto& [known, letter] : table) {
    if (known == code) return std::string(letter);
  }
  return {};
}

constexpr std::pair<std::string_view, std::string_view> kMotorW[] = {
    {"00", "A"}, {"01", "P"}, {"02", "S"}, {"03", "G"}, {"06", "U"}};
constexpr std::pair<std::string_view, std::string_view> kMotorX[] = {
    {"00", "B"}, {"01", "A"}, {"02", "D"}};
constexpr std::pair<std::string_view, std::string_view> kMotorV[] = {
    {"0000", "A"}, {"000D", "A"}, {"0011", "C"}, {"0110", "1"}, {"0111", "2"}};

// How the two characters of a size come about.
enum class SizeForm {
  tens,      // "A" and a tenth
  hundreds,  // "0" and a hundredth, with a decimal point where it does not come out even
  leading,   // the first two characters
  hex        // "1" and the first two characters in hexadecimal
};

struct SizeCode {
  std::string_view size;
  SizeForm form;
  std::string_view servo;  // the amplifier's code where it is not the motor's
};

constexpr SizeCode kSizes[] = {{"30", SizeForm::tens, ""},        {"50", SizeForm::tens, ""},
                               {"100", SizeForm::hundreds, ""},   {"200", SizeForm::hundreds, ""},
                               {"400", SizeForm::hundreds, ""},   {"500", SizeForm::hundreds, ""},
                               {"750", SizeForm::hundreds, ""},   {"800", SizeForm::hundreds, ""},
                               {"850", SizeForm::hundreds, "10"}, {"900", SizeForm::hundreds, "10"},
                               {"1000", SizeForm::leading, ""},   {"1300", SizeForm::leading, "15"},
                               {"1500", SizeForm::leading, ""},   {"2000", SizeForm::leading, ""},
                               {"3000", SizeForm::leading, ""},   {"4400", SizeForm::leading, "50"},
                               {"5000", SizeForm::leading, ""},   {"5500", SizeForm::leading, "60"},
                               {"7500", SizeForm::leading, ""},   {"11000", SizeForm::hex, ""},
                               {"15000", SizeForm::hex, ""}};

const SizeCode* FindSize(std::string_view size) {
  for (const SizeCode& entry : kSizes) {
    if (entry.size == size) return &entry;
  }
  return nullptr;
}

std::string MotorCode(const SizeCode& entry) {
  const auto watts = static_cast<double>(ParseWhole(entry.size).value_or(0));
  switch (entry.form) {
    case SizeForm::tens:
      return "A" + NumberText(watts / 10);
    case SizeForm::hundreds:
      return "0" + NumberText(watts / 100);
    case SizeForm::leading:
      return Left(entry.size, 2);
    case SizeForm::hex:
      break;
  }
  const std::int64_t leading = ParseWhole(entry.size.substr(0, 2)).value_or(0);
  return "1" + HexText(static_cast<std::uint32_t>(leading));
}

}  // namespace

std::string GetMotorW(std::string_view strMotorType) {
  return LetterOf(kMotorW, Right(strMotorType, 2));
}
std::string GetMotorX(std::string_view strMotorType) {
  return LetterOf(kMotorX, Mid(strMotorType, 5, 2));
}
std::string GetServoX(std::string_view strMotorType) {
  return LetterOf(kMotorX, Mid(strMotorType, 5, 2));
}
std::string GetMotorV(std::string_view strEncoderInfo) {
  return LetterOf(kMotorV, Right(strEncoderInfo, 4));
}

std::string GetMotorYY(std::string_view strSize) {
  const SizeCode* const entry = FindSize(strSize);
  return entry != nullptr ? MotorCode(*entry) : std::string();
}

std::string GetServoYY(std::string_view strSize) {
  const SizeCode* const entry = FindSize(strSize);
  if (entry == nullptr) return {};
  return entry->servo.empty() ? MotorCode(*entry) : std::string(entry->servo);
}

std::string GetServoTypeModelString(std::string_view strType) {
  return ParseFloat(strType) == 2.0 ? "VKLM-ccvE" : "UNKNOWN";
}

}  // namespace velmoor
