// Counts and user units: the one place with the arithmetic between them.
//
// A factor is the number of counts for one unit. A factor that is 0 or not finite is an error
// (NumberError): no such number is ever shown, stored or sent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "project/data/Units.h"
#include "session/Project.h"

namespace velmoor {

// The largest count that a distance, a speed or an acceleration may have, either way.
inline constexpr std::int32_t kMostCounts = 99999999;

// The kind of unit in which a parameter is shown, or nothing for a plain number or a list.
[[nodiscard]] std::optional<UnitKind> UnitKindOf(std::string_view strPn);
// "distance", "speed" or "acceleration": the word that stands in the unit column of such a row.
[[nodiscard]] std::string UnitWord(UnitKind kind);

[[nodiscard]] double FactorOf(const Project& project, UnitKind kind);
// All of them at once.
[[nodiscard]] Units UnitsOf(const Project& project);

// The count in units, as text with up to 15 significant digits.
[[nodiscard]] std::string CountsToUnits(double count, double factor);
// The same with a fixed number of decimals.
[[nodiscard]] std::string CountsToUnits(double count, double factor, int resolution);

// A count as an answer spells it, in its plain spelling: "00012" reads "12"; empty and "-" stay.
// Throws NumberError for what is no number.
[[nodiscard]] std::string PlainCount(std::string_view text);

// The number in the text times the factor, rounded half to even, as text. Throws NumberError for a
// text that is no number, which must never become a command, and when the count exceeds 32 bits.
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
