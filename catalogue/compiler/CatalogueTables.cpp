#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "compiler/Checks.h"
#include "compiler/Outputs.h"
#include "platform/Numbers.h"
#include "project/data/CatalogueSource.h"

namespace velmoor::catalogue {
namespace {

namespace source = catalogue_source;
using source::Texts;

// Kinds of rows in the direct parameter editor; 1001 keeps a row out of it.
constexpr std::string_view kEditHidden = "1001";

std::string Str(std::string_view text) {
  return std::string(text);
}

ColumnDefinition Column(std::string_view name) {
  return {Str(name), false};
}
ColumnDefinition Key(std::string_view name) {
  return {Str(name), true};
}

std::string EditType(const Parameter& parameter) {
  if (parameter.hidden) return Str(kEditHidden);
  switch (*parameter.kind) {
    case Kind::list:
      return "2";
    case Kind::digits:
      return "3";
    case Kind::decimal:
    case Kind::halves:
      break;
  }
  return "1";
}

// The limits as the tables hold them: of a list its places, of digits the greatest number.
Limits TableLimits(const Catalogue& catalogue, const Parameter& parameter) {
  Limits limits = parameter.limits;
  if (parameter.kind == Kind::list) {
    limits.max = static_cast<std::int64_t>(FindList(catalogue, parameter.choice)->items.size()) - 1;
  } else if (parameter.kind == Kind::digits) {
    limits.max = 0;
    const auto& counts = FindDigits(catalogue, parameter.choice)->counts;
    for (std::size_t digit = 4; digit-- > 0;) {
      limits.max = limits.max * 16 + std::max(counts[digit], 1) - 1;
    }
  }
  return limits;
}

// Bytes that the amplifier needs for the value.
std::string Size(const Limits& limits) {
  constexpr std::int64_t kWordMax = 65535;
  const bool word = limits.min >= 0 ? limits.max <= kWordMax
                                    : std::in_range<std::int16_t>(limits.min) &&
                                          std::in_range<std::int16_t>(limits.max);
  return word ? "2" : "4";
}

TableImage ParameterTable(const Catalogue& catalogue) {
  using P = source::Parameters;
  TableImage table{Str(P::kTable),
                   {Column(P::kPn), Column(P::kMin), Column(P::kMax), Column(P::kInitial),
                    Key(P::kList), Key(P::kDigits), Key(P::kEditType), Column(P::kFixed),
                    Column(P::kCategory), Column(P::kGroup), Key(P::kSize)},
                   {}};
  for (const Parameter& parameter : catalogue.parameters) {
    const bool digits = parameter.kind == Kind::digits;
    const Limits limits = TableLimits(catalogue, parameter);
    table.rows.push_back(
        {parameter.pn, NumberText(limits.min), NumberText(limits.max),
         digits ? parameter.digits : NumberText(limits.initial),
         NumberText(parameter.kind == Kind::list ? ListKey(catalogue, parameter.choice) : 0),
         NumberText(digits ? DigitsKey(catalogue, parameter.choice) : 0), EditType(parameter),
         parameter.fixed, parameter.category, parameter.group, Size(limits)});
  }
  return table;
}

TableImage MotorTable(const Catalogue& catalogue) {
  using M = source::MotorLimits;
  TableImage table{
      Str(M::kTable),
      {Column(M::kPn), Key(M::kWatts), Column(M::kMin), Column(M::kMax), Column(M::kInitial)},
      {}};
  for (const Parameter& parameter : catalogue.parameters) {
    for (const MotorLimits& motor : parameter.motors) {
      table.rows.push_back({parameter.pn, NumberText(motor.watts), NumberText(motor.limits.min),
                            NumberText(motor.limits.max), NumberText(motor.limits.initial)});
    }
  }
  return table;
}

TableImage DigitTable(const Catalogue& catalogue) {
  using D = source::Digits;
  TableImage table{Str(D::kTable), {Key(D::kKey), Key(D::kDigit), Key(D::kCount)}, {}};
  for (std::size_t i = 0; i < catalogue.digits.size(); ++i) {
    for (std::size_t digit = 0; digit < 4; ++digit) {
      table.rows.push_back(
          {NumberText(i + 1), NumberText(digit), NumberText(catalogue.digits[i].counts[digit])});
    }
  }
  return table;
}

TableImage AlarmTable(const Catalogue& catalogue) {
  using A = source::Alarms;
  TableImage table{Str(A::kTable), {Key(A::kKey), Column(A::kDisplay), Column(A::kCode)}, {}};
  for (std::size_t i = 0; i < catalogue.alarms.size(); ++i) {
    const Alarm& alarm = catalogue.alarms[i];
    table.rows.push_back(
        {NumberText(i + 1), alarm.display, alarm.code ? NumberText(*alarm.code) : std::string()});
  }
  return table;
}

// Gathers every English text under its key in the tables, and the keys by the names that
// translations use.
class TextTable {
 public:
  TextTable() {
    table_ = {
        Str(Texts::kTable),
        {Key(Texts::kLanguage), Column(Texts::kKind), Column(Texts::kKey), Column(Texts::kText)},
        {}};
  }

