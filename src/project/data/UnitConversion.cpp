#include "project/data/UnitConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

double Checked(double factor) {
  if (!std::isfinite(factor) || factor == 0) throw NumberError("Division by zero");
  return factor;
}

}  // namespace

std::optional<UnitKind> UnitKindOf(std::string_view strPn) {
  using enum UnitKind;
  static constexpr std::array<std::pair<std::string_view, UnitKind>, 12> kTable{{
      {"Pn81B", distance},
      {"Pn81C", distance},
      {"Pn81D", distance},
      {"Pn81E", speed},
      {"Pn81F", acceleration},
      {"Pn820", acceleration},
      {"Pn821", distance},
      {"Pn822", distance},
      {"Pn825", speed},
      {"Pn826", speed},
      {"Pn827", speed},
      {"Pn828", distance},
  }};
  const auto* const found = std::find_if(kTable.begin(), kTable.end(),
                                         [&](const auto& entry) { return entry.first == strPn; });
  if (found == kTable.end()) return std::nullopt;
  return found->second;
}

std::string UnitWord(UnitKind kind) {
  switch (kind) {
    case UnitKind::distance:
      return "distance";
    case UnitKind::speed:
      return "speed";
    case UnitKind::acceleration:
      return "acceleration";
  }
  return {};
}

double FactorOf(const Project& project, UnitKind kind) {
  switch (kind) {
    case UnitKind::distance:
      return Checked(project.ConversionForDistance());
    case UnitKind::speed:
      return Checked(project.ConversionForSpeed());
    case UnitKind::acceleration:
      return Checked(project.ConversionForAcceleration());
  }
  throw NumberError("Unknown kind of unit");
}

Units UnitsOf(const Project& project) {
  Units units{project.Resolution(), project.DistanceUnits(), project.TimeUnits(), {}};
  units.factors = {project.ConversionForDistance(), project.ConversionForSpeed(),
                   project.ConversionForAcceleration(), project.ConversionForTime()};
  return units;
}

std::string PlainCount(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  if (trimmed.empty() || trimmed == "-") return std::string(trimmed);
  return NumberText(Int32FromText(trimmed));
}

std::string CountsToUnits(double count, double factor) {
  return NumberText(count / Checked(factor));
}

std::string CountsToUnits(double count, double factor, int resolution) {
  return FixedText(count / Checked(factor), resolution);
}

std::string UnitsToCounts(std::string_view text, double factor) {
  const auto number = ParseFloat(text);
  if (!number) throw NumberError("Type mismatch: '" + std::string(text) + "' is not a number");
  return NumberText(ToInt32(*number * Checked(factor)));
}

LimitedCounts UnitsToLimitedCounts(std::string_view text, double factor, int resolution) {
  const auto number = ParseFloat(text);
  LimitedCounts result;
  result.text = text;
  if (!number) return result;
  result.valid = true;
  const double counts = RoundHalfEven(*number * Checked(factor));
  if (counts >= kMostCounts) {
    result.counts = kMostCounts;
    result.clamped = counts > kMostCounts;
  } else if (counts < -kMostCounts) {
    result.counts = -kMostCounts;
    result.clamped = true;
  } else {
    result.counts = ToInt32(counts);
  }
  if (result.clamped) result.text = CountsToUnits(result.counts, factor, resolution);
  return result;
}

}  // namespace velmoor
