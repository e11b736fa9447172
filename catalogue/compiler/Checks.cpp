#include "compiler/Checks.h"

#include <algorithm>
#include <limits>
#include <set>

#include "platform/Numbers.h"

namespace velmoor::catalogue {
namespace {

constexpr std::size_t kLongestName = 60;
constexpr std::size_t kLongestHelp = 260;
// Values up to 13: a digit "E" before another digit would be read as a device error.
constexpr int kMostDigitValues = 14;
constexpr std::size_t kLeastAlarms = 60;

bool IsDecimalDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsUpperHex(std::string_view text) {
  return text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

template <typename Entry>
void CheckUnique(const std::vector<Entry>& entries, std::string Entry::*key,
                 const std::string& what, Problems& problems) {
  std::set<std::string> seen;
  for (const Entry& entry : entries) {
    if ((entry.*key).empty()) problems.Add(entry.place, "no " + what);
    if (!seen.insert(entry.*key).second) {
      problems.Add(entry.place, what + " \"" + entry.*key + "\" comes twice");
    }
  }
}

void CheckLimits(const Limits& limits, const Place& place, Problems& problems) {
  for (const std::int64_t number : {limits.min, limits.max, limits.initial}) {
    if (!std::in_range<std::int32_t>(number)) {
      problems.Add(place, NumberText(number) + " exceeds 32 bits");
    }
  }
  if (limits.min > limits.max) problems.Add(place, "the least value is above the greatest");
  if (limits.initial < limits.min || limits.initial > limits.max) {
    problems.Add(place, "the initial value is outside the limits");
  }
}

void CheckMotors(const Parameter& parameter, Problems& problems) {
  std::set<std::int64_t> sizes;
  for (const MotorLimits& motor : parameter.motors) {
    CheckLimits(motor.limits, motor.place, problems);
    if (motor.watts <= 0) problems.Add(motor.place, "no motor has such a size");
    if (!sizes.insert(motor.watts).second) problems.Add(motor.place, "the size comes twice");
    if (parameter.kind != Kind::decimal) {
      problems.Add(motor.place, "only decimal parameters depend on the motor");
    }
  }
}

void CheckListChoice(const Catalogue& catalogue, const Parameter& parameter, Problems& problems) {
  const List* const list = FindList(catalogue, parameter.choice);
  if (list == nullptr) {
    problems.Add(parameter.place, "unknown list \"" + parameter.choice + "\"");
  } else if (parameter.limits.initial < 0 ||
             std::cmp_greater_equal(parameter.limits.initial, list->items.size())) {
    problems.Add(parameter.place, "the initial item is not in the list");
  }
}

void CheckDigitsChoice(const Catalogue& catalogue, const Parameter& parameter, Problems& problems) {
  const Digits* const digits = FindDigits(catalogue, parameter.choice);
  const std::string& text = parameter.digits;
  if (digits == nullptr) {
    problems.Add(parameter.place, "unknown digits \"" + parameter.choice + "\"");
    return;
  }
  if (text.size() != 4 || !IsUpperHex(text)) {
    problems.Add(parameter.place, "the initial value is not four hexadecimal digits");
    return;
  }
  for (std::size_t digit = 0; digit < 4; ++digit) {
    const auto value = static_cast<int>(*ParseHex(text.substr(3 - digit, 1)));
    if (value >= std::max(digits->counts[digit], 1)) {
      problems.Add(parameter.place,
                   "digit " + NumberText(digit) + " may not be " + text.substr(3 - digit, 1));
    }
  }
  if (LooksLikeError(text)) {
    problems.Add(parameter.place, "the initial value would be read as a device error");
  }
}

void CheckKind(const Catalogue& catalogue, const Parameter& parameter, Problems& problems) {
  if (!parameter.kind) {
    problems.Add(parameter.place, "no kind");
    return;
  }
  switch (*parameter.kind) {
    case Kind::list:
      CheckListChoice(catalogue, parameter, problems);
      break;
    case Kind::digits:
      CheckDigitsChoice(catalogue, parameter, problems);
      break;
    case Kind::decimal:
    case Kind::halves:
      CheckLimits(parameter.limits, parameter.place, problems);
      break;
  }
}

void CheckWords(const Parameter& parameter, Problems& problems) {
  const std::string& pn = parameter.pn;
  if (pn.size() != 5 || !pn.starts_with("Pn") || !IsUpperHex(pn.substr(2))) {
    problems.Add(parameter.place, "\"" + pn + "\" is no name of a parameter");
  }
  if (parameter.name.size() > kLongestName) problems.Add(parameter.place, "the name is too long");
  if (parameter.category.empty()) problems.Add(parameter.place, "no category");
  if (parameter.group.empty()) problems.Add(parameter.place, "no group");
  if (!parameter.help.ends_with('.') || parameter.help.size() > kLongestHelp) {
    problems.Add(parameter.place, "the help is no sentence or two");
  }
  const std::string& fixed = parameter.fixed;
  if (fixed.size() != 4 || fixed.find_first_not_of("01") != std::string::npos) {
    problems.Add(parameter.place, "fixed digits are marked by four digits 0 or 1");
  }
}

template <typename Entry>
void CheckUsed(const std::vector<Entry>& entries, const Catalogue& catalogue, Kind kind,
               Problems& problems) {
  for (const Entry& entry : entries) {
    const bool used = std::ranges::any_of(catalogue.parameters, [&](const Parameter& parameter) {
      return parameter.kind == kind && parameter.choice == entry.name;
    });
    if (!used) problems.Add(entry.place, "\"" + entry.name + "\" is used by no parameter");
  }
}

void CheckAlarmCode(const Alarm& alarm, Problems& problems) {
  if (!alarm.code) return;
  const std::string code = HexText(*alarm.code, 4);
  // The link takes "E" and a decimal digit for the beginning of a code.
  if (code.size() != 4 || code[0] != 'E' || !IsDecimalDigit(code[1])) {
    problems.Add(alarm.place, code + " is no code of a device error");
  }
}

void CheckAlarmDisplay(const Alarm& alarm, Problems& problems) {
  const std::string& display = alarm.display;
  const bool isAlarm =
      display.size() == 4 && display.starts_with("A.") && IsUpperHex(display.substr(2));
  if ((alarm.kind == "alarm") != isAlarm) {
    problems.Add(alarm.place, "the display of an alarm is A. and two hexadecimal digits");
  }
  if (alarm.kind == "state" && (alarm.code || LooksLikeError(display))) {
    problems.Add(alarm.place, "a state is no error");
  }
  static const std::set<std::string> withCode = {"A.9F", "A.E0", "A.E2", "A.EF"};
  if (alarm.kind == "alarm" && withCode.contains(display) != alarm.code.has_value()) {
    problems.Add(alarm.place, "a code belongs to A.9F, A.E0, A.E2 and A.EF, and to no other alarm");
  }
}

}  // namespace

bool LooksLikeError(const std::string& text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == 'E' && IsDecimalDigit(text[i + 1])) return true;
  }
  return false;
}

