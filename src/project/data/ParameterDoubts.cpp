// Which values of the store are in doubt, and what settles them.

#include <algorithm>

#include "platform/Numbers.h"
#include "project/data/NibbleDefinitions.h"
#include "project/data/ParameterStore.h"

namespace velmoor {
namespace {

bool IsWithin(const Parameter& parameter) {
  const ParameterDefinition& definition = parameter.definition;
  if (definition.Min.empty() || definition.Max.empty()) return true;
  const ValueLimits limits = LimitsOf(parameter);
  const auto value = ParseWhole(parameter.controller);
  return value && *value >= limits.low && *value <= limits.high;
}

bool IsItem(const Parameter& parameter) {
  const auto items = std::ranges::count(parameter.list, '|') + 1;
  const auto index = ParseWhole(parameter.controller);
  return index && *index >= 0 && *index < items;
}

// Digit by digit: each counts for itself.
bool AreDigits(const Parameter& parameter) {
  if (parameter.nibble == nullptr) return true;
  const std::string most = GetMaximumHex(*parameter.nibble);
  const std::string digits = UpperCase(parameter.controller);
  return digits.size() == most.size() && std::ranges::equal(digits, most, std::less_equal<>());
}

bool IsAsTyped(const Parameter& parameter) {
  switch (parameter.form) {
    case ValueForm::list:
      return IsItem(parameter);
    case ValueForm::digits:
      return AreDigits(parameter);
    case ValueForm::number:
    case ValueForm::units:
      return IsWithin(parameter);
    case ValueForm::halves:
      break;
  }
  return true;
}

// The text of the file says something else than what would go out.
bool Contradicts(const Parameter& parameter, const Units& units) {
  const MeantValue meant = ValueMeant(parameter, parameter.text, units);
  if (meant.valid && !meant.limited && meant.controller == parameter.controller) return false;
  // Rounded to the digits that are shown.
  if (parameter.text == ShownText(parameter, parameter.controller, units)) return false;
  // An item of another language, or of an older catalogue, says nothing.
  if (parameter.form == ValueForm::list) return meant.valid;
  if (parameter.form != ValueForm::digits && parameter.form != ValueForm::halves) return true;
  try {
    return PlainController(parameter, parameter.text) != parameter.controller;
  } catch (const NumberError&) {
    return true;
  }
}

// The limits as the user reads them, with their unit; empty where the form has none.
std::string LimitsInWords(const Parameter& parameter, const Units& units) {
  if (parameter.form == ValueForm::digits && parameter.nibble != nullptr) {
    return "0000 to " + GetMaximumHex(*parameter.nibble);
  }
  const bool counts = parameter.form == ValueForm::number || parameter.form == ValueForm::units;
  const ParameterDefinition& definition = parameter.definition;
  if (!counts || definition.Min.empty() || definition.Max.empty()) return {};
  const ValueLimits limits = LimitsOf(parameter);
  const std::string unit = parameter.unit ? units.Word(*parameter.unit) : definition.Unit;
  return ShownText(parameter, NumberText(limits.low), units) + " to " +
         ShownText(parameter, NumberText(limits.high), units) + (unit.empty() ? "" : " " + unit);
}

Tool SenderOf(const Parameter& parameter) {
  return IsMechSystemPn(parameter.Pn()) ? Tool::mechanicalSystem : Tool::editor;
}

}  // namespace

// Before the text gives way to the value.
void ParameterStore::JudgeText(const Parameter& parameter) {
  if (IsNeverSent(parameter.Pn()) || !parameter.recorded) return;
  if (!Contradicts(parameter, units_)) return;
  Doubt& doubt = doubts_[parameter.Pn()];
  doubt = {.kind = Doubt::Kind::differs,
           .part = SenderOf(parameter),
           .place = parameter.Pn(),
           .field = parameter.definition.parameter_name,
           .limits = LimitsInWords(parameter, units_),
           .shown = parameter.text,
           .sent = parameter.controller,
           .sentShown = ShownText(parameter, parameter.controller, units_)};
  const MeantValue meant = ValueMeant(parameter, parameter.text, units_);
  Parameter as = parameter;
  as.controller = meant.controller;
  doubt.shownMeans = meant.valid && !meant.limited && IsAsTyped(as);
}

void ParameterStore::JudgeValue(const Parameter& parameter) {
  const auto known = doubts_.find(parameter.Pn());
  // A change of the machine answers for nothing.
  if (known != doubts_.end() && known->second.kind == Doubt::Kind::differs) {
    known->second.sent = parameter.controller;
    known->second.sentShown = parameter.text;
    return;
  }
  doubts_.erase(parameter.Pn());
  if (IsNeverSent(parameter.Pn()) || !parameter.recorded || parameter.blank) return;
  if (IsAsTyped(parameter)) return;
  const bool counts = parameter.form == ValueForm::number || parameter.form == ValueForm::units;
  doubts_[parameter.Pn()] = {.kind = counts ? Doubt::Kind::outside : Doubt::Kind::unknown,
                             .part = SenderOf(parameter),
                             .place = parameter.Pn(),
                             .field = parameter.definition.parameter_name,
                             .limits = LimitsInWords(parameter, units_),
                             .shown = {},
                             .sent = parameter.controller,
                             .sentShown = parameter.text};
}

void ParameterStore::Settle(const std::string& strPn, Keep keep) {
  const auto found = doubts_.find(strPn);
  if (found == doubts_.end()) return;
  const Doubt doubt = found->second;
  const Parameter& parameter = Get(strPn);
  ParameterChanges changes;
  if (keep == Keep::shown && doubt.shownMeans) {
    const MeantValue meant = ValueMeant(parameter, doubt.shown, units_);
    changes[strPn] = {meant.controller, meant.text, MarkChange::set, doubt.part};
  } else {
    changes[strPn] = {parameter.controller, parameter.text};
  }
  Commit(changes);
  doubts_.erase(strPn);
}

}  // namespace velmoor
