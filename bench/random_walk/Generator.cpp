#include "random_walk/Generator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "random_walk/MachineOracle.h"

namespace velmoor::walk {
namespace {

constexpr std::array<const char*, 8> kFaults{"none",      "none", "none",         "silence",
                                             "no-answer", "stop", "device-error", "unplug"};
constexpr std::array<const char*, 9> kDownloads{
    "New",       "New",      "All",      "ParametersAll", "ParameterHoming", "ParameterOverTravel",
    "TablesAll", "TableJog", "TableZone"};
constexpr std::array<const char*, 9> kUploads{
    "All",      "ParametersAll", "ParameterMechanicalSystem", "ParameterHoming", "TablesAll",
    "TableJog", "TableZone",     "ParameterOverTravel",       "ParameterTuning"};

std::string LimitIn(const std::string& tip, const std::string& words) {
  const std::size_t found = tip.find(words);
  if (found == std::string::npos) return {};
  const std::size_t begin = found + words.size();
  return tip.substr(begin, tip.find_first_of(";\n", begin) - begin);
}

// The axis, and how the line itself speaks, stay as they are: a walk needs its line.
bool IsLeftAlone(const std::string& pn) {
  return pn == "Pn000" || pn == "Pn800" || pn == "Pn801" || pn == "Pn802";
}

}  // namespace

int Generator::Below(int count) {
  return static_cast<int>(random_() % static_cast<std::uint64_t>(std::max(count, 1)));
}

std::optional<Step> Generator::operator()(Walk& walk) {
  // Half of the walks begin with an amplifier that holds what the project holds.
  if (!std::exchange(started_, true) && OneIn(2)) return Step{{"download", "All", "none", "0"}};
  if (left_-- <= 0) return std::nullopt;
  const WindowKind* const blocking = walk.Program().Blocking();
  Step step = blocking != nullptr ? InWindow(walk, *blocking) : Anything(walk);
  if (OneIn(25)) step.words.emplace_back("!no");
  return step;
}

Step Generator::Anything(Walk& walk) {
  std::vector<const WindowKind*> open;
  for (const WindowKind& kind : kWindows) {
    if (walk.Program().Find(kind) != nullptr) open.push_back(&kind);
  }
  const int dice = Below(100);
  if (dice < 55 && !open.empty()) {
    return InWindow(walk, *open[static_cast<std::size_t>(Below(static_cast<int>(open.size())))]);
  }
  if (dice < 75) {
    // The machine is what everything else hangs on.
    if (OneIn(3)) return {{"open", "machine"}};
    return {
        {"open",
         std::string(kWindows.at(static_cast<std::size_t>(Below(static_cast<int>(kWindows.size()))))
                         .word)}};
  }
  if (dice < 89) return Transfer();
  if (dice < 92) return {{"save"}};
  if (dice < 95) return {{"reopen", OneIn(2) ? "save" : "discard"}};
  if (dice < 96) return {{"compare"}};
  if (dice < 97) return {{"power"}};
  return {{"break", std::to_string(1 + Below(3))}};
}

Step Generator::Transfer() {
  const std::string fault = OneOf(kFaults);
  const std::string exchange = std::to_string(Below(OneIn(2) ? 20 : 600));
  if (!OneIn(3)) return {{"download", OneOf(kDownloads), fault, fault == "none" ? "0" : exchange}};
  return {{"upload", OneOf(kUploads), OneIn(3) ? "refuse" : "commit", fault,
           fault == "none" ? "0" : exchange}};
}

Step Generator::InWindow(Walk& walk, const WindowKind& kind) {
  HeadlessForm& form = *walk.Program().Find(kind);
  const std::string word(kind.word);
  const int dice = Below(100);
  const bool edited = walk.IsUnderEdit(kind.word);
  if (dice < (edited ? 14 : 2)) return {{"apply", word}};
  if (dice < (edited ? 30 : 12)) return {{"ok", word}};
  if (dice < (edited ? 34 : 20)) return {{"cancel", word}};
  if (kind.look == Look::machine) return InMachine(walk, form);
  if (dice < 44) return {{"undo", word}};
  if (dice < 46) return {{"redo", word}};
  if (kind.look == Look::table) return EditOfTable(kind, form);
  if (kind.word == "tuning" && OneIn(4)) {
    if (OneIn(2)) return {{"notch", OneIn(2) ? "on" : "off"}};
    return {{"frequency", OneIn(6) ? "+0100" : std::to_string(50 + Below(3000))}};
  }
  return EditOf(kind, form);
}

// ---- values

std::string Generator::Absurd() {
  static const std::array<std::string, 10> kTexts{"-1" + std::string(400, '0'),
                                                  "1" + std::string(30, '0'),
                                                  "nan",
                                                  "1e5",
                                                  "-0",
                                                  "0",
                                                  "00012.5",
                                                  "0." + std::string(40, '0') + "1",
                                                  "abc",
                                                  "99999999.5"};
  return OneOf(kTexts);
}

// Mostly numbers as people type them; now and then one anywhere between the limits.
std::string Generator::NumberWithin(const std::string& low, const std::string& high) {
  if (OneIn(30)) return Absurd();
  if (OneIn(12)) return OneIn(2) ? low : high;
  const double least = std::atof(low.c_str());
  const double most = std::atof(high.c_str());
  if (OneIn(4)) {
    const double part = static_cast<double>(random_() >> 11U) / static_cast<double>(1ULL << 53U);
    return Fixed(static_cast<long double>(least + (most - least) * part), PlacesOf(low));
  }
  static constexpr std::array<const char*, 12> kUsual{
      "1", "2", "5", "7", "10", "20", "70", "500", "50.125", "0.5", "12.3456", "-3"};
  return OneOf(kUsual);
}

std::string Generator::ValueFor(HeadlessForm& form, int row, int column) {
  const HeadlessGrid& grid = form.grid("vsFG");
  const CellTraits traits = grid.Source()->Traits(row, column);
  if (!traits.comboItems.empty()) return OneOf(traits.comboItems);
  const std::string tip = grid.TipAt(row, column);
  const std::string low = LimitIn(tip, "Minimum value is ");
  const std::string high = LimitIn(tip, "Maximum value is ");
  const std::string now = grid.Source()->Text(row, column);
  const bool digits = now.size() == 4 && now.find('.') == std::string::npos && low.size() == 4;
  if (digits) return OneIn(2) ? "000" + std::to_string(Below(3)) : OneIn(2) ? low : high;
  return NumberWithin(low, high);
}

Step Generator::EditOf(const WindowKind& kind, HeadlessForm& form) {
  const HeadlessGrid& grid = form.grid("vsFG");
  const int column = ValueColumn(kind.look);
  const std::string word(kind.word);
  for (int attempt = 0; attempt < 20; ++attempt) {
    int row = 1 + Below(grid.Source()->Rows() - 1);
    // What is shown in units is what a machine changes.
    std::string pn = grid.Source()->Text(row, NameColumn(kind.look));
    const bool units = KindOf(pn) != Kind::plain || pn == "Pn80C" || pn == "Pn81A";
    if (IsLeftAlone(pn) || grid.RowHidden(row) || (!units && attempt < 10)) continue;
    if (!grid.Source()->Traits(row, column).editable) continue;
    if (OneIn(8)) return {{"limit", word, pn, OneIn(2) ? "low" : "high"}};
    return {{"edit", word, pn, std::to_string(column), ValueFor(form, row, column)}};
  }
  return {{"undo", word}};
}

Step Generator::EditOfTable(const WindowKind& kind, HeadlessForm& form) {
  static constexpr std::array<const char*, 7> kMoves{"I+10", "A-2.5",     "A+500",  "STOP",
                                                     "-",    "+INFINITE", "I+0.001"};
  static constexpr std::array<const char*, 9> kIndex{"step",  "",         "20", "-",  "5",
                                                     "NNAZ:", "SEL0T100", "3",  "END"};
  const std::string word(kind.word);
  const int rows = form.grid("vsFG").Source()->Rows() - 1;
  const std::string row = std::to_string(1 + Below(OneIn(2) ? 3 : rows));
  if (kind.word == "index") {
    if (OneIn(4)) {
      return {{"paste", word, row, "2", OneOf(kMoves) + "\t20\t-\t5\tNNAZ:\tSEL0T100\t3\tEND"}};
    }
    const int column = 1 + Below(9);
    std::string text =
        column == 2 ? OneOf(kMoves) : kIndex.at(static_cast<std::size_t>(column) - 1);
    if (column == 1) text += row;
    if (OneIn(10)) text.clear();
    return {{"edit", word, row, std::to_string(column), text}};
  }
  const std::string column = std::to_string(kind.word == "zone" ? 1 + Below(2) : 1);
  if (kind.word == "zone" && OneIn(2)) {
    return {
        {"paste", word, row, "1", NumberWithin("-10", "10") + "\t" + NumberWithin("10", "100")}};
  }
  const std::string text = OneIn(8) ? std::string() : NumberWithin("0", "1000");
  return {{OneIn(5) ? "paste" : "edit", word, row, column, text}};
}

// ---- the machine

Step Generator::InMachine(Walk& walk, HeadlessForm& form) {
  static constexpr std::array<const char*, 8> kMeasures{"5", "10", "36",  "360",
                                                        "1", "20", "2.5", "50"};
  static constexpr std::array<const char*, 5> kUnitRows{"Pn81E", "Pn81F", "Pn820", "Pn821",
                                                        "Pn822"};
  const HeldMachine machine = MachineIn(walk.File());
  const auto edit = [](const char* pn, const std::string& text) {
    return Step{{"edit", "machine", pn, "2", text}};
  };
  // Units that fit the system, which a walk would else seldom meet.
  const bool turns = form.comboBox("cmbSystem").Text() == "Rotary Table";
  switch (Below(12)) {
    case 0:
    case 1:
      return {{"system", OneOf(kSystems)}};
    case 2:
      return {{"encoder", OneOf(kEncoders)}};
    case 3:
      return edit("Pn82E.0", turns ? (OneIn(2) ? "deg" : "rad") : OneOf(kUnits));
    case 4:
    case 5:
      return edit("Pn82E.1", machine.time == "minutes" ? "seconds" : "minutes");
    case 6:
      return edit("Pn82F.0", OneOf(kMeasures));
    case 7:
      return edit(OneIn(2) ? "Pn82B" : "Pn82C", std::to_string(1 + Below(6)));
    case 8:
    case 9:
      return edit("Pn82D",
                  std::to_string(OneIn(3) ? Below(10) : machine.resolution + 1 - Below(3)));
    case 10:
      return {{"limit", "machine", OneOf(kUnitRows), OneIn(2) ? "low" : "high"}};
    default:
      return edit(OneOf(kUnitRows).c_str(), NumberWithin("0.001", "100"));
  }
}

Walked WalkAtRandom(const std::string& folder, std::uint64_t seed, int steps,
                    const std::set<std::string>& ignored) {
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  Walked walked;
  {
    Walk walk(folder, ignored);
    Generator generator(seed, steps);
    walk.Run([&](Walk& present) {
      auto step = generator(present);
      if (step) walked.steps.push_back(*step);
      return step;
    });
    walked.found = walk.Found();
  }
  std::filesystem::remove_all(folder);
  return walked;
}

}  // namespace velmoor::walk
