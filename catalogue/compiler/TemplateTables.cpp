#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "compiler/Checks.h"
#include "compiler/Outputs.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "project/data/Schema.h"

namespace velmoor::catalogue {
namespace {

constexpr int kMostPlaces = 22;
constexpr std::int64_t kMostGear = 65535;
constexpr std::array<int, 3> kEncoderLines = {2048, 16384, 32768};

struct RowValue {
  std::string shown;
  std::string controller;
};

RowValue Both(const std::string& text) {
  return {text, text};
}

// Counts for one unit of the row; 0 for a row that counts in none.
double FactorOf(const Template& project, const std::string& unit) {
  if (unit == "distance") return project.distance;
  if (unit == "speed") return project.speed;
  if (unit == "acceleration") return project.acceleration;
  return 0;
}

std::string ShownCount(const Template& project, const std::string& unit, std::int64_t count) {
  const double factor = FactorOf(project, unit);
  if (factor == 0) return NumberText(count);
  return FixedText(static_cast<double>(count) / factor, static_cast<int>(project.resolution));
}

std::int64_t CountOf(const Template& project, const Parameter& parameter) {
  for (const TemplateValue& value : project.values) {
    if (value.key == parameter.pn) return ParseWhole(value.value).value_or(0);
  }
  return parameter.limits.initial;
}

// The rows that describe the machine.
std::map<std::string, RowValue> MachineRows(const Template& project) {
  const StandardRx900Utils utils;
  const auto measure = static_cast<float>(ParseFloat(project.measure).value_or(0));
  const std::string checksum = utils.MechSystemChecksum(
      Narrow<std::int16_t>(project.n1), Narrow<std::int16_t>(project.n2),
      Narrow<std::int16_t>(project.resolution), measure, project.selections);
  const std::string bits = utils.FloatToDec(measure);
  return {{"Pn202", Both(NumberText(project.gearB))},
          {"Pn203", Both(NumberText(project.gearA))},
          {"Pn829", Both(Left(checksum, 8))},
          {"Pn82A", Both(Right(checksum, 8))},
          {"Pn82B", Both(NumberText(project.n1))},
          {"Pn82C", Both(NumberText(project.n2))},
          {"Pn82D", Both(NumberText(project.resolution))},
          {"Pn82E", Both(project.selections)},
          {"Pn82F", Both(Left(bits, 8))},
          {"Pn830", Both(Right(bits, 8))}};
}

RowValue ValueOf(const Catalogue& catalogue, const Parameter& parameter) {
  const std::int64_t count = CountOf(catalogue.project, parameter);
  if (parameter.kind == Kind::digits) return Both(parameter.digits);
  if (parameter.kind == Kind::list) {
    const List& list = *FindList(catalogue, parameter.choice);
    return {list.items.at(static_cast<std::size_t>(count)), NumberText(count)};
  }
  return {ShownCount(catalogue.project, parameter.unit, count), NumberText(count)};
}

TableImage EmptyTable(std::string_view name) {
  return {std::string(name), schema::ProjectTableNamed(name).definition.columns, {}};
}

TableImage ParameterRows(const Catalogue& catalogue) {
  TableImage table = EmptyTable(schema::Parameters::kTable);
  const auto machine = MachineRows(catalogue.project);
  for (const Parameter& parameter : catalogue.parameters) {
    const auto row = machine.find(parameter.pn);
    const RowValue value = row == machine.end() ? ValueOf(catalogue, parameter) : row->second;
    table.rows.push_back({parameter.pn, value.shown, value.controller, "0",
                          parameter.hidden ? parameter.name : std::string()});
  }
  return table;
}

TableImage SettingRows(const Catalogue& catalogue) {
  using M = schema::Misc;
  TableImage table = EmptyTable(M::kTable);
  for (const TemplateValue& setting : catalogue.project.settings) {
    table.rows.push_back({setting.key, setting.value});
  }
  table.rows.push_back({std::string(M::kFormat), NumberText(schema::kFormatVersion)});
  return table;
}

// All rows, whose key columns and bits tell the row's number, and whose other fields are empty.
TableImage BlankRows(std::string_view name, std::span<const std::string_view> bits) {
  TableImage table = EmptyTable(name);
  for (std::size_t row = 0; row < schema::ProjectTableNamed(name).records; ++row) {
    std::vector<std::string>& fields =
        table.rows.emplace_back(std::vector<std::string>(table.columns.size()));
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::string& column = table.columns[i].name;
      const auto bit = std::ranges::find(bits, column);
      if (bit != bits.end()) {
        fields[i] = (row >> static_cast<std::size_t>(bit - bits.begin())) % 2 == 0 ? "0" : "1";
      } else if (column == schema::Position::kId) {
        fields[i] = NumberText(row + 1);
      } else if (table.columns[i].integerKey) {
        fields[i] = NumberText(row);
      } else if (column == schema::kMark) {
        fields[i] = "0";
      }
    }
  }
  return table;
}

bool Near(double a, double b) {
  return std::abs(a - b) <= 1e-9 * std::abs(b);
}

// A leadscrew's gear ratio and factors follow from the rest of its description.
void CheckMachine(const Catalogue& catalogue, Problems& problems) {
  const Template& project = catalogue.project;
  const auto refuse = [&](const std::string& reason) { problems.Add(project.place, reason); };
  const auto measure = ParseFloat(project.measure);
  const auto fits = [](std::int64_t number, std::int64_t most) {
    return number >= 1 && number <= most;
  };
  if (!measure || *measure <= 0) return refuse("the measure is no number above 0");
  if (!fits(project.n1, 32767) || !fits(project.n2, 32767)) return refuse("N1 or N2 is off");
  if (!fits(project.gearA, kMostGear) || !fits(project.gearB, kMostGear)) {
    return refuse("a gear term is off");
  }
  if (project.resolution < 0 || project.resolution > kMostPlaces) {
    return refuse("the resolution is off");
  }
  const std::string& selections = project.selections;
  if (selections.size() != 4 || selections[1] != '0' || selections[0] > '2' ||
      selections[0] < '0' || LooksLikeError(selections)) {
    return refuse("the selections are no leadscrew's");
  }
  const double scale = PowerOfTen(static_cast<int>(project.resolution));
  const double travel = scale * *measure * static_cast<double>(project.n1);
  const double counts = 4.0 * kEncoderLines.at(static_cast<std::size_t>(selections[0] - '0')) *
                        static_cast<double>(project.n2);
  if (!Near(static_cast<double>(project.gearA) * counts,
            static_cast<double>(project.gearB) * travel)) {
    refuse("the gear terms do not follow from the machine");
  }
  const double time = selections[2] == '0' ? 60 : 1;
  if (!Near(project.distance, scale) || !Near(project.speed, scale * time / 1000) ||
      !Near(project.acceleration, scale * time / 1e6)) {
    refuse("the factors do not follow from the machine");
  }
}

void CheckValue(const Catalogue& catalogue, const TemplateValue& value, Problems& problems) {
  const Parameter* const parameter = FindParameter(catalogue, value.key);
  const auto count = ParseWhole(value.value);
  if (parameter == nullptr || parameter->kind != Kind::decimal || parameter->hidden || !count) {
    problems.Add(value.place, "only a decimal parameter has a value of its own here");
  } else if (*count < parameter->limits.min || *count > parameter->limits.max) {
    problems.Add(value.place, value.key + " is outside its limits");
  }
}

// A shown value must turn back into the very count that stands beside it.
void CheckShownCounts(const Catalogue& catalogue, Problems& problems) {
  for (const Parameter& parameter : catalogue.parameters) {
    const double factor = FactorOf(catalogue.project, parameter.unit);
    if (factor == 0) continue;
    const std::int64_t count = CountOf(catalogue.project, parameter);
    const std::string shown = ShownCount(catalogue.project, parameter.unit, count);
    if (RoundHalfEven(*ParseFloat(shown) * factor) != static_cast<double>(count)) {
      problems.Add(parameter.place,
                   "the template shows " + shown + " for the count " + NumberText(count));
    }
  }
}

void CheckSettings(const Template& project, Problems& problems) {
  const auto setting = [&](std::string_view name) -> std::optional<double> {
    for (const TemplateValue& value : project.settings) {
      if (value.key == name) return ParseFloat(value.value);
    }
    return std::nullopt;
  };
  if (setting(schema::Misc::kTestRunSpeed).value_or(0) < 1) {
    problems.Add(project.place, "the template needs a testrunspeed of at least 1");
  }
  if (!setting(schema::Misc::kHomingOffset)) {
    problems.Add(project.place, "the template needs a homing offset");
  }
}

}  // namespace

void CheckTemplate(const Catalogue& catalogue, Problems& problems) {
  CheckMachine(catalogue, problems);
  for (const TemplateValue& value : catalogue.project.values) {
    CheckValue(catalogue, value, problems);
  }
  if (catalogue.project.distance > 0) CheckShownCounts(catalogue, problems);
  CheckSettings(catalogue.project, problems);
}

std::vector<TableImage> TemplateTables(const Catalogue& catalogue) {
  return {ParameterRows(catalogue), SettingRows(catalogue), BlankRows(schema::Position::kTable, {}),
          BlankRows(schema::Zone::kTable, schema::Zone::kBit),
          BlankRows(schema::Jog::kTable, schema::Jog::kBit)};
}

}  // namespace velmoor::catalogue
