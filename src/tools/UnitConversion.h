// Counts and user units: the one place with the arithmetic between them.
//
// A factor is the number of counts for one unit. A factor that is 0 or not finite is an error
// (NumberError): no such number is ever shown, stored or sent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/Project.h"

namespace velmoor {

// The largest count that a distance, a speed or an acceleration may have, either way.
inline constexpr std::int32_t kMostCounts = 99999999;

// The kind of unit in which a parameter is shown, or nothing for a plain number or a list.
[[nodiscard]] std::optional<UnitKind> UnitKindOf(std::string_view strPn);
// "distance", "speed" or "acceleration": the word that stands in the unit column of such a row.
[[nodiscard]] std::string UnitWord(UnitKind kind);

[[nodiscard]] double FactorOf(const Project& project, UnitKind kind);

// The count in units, as text with up to 15 significant digits.
[[nodiscard]] std::string CountsToUnits(double count, double factor);
// The same with a fixed number of decimals.
[[nodiscard]] std::string CountsToUnits(double count, double factor, int resolution);

// The number in the text times the factor, rounded half to even, as text; "0" for a text that is no
// number. Throws NumberError when the count exceeds 32 bits.
[[nodiscard]] std::string UnitsToCounts(std::string_view text, double factor);

// The parameter tools' form, which never exceeds kMostCounts.
struct LimitedCounts {
  bool valid = false;  // the text is a number
  std::int32_t counts = 0;
  bool clamped = false;  // a limit replaced the value; `text` then shows that limit
  std::string text;      // the value as it is to be shown
};
[[nodiscard]] LimitedCounts UnitsToLimitedCounts(std::string_view text, double factor,
                                                 int resolution);

}  // namespace velmoor
