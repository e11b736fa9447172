#include <algorithm>
#include <set>
#include <string_view>

#include "compiler/Checks.h"
#include "platform/Numbers.h"

namespace velmoor::catalogue {
namespace {

constexpr std::string_view kCardCategory = "RX900";

// Parameters that the tools know by name.
struct Need {
  std::string_view first;  // "Pn" and three digits; a range up to `last`
  std::string_view last;
  Kind kind;
  std::string_view unit;  // empty: any
};

constexpr Need kNeeds[] = {
    {"Pn000", "Pn000", Kind::digits, ""},
    {"Pn002", "Pn002", Kind::digits, ""},
    {"Pn100", "Pn104", Kind::decimal, ""},
    {"Pn107", "Pn10A", Kind::decimal, ""},
    {"Pn110", "Pn110", Kind::digits, ""},
    {"Pn200", "Pn200", Kind::digits, ""},
    {"Pn202", "Pn203", Kind::decimal, ""},
    {"Pn207", "Pn207", Kind::digits, ""},
    {"Pn401", "Pn401", Kind::decimal, ""},
    {"Pn408", "Pn408", Kind::digits, ""},
    {"Pn409", "Pn409", Kind::decimal, ""},
    {"Pn50A", "Pn512", Kind::digits, ""},
    {"Pn800", "Pn81A", Kind::list, ""},
    {"Pn81B", "Pn81D", Kind::decimal, "distance"},
    {"Pn81E", "Pn81E", Kind::decimal, "speed"},
    {"Pn81F", "Pn820", Kind::decimal, "acceleration"},
    {"Pn821", "Pn822", Kind::decimal, "distance"},
    {"Pn823", "Pn824", Kind::list, ""},
    {"Pn825", "Pn827", Kind::decimal, "speed"},
    {"Pn828", "Pn828", Kind::decimal, "distance"},
    {"Pn829", "Pn82A", Kind::halves, ""},
    {"Pn82B", "Pn82D", Kind::decimal, ""},
    {"Pn82E", "Pn82E", Kind::digits, ""},
    {"Pn82F", "Pn830", Kind::halves, ""},
    {"Pn831", "Pn834", Kind::list, ""},
};

// Parameters that the direct parameter editor must not send.
constexpr std::string_view kFirstHidden = "Pn829";
constexpr std::string_view kLastHidden = "Pn830";

// Items that the program compares or relies on, and their places.
struct ItemNeed {
  std::string_view pn;
  std::size_t index;
  std::string_view text;
};

constexpr ItemNeed kItems[] = {
    {"Pn801", 0, "9600"},
    {"Pn801", 1, "19200"},
    {"Pn801", 2, "38400"},
    {"Pn802", 1, "OK=Answer is back"},
    {"Pn80B", 2, "Always Servo On"},
    {"Pn81A", 0, "Linear"},
    {"Pn81A", 1, "Rotary(Shortest Path)"},
    {"Pn823", 0, "no zero point return"},
    {"Pn823", 1, "dec and c-phase"},
    {"Pn823", 2, "dec only"},
    {"Pn823", 3, "c-phase only"},
};

// Lists whose count of items is fixed, and lists whose texts no language may change.
struct ListNeed {
  std::string_view pn;
  std::size_t items;  // 0: any
};

constexpr ListNeed kLiteralLists[] = {
    {"Pn800", 8}, {"Pn801", 3}, {"Pn802", 2}, {"Pn81A", 0}, {"Pn823", 4}};

void CheckNeed(const Catalogue& catalogue, const Need& need, Problems& problems) {
  const std::uint32_t last = *ParseHex(need.last.substr(2));
  for (std::uint32_t number = *ParseHex(need.first.substr(2)); number <= last; ++number) {
    const std::string pn = "Pn" + HexText(number, 3);
    const Parameter* const parameter = FindParameter(catalogue, pn);
    if (parameter == nullptr) {
      problems.Add({"parameters", 1}, pn + " is missing");
    } else if (parameter->kind != need.kind ||
               (!need.unit.empty() && parameter->unit != need.unit)) {
      problems.Add(parameter->place, "the program expects another kind or unit");
    }
  }
}

void CheckItem(const Catalogue& catalogue, const ItemNeed& need, Problems& problems) {
  const Parameter* const parameter = FindParameter(catalogue, std::string(need.pn));
  const List* const list = parameter == nullptr ? nullptr : FindList(catalogue, parameter->choice);
  if (list == nullptr) return;
  if (need.index >= list->items.size() || list->items[need.index] != need.text) {
    problems.Add(list->place, std::string(need.pn) + " needs the item \"" + std::string(need.text) +
                                  "\" at place " + NumberText(need.index));
  }
}

void CheckLiteralList(const Catalogue& catalogue, const ListNeed& need, Problems& problems) {
  const Parameter* const parameter = FindParameter(catalogue, std::string(need.pn));
  const List* const list = parameter == nullptr ? nullptr : FindList(catalogue, parameter->choice);
  if (list == nullptr) return;
  if (!list->literal) problems.Add(list->place, "the texts must be literal");
  if (need.items != 0 && list->items.size() != need.items) {
    problems.Add(list->place, std::string(need.pn) + " needs " + NumberText(need.items) + " items");
  }
}

// A card parameter that the editor shows is a list or counts in user units: anything else would be
// multiplied on saving and not divided on reading.
void CheckCard(const Parameter& parameter, Problems& problems) {
  const bool card = parameter.pn >= "Pn800";
  if (card != (parameter.category == kCardCategory)) {
    problems.Add(parameter.place, "the category RX900 belongs to Pn800 and above");
  }
  const bool hidden = parameter.pn >= kFirstHidden && parameter.pn <= kLastHidden;
  if (hidden != parameter.hidden) {
    problems.Add(parameter.place, "exactly Pn829 to Pn830 are hidden");
  }
  if (!card && IsUserUnit(parameter.unit)) {
    problems.Add(parameter.place, "only the card counts in user units");
  }
  if (card && !hidden && parameter.kind != Kind::list && !IsUserUnit(parameter.unit)) {
    problems.Add(parameter.place, "a card parameter is a list or counts in user units");
  }
}

void CheckSpecialRows(const Catalogue& catalogue, Problems& problems) {
  if (const Digits* const notch =
          FindDigits(catalogue, FindParameter(catalogue, "Pn408") == nullptr
                                    ? std::string()
                                    : FindParameter(catalogue, "Pn408")->choice);
      notch != nullptr && notch->counts != std::array<int, 4>{2, 0, 0, 0}) {
    problems.Add(notch->place, "Pn408 is a switch in digit 0 and nothing else");
  }
  if (const Parameter* const frequency = FindParameter(catalogue, "Pn409");
      frequency != nullptr && (!std::in_range<std::int16_t>(frequency->limits.min) ||
                               !std::in_range<std::int16_t>(frequency->limits.max))) {
    problems.Add(frequency->place, "the frequency must fit into 16 bits");
  }
  if (const Parameter* const axis = FindParameter(catalogue, "Pn81A"); axis != nullptr) {
    const List* const list = FindList(catalogue, axis->choice);
    for (std::size_t i = 1; list != nullptr && i < list->items.size(); ++i) {
      if (!list->items[i].starts_with("Rotary")) {
        problems.Add(list->place, "kinds of axis but the first begin with \"Rotary\"");
      }
    }
  }
}

}  // namespace

void CheckRequirements(const Catalogue& catalogue, Problems& problems) {
  for (const Need& need : kNeeds) CheckNeed(catalogue, need, problems);
  for (const ItemNeed& need : kItems) CheckItem(catalogue, need, problems);
  for (const ListNeed& need : kLiteralLists) CheckLiteralList(catalogue, need, problems);
  for (const Parameter& parameter : catalogue.parameters) CheckCard(parameter, problems);
  CheckSpecialRows(catalogue, problems);
}

}  // namespace velmoor::catalogue
