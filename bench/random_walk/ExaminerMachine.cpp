// What the commit of a machine may make of everything else.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "random_walk/Examiner.h"
#include "random_walk/MachineOracle.h"

namespace velmoor::walk {
namespace {

struct Names {
  const char* record;  // its beginning
  std::array<const char*, 3> words;
};

// Words of a box that name a record, beside the name of a parameter itself.
constexpr std::array<Names, 17> kNames{{
    {"PRM81B", {"Pn81B-Pn81D", "Over Travel Parameters", ""}},
    {"PRM81C", {"Pn81B-Pn81D", "Over Travel Parameters", ""}},
    {"PRM81D", {"Pn81B-Pn81D", "Homing Parameters", ""}},
    {"PRM81E", {"Default Speed", "", ""}},
    {"PRM81F", {"Acceleration", "", ""}},
    {"PRM820", {"Deceleration", "", ""}},
    {"PRM821", {"In Position Window", "", ""}},
    {"PRM822", {"Near Position Window", "", ""}},
    {"PRM825", {"Pn825-Pn828", "Homing Parameters", ""}},
    {"PRM826", {"Pn825-Pn828", "Homing Parameters", ""}},
    {"PRM827", {"Pn825-Pn828", "Homing Parameters", ""}},
    {"PRM828", {"Pn825-Pn828", "Homing Parameters", ""}},
    {"POST", {"Index Table", "", ""}},
    {"ZONENT", {"Zone Table", "", ""}},
    {"JSPDT", {"Jog Table", "", ""}},
    {"PRM81A", {"Over Travel", "", ""}},
    {"PRM819", {"Over Travel", "", ""}},
}};

// Records that describe the machine, and may change with it.
bool DescribesMachine(const std::string& name) {
  static constexpr std::array<const char*, 10> kOwn{"PRM202", "PRM203", "PRM829", "PRM82A",
                                                    "PRM82B", "PRM82C", "PRM82D", "PRM82E",
                                                    "PRM82F", "PRM830"};
  return std::ranges::find(kOwn, name) != kOwn.end();
}

// The record and the field that a line of the preview names; empty for a place of another form.
std::pair<std::string, std::size_t> PlaceIn(const std::string& place) {
  if (place.starts_with("Pn")) return {"PRM" + place.substr(2, 3), 0};
  const std::size_t number = place.find_first_of("0123456789");
  if (number == std::string::npos) return {};
  const int row = std::atoi(place.c_str() + number);
  const auto names = [&place](const char* word) { return place.find(word) != std::string::npos; };
  if (names("Jog")) return {"JSPDT" + std::to_string(row), 0};
  if (names("Zone")) return {"ZONENT" + std::to_string(row), names("Upper") ? 1 : 0};
  if (!names("Index")) return {};
  const std::size_t field = names("RDST") ? 2 : names("RSPD") ? 3 : names("Speed") ? 1 : 0;
  return {"POST" + std::to_string(row - 1), field};
}

std::string MoveOf(const std::string& text) {
  const bool move = text.size() > 2 && (text[0] == 'A' || text[0] == 'I');
  return move ? text.substr(2) : text;
}

bool SameNumber(const std::string& a, const std::string& b) {
  if (a == b) return true;
  const auto first = Number(MoveOf(a));
  const auto second = Number(MoveOf(b));
  return first && second && *first == *second;
}

}  // namespace

bool Examiner::IsNamed(const std::string& name, std::size_t field, const FileRow& after) const {
  for (const PreviewLine& line : access_.preview) {
    if (PlaceIn(line.place) == std::pair(name, field) && line.text == after.shown[field]) {
      return true;
    }
  }
  const bool parameter = name.starts_with("PRM");
  if (parameter && access_.Said("Pn" + name.substr(3))) return true;
  // The question about the system names all that it empties or resets.
  const bool reset = name.starts_with("POST") || name.starts_with("ZONENT") ||
                     (parameter && KindOf("Pn" + name.substr(3)) != Kind::plain);
  if (access_.Said("would invalidate existing")) return reset;
  // That about the gear ratio names all there is, and so nothing.
  if (access_.Said("may no longer be valid!")) return false;
  return std::ranges::any_of(kNames, [&](const Names& names) {
    if (!name.starts_with(names.record)) return false;
    return std::ranges::any_of(names.words, [this](const std::string& word) {
      return !word.empty() && access_.Said(word);
    });
  });
}

void Examiner::CheckPreview(const Records& before, const Records& after) {
  for (const PreviewLine& line : access_.preview) {
    const auto [name, field] = PlaceIn(line.place);
    const auto record = after.find(name);
    if (record == after.end()) continue;
    if (before.at(name).shown[field] != line.now) {
      Blame("preview", "the preview told that " + line.place + " is '" + line.now +
                           "' now, and the file had '" + before.at(name).shown[field] + "'");
    }
    const std::string& shown = record->second.shown[field];
    const std::string& counts = record->second.values[field];
    if (shown == line.text && counts == line.counts) continue;
    std::string told = "the preview told " + line.place;
    told.append(" would be '").append(line.text).append("', ").append(line.counts);
    told.append(" counts; it is '").append(shown).append("', ").append(counts);
    Blame("preview", told);
  }
}

// The limits of the travel follow the kind of axis.
void Examiner::CheckTravel(const Records& before, const Records& after) {
  const HeldMachine was = MachineIn(before);
  const HeldMachine is = MachineIn(after);
  const FileRow& high = after.at("PRM81B");
  const FileRow& low = after.at("PRM81C");
  const std::string& axis = after.at("PRM81A").shown[0];
  const std::string told = "after " + SystemName(was.system) + " became " + SystemName(is.system) +
                           ": axis '" + axis + "', limits '" + high.shown[0] + "' (" +
                           high.values[0] + ") and '" + low.shown[0] + "' (" + low.values[0] + ")";
  const bool turns = IsRotary(is.system);
  if (IsRotary(was.system) != turns) {
    const bool fits = turns ? axis.starts_with("Rotary") && low.values[0] == "0"
                            : axis.starts_with("Linear") && high.values[0] == "99999999" &&
                                  low.values[0] == "-99999999";
    if (!fits) Blame("travel", told);
  }
  if (turns && was.system == is.system && Number(before.at("PRM81C").values[0]) == 0 &&
      Number(low.values[0]) != 0) {
    Blame("travel", told);
  }
  if (!turns) return;
  const long double step = 1 / powl(10, is.resolution);
  const auto upper = Number(high.shown[0]);
  const bool follows =
      was.system != is.system || was.measure != is.measure || was.resolution != is.resolution;
  const long double turn = static_cast<long double>(is.measure);
  const bool reachable = turn / step > 2 && turn / step < 99999999;
  if (follows && reachable && (!upper || fabsl(*upper - (turn - step)) > step)) {
    Blame("travel", told);
  }
}

void Examiner::MachineChange(const Records& before, const Records& after,
                             const std::map<std::string, std::string>& shown) {
  CheckTravel(before, after);
  CheckPreview(before, after);
  const bool turns = IsRotary(MachineIn(before).system) || IsRotary(MachineIn(after).system);
  for (const auto& [name, row] : after) {
    const bool follows = turns && (name == "PRM81A" || name == "PRM81B" || name == "PRM81C");
    if (DescribesMachine(name) || follows) continue;
    const FileRow& was = before.at(name);
    const auto inWindow = shown.find("Pn" + name.substr(3));
    if (inWindow != shown.end() && inWindow->second == row.shown[0]) continue;
    for (std::size_t field = 0; field < row.shown.size(); ++field) {
      if (SameNumber(was.shown[field], row.shown[field]) || IsNamed(name, field, row)) continue;
      Blame("typed", "the machine's commit made " + row.questions[field] + " '" + row.shown[field] +
                         "' of '" + was.shown[field] + "' without a word");
    }
  }
}

}  // namespace velmoor::walk