void CheckParameters(const Catalogue& catalogue, Problems& problems) {
  CheckUnique(catalogue.parameters, &Parameter::pn, "parameter", problems);
  CheckUnique(catalogue.parameters, &Parameter::name, "name", problems);
  for (const Parameter& parameter : catalogue.parameters) {
    CheckWords(parameter, problems);
    CheckKind(catalogue, parameter, problems);
    CheckMotors(parameter, problems);
  }
}

void CheckLists(const Catalogue& catalogue, Problems& problems) {
  CheckUnique(catalogue.lists, &List::name, "list", problems);
  CheckUsed(catalogue.lists, catalogue, Kind::list, problems);
  for (const List& list : catalogue.lists) {
    // An empty list would have no row at all and so shift the keys of those behind it.
    if (list.items.empty()) problems.Add(list.place, "a list without items");
    std::set<std::string> seen;
    for (const std::string& item : list.items) {
      if (item.empty() || item.find('|') != std::string::npos) {
        problems.Add(list.place, "an item is empty or holds \"|\"");
      }
      if (!seen.insert(item).second) problems.Add(list.place, "item \"" + item + "\" comes twice");
    }
  }
}

void CheckDigits(const Catalogue& catalogue, Problems& problems) {
  CheckUnique(catalogue.digits, &Digits::name, "digits", problems);
  CheckUsed(catalogue.digits, catalogue, Kind::digits, problems);
  for (const Digits& digits : catalogue.digits) {
    for (std::size_t digit = 0; digit < 4; ++digit) {
      const int count = digits.counts[digit];
      const bool address = digits.address == digit;
      if (!address && (count < 0 || count > kMostDigitValues)) {
        problems.Add(digits.place, "digit " + NumberText(digit) + " has 0 to 14 values");
      }
      if (count > 0 && digits.names[digit].empty()) {
        problems.Add(digits.place, "digit " + NumberText(digit) + " tells no meaning");
      }
      if (!address && CountOfChoices(digits.choices[digit]) != count) {
        problems.Add(digits.place, "digit " + NumberText(digit) + " needs " + NumberText(count) +
                                       " choices, one for each value");
      }
    }
  }
}

int CountOfChoices(std::string_view choices) {
  return choices.empty() ? 0 : static_cast<int>(std::ranges::count(choices, '|')) + 1;
}

void CheckAlarms(const Catalogue& catalogue, Problems& problems) {
  CheckUnique(catalogue.alarms, &Alarm::display, "display", problems);
  std::set<std::uint32_t> codes;
  std::size_t alarms = 0;
  for (const Alarm& alarm : catalogue.alarms) {
    CheckAlarmCode(alarm, problems);
    CheckAlarmDisplay(alarm, problems);
    if (alarm.name.empty()) problems.Add(alarm.place, "no name");
    if (alarm.code && !codes.insert(*alarm.code).second) {
      problems.Add(alarm.place, "the code comes twice");
    }
    alarms += alarm.kind == "state" ? 0 : 1;
  }
  if (alarms < kLeastAlarms) problems.Add({"alarms", 1}, "fewer than 60 alarms and errors");
}

void CheckLanguages(const Catalogue& catalogue, Problems& problems) {
  std::set<std::int64_t> numbers;
  for (const Language& language : catalogue.languages) {
    if (language.number == 2 || language.number <= 0 || language.name.empty() ||
        !numbers.insert(language.number).second) {
      problems.Add(language.place, "a language needs a name and a number of its own, not 2");
    }
    std::set<std::pair<std::string, std::string>> seen;
    for (const Translation& text : language.texts) {
      if (text.text.empty() || !seen.insert({text.kind, text.key}).second) {
        problems.Add(text.place, "no text, or a second one, for " + text.key);
      }
    }
  }
}

void CheckCatalogue(const Catalogue& catalogue, Problems& problems) {
  CheckLists(catalogue, problems);
  CheckDigits(catalogue, problems);
  CheckParameters(catalogue, problems);
  CheckAlarms(catalogue, problems);
  CheckLanguages(catalogue, problems);
  CheckRequirements(catalogue, problems);
  CheckTemplate(catalogue, problems);
}

}  // namespace velmoor::catalogue
