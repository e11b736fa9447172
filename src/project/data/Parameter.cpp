#include "project/data/Parameter.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "project/data/ComboListText.h"
#include "project/data/NibbleDefinitions.h"
#include "project/data/UnitConversion.h"

namespace velmoor {
namespace {

constexpr std::size_t kHalf = 8;

template <std::size_t Count>
bool IsOneOf(const std::array<std::string_view, Count>& names, std::string_view strPn) {
  return std::find(names.begin(), names.end(), strPn) != names.end();
}

MeantValue Meant(std::string controller, const std::string& text) {
  return {true, false, std::move(controller), text};
}

MeantValue CountsMeant(const Parameter& parameter, const std::string& text, const Units& units) {
  const LimitedCounts counts =
      UnitsToLimitedCounts(text, units.Factor(*parameter.unit), units.resolution);
  if (!counts.valid) return {};
  const ValueLimits limits = LimitsOf(parameter);
  const std::int32_t within = std::clamp(counts.counts, limits.low, limits.high);
  const bool limited = counts.clamped || within != counts.counts;
  return {true, limited, NumberText(within), limited ? units.Shown(within, *parameter.unit) : text};
}

std::string EightDigits(const std::string& raw) {
  std::string digits = PadToDigits(Right(Trim(raw), kHalf), kHalf);
  if (digits.find_first_not_of("0123456789") != std::string::npos) {
    throw NumberError("Type mismatch: '" + raw + "' has no eight digits");
  }
  return digits;
}

}  // namespace

std::string ComparedForm(std::string_view strPn, std::string controller) {
  if (strPn == "Pn000" && controller.size() == 4) controller[1] = 'x';
  return controller;
}

bool IsNeverSent(std::string_view strPn) {
  static constexpr std::array<std::string_view, 10> kNeverSent{
      "Pn207", "Pn50A", "Pn50B", "Pn50C", "Pn50D", "Pn50E", "Pn50F", "Pn510", "Pn511", "Pn512"};
  return IsOneOf(kNeverSent, strPn);
}

bool NeedsNewOptionVersion(std::string_view strPn) {
  return strPn == "Pn833" || strPn == "Pn834";
}

bool IsMechSystemPn(std::string_view strPn) {
  return strPn >= "Pn829" && strPn <= "Pn830";
}

ValueLimits LimitsOf(const Parameter& parameter) {
  return {Int32FromCell(parameter.definition.Min), Int32FromCell(parameter.definition.Max)};
}

std::string ShownText(const Parameter& parameter, const std::string& controller,
                      const Units& units) {
  switch (parameter.form) {
    case ValueForm::list:
      return ComboListItem(parameter.list, Int32FromText(controller));
    case ValueForm::units:
      return units.Shown(Int32FromText(controller), *parameter.unit);
    default:
      return controller;
  }
}

MeantValue ValueMeant(const Parameter& parameter, const std::string& text, const Units& units) {
  switch (parameter.form) {
    case ValueForm::list: {
      const std::int32_t index = ComboListIndex(parameter.list, text);
      if (ComboListItem(parameter.list, index) != text) return {};
      return Meant(NumberText(index), text);
    }
    case ValueForm::units:
      return CountsMeant(parameter, text, units);
    case ValueForm::number:
      if (!ParseWhole(text)) return {};
      return Meant(NumberText(*ParseWhole(text)), text);
    default:
      return Meant(text, text);
  }
}

std::string PlainController(const Parameter& parameter, const std::string& raw) {
  switch (parameter.form) {
    case ValueForm::digits:
      return DigitsOfAnswer(std::string(Trim(raw)));
    case ValueForm::halves:
      return EightDigits(raw);
    default:
      return NumberText(Int32FromText(raw));
  }
}

}  // namespace velmoor
