// The catalogue as its files tell it, before anything is checked against anything else.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiler/Records.h"

namespace velmoor::catalogue {

enum class Kind { decimal, list, digits, halves };

struct Limits {
  std::int64_t min = 0;
  std::int64_t max = 0;
  std::int64_t initial = 0;
};

struct MotorLimits {
  std::int64_t watts = 0;
  Limits limits;
  Place place;
};

struct Parameter {
  std::string pn;  // "Pn100"
  std::string name;
  std::string category;
  std::string group;  // "Gains > First set"
  std::string unit;
  std::string help;
  std::optional<Kind> kind;
  std::string choice;  // name of the list or of the digit definition
  Limits limits;       // of a list: the item's index
  std::string digits;  // initial value of a parameter coded in digits
  std::vector<MotorLimits> motors;
  std::string fixed = "0000";
  bool hidden = false;
  std::optional<std::int64_t> factory;
  Place place;
};

struct List {
  std::string name;
  bool literal = false;
  std::vector<std::string> items;
  Place place;
};

struct Digits {
  std::string name;
  std::array<int, 4> counts{};
  std::array<std::string, 4> names;
  std::array<std::string, 4> choices;  // the meaning of each value, joined by "|"
  std::optional<std::size_t> address;  // the digit that holds the axis address
  Place place;
};

struct Alarm {
  std::string kind;     // "alarm", "error" or "state"
  std::string display;  // as the panel shows it; of an error: the code
  std::optional<std::uint32_t> code;
  std::string name;
  Place place;
};

// One text in another language: the kinds and keys of the catalogue file, with names for keys.
struct Translation {
  std::string kind;
  std::string key;  // pn, display, "list.index" or "digits.digit"
  std::string text;
  Place place;
};

struct Language {
  std::int64_t number = 0;
  std::string name;
  std::vector<Translation> texts;
  Place place;
};

struct TemplateValue {
  std::string key;
  std::string value;
  Place place;
};

struct Template {
  std::string selections;
  std::string measure;
  std::int64_t n1 = 0;
  std::int64_t n2 = 0;
  std::int64_t resolution = 0;
  std::int64_t gearB = 0;
  std::int64_t gearA = 0;
  double distance = 0;  // counts for one unit
  double speed = 0;
  double acceleration = 0;
  std::vector<TemplateValue> values;
  std::vector<TemplateValue> settings;
  Place place;
};

struct Catalogue {
  std::vector<Parameter> parameters;
  std::vector<List> lists;     // the key is the place, from 1
  std::vector<Digits> digits;  // likewise
  std::vector<Alarm> alarms;   // likewise
  std::vector<Language> languages;
  Template project;
};

// The words "distance", "speed" and "acceleration", which the program replaces by the project's
// units.
[[nodiscard]] bool IsUserUnit(const std::string& unit);
// Null where no such name exists.
[[nodiscard]] const Parameter* FindParameter(const Catalogue& catalogue, const std::string& pn);
[[nodiscard]] const List* FindList(const Catalogue& catalogue, const std::string& name);
[[nodiscard]] const Digits* FindDigits(const Catalogue& catalogue, const std::string& name);
// The key by which a list or a digit definition is known in the tables, from 1; 0 for an empty
// name.
[[nodiscard]] std::size_t ListKey(const Catalogue& catalogue, const std::string& name);
[[nodiscard]] std::size_t DigitsKey(const Catalogue& catalogue, const std::string& name);

}  // namespace velmoor::catalogue
