// Arithmetic of its own for what the walk judges: decimal texts, counts, and the numbers that one
// unit is worth. Nothing here calls the program's conversions, which are what is judged.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velmoor::walk {

enum class Kind { plain, distance, speed, acceleration };

// Of a parameter such as "Pn81B".
[[nodiscard]] Kind KindOf(const std::string& pn);

// Counts for one unit.
[[nodiscard]] long double FactorFor(Kind kind, int resolution, const std::string& time);

// The number of a plain decimal text, however long; nothing for any other text.
[[nodiscard]] std::optional<long double> Number(const std::string& text);

// The decimal text with that many places, rounded half away from zero digit by digit; never
// "-0.00".
[[nodiscard]] std::string Rounded(const std::string& text, int places);
// A number as such a text.
[[nodiscard]] std::string Fixed(long double value, int places);
// The digits behind the point.
[[nodiscard]] int PlacesOf(const std::string& text);

// The text times the factor, to the nearest count, ties to even.
[[nodiscard]] long double CountsOf(const std::string& text, long double factor);
// The count may stand beside the text: it is the nearest one, either of two at a tie.
[[nodiscard]] bool Means(const std::string& text, long double factor, const std::string& count);

}  // namespace velmoor::walk