  void AddEnglish(std::string_view kind, const std::string& name, const std::string& key,
                  const std::string& text) {
    if (text.empty()) return;
    keys_[{Str(kind), name}] = key;
    english_[{Str(kind), name}] = text;
    table_.rows.push_back({NumberText(source::kEnglish), Str(kind), key, text});
  }
  // A text that must stay as it is.
  void Protect(std::string_view kind, const std::string& name) {
    literal_.insert({Str(kind), name});
  }
  void AddLanguage(const Language& language, Problems& problems) {
    for (const Translation& text : language.texts) {
      const std::pair name{text.kind, text.key};
      const auto key = keys_.find(name);
      if (key == keys_.end()) {
        problems.Add(text.place, "there is no " + text.kind + " " + text.key);
      } else if (literal_.contains(name)) {
        problems.Add(text.place, text.key + " is literal and has no translation");
      } else if (text.text.find('|') != std::string::npos && text.kind == Texts::kItem) {
        problems.Add(text.place, "an item holds \"|\"");
      } else if (text.kind == Texts::kChoices &&
                 CountOfChoices(text.text) != CountOfChoices(english_[name])) {
        problems.Add(text.place, "another number of choices than in English");
      } else {
        table_.rows.push_back({NumberText(language.number), text.kind, key->second, text.text});
      }
    }
  }
  [[nodiscard]] TableImage Take() && { return std::move(table_); }

 private:
  TableImage table_;
  std::map<std::pair<std::string, std::string>, std::string> keys_, english_;
  std::set<std::pair<std::string, std::string>> literal_;
};

void AddItems(const Catalogue& catalogue, TextTable& texts, TableImage& items) {
  std::size_t key = 0;
  for (std::size_t i = 0; i < catalogue.lists.size(); ++i) {
    const List& list = catalogue.lists[i];
    for (std::size_t item = 0; item < list.items.size(); ++item) {
      const std::string name = list.name + "." + NumberText(item);
      items.rows.push_back({NumberText(++key), NumberText(i + 1)});
      texts.AddEnglish(Texts::kItem, name, NumberText(key), list.items[item]);
      if (list.literal) texts.Protect(Texts::kItem, name);
    }
  }
}

void AddTexts(const Catalogue& catalogue, TextTable& texts) {
  for (const Parameter& parameter : catalogue.parameters) {
    texts.AddEnglish(Texts::kParameterName, parameter.pn, parameter.pn, parameter.name);
    texts.AddEnglish(Texts::kUnit, parameter.pn, parameter.pn, parameter.unit);
    if (IsUserUnit(parameter.unit)) texts.Protect(Texts::kUnit, parameter.pn);
    texts.AddEnglish(Texts::kHelp, parameter.pn, parameter.pn, parameter.help);
  }
  for (std::size_t i = 0; i < catalogue.digits.size(); ++i) {
    const Digits& digits = catalogue.digits[i];
    for (std::size_t digit = 0; digit < 4; ++digit) {
      const std::string place = "." + NumberText(digit);
      texts.AddEnglish(Texts::kDigitName, digits.name + place, NumberText(i + 1) + place,
                       digits.names[digit]);
      texts.AddEnglish(Texts::kChoices, digits.name + place, NumberText(i + 1) + place,
                       digits.choices[digit]);
    }
  }
  for (std::size_t i = 0; i < catalogue.alarms.size(); ++i) {
    const Alarm& alarm = catalogue.alarms[i];
    texts.AddEnglish(Texts::kAlarmName, alarm.display, NumberText(i + 1), alarm.name);
  }
}

}  // namespace

std::vector<TableImage> CatalogueTables(const Catalogue& catalogue, Problems& problems) {
  TextTable texts;
  using I = source::Items;
  TableImage items{Str(I::kTable), {Key(I::kKey), Key(I::kList)}, {}};
  AddItems(catalogue, texts, items);
  AddTexts(catalogue, texts);
  for (const Language& language : catalogue.languages) texts.AddLanguage(language, problems);
  return {ParameterTable(catalogue), MotorTable(catalogue), DigitTable(catalogue),
          std::move(items),          AlarmTable(catalogue), std::move(texts).Take()};
}

}  // namespace velmoor::catalogue
