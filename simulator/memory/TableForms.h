// The forms of table fields on the wire: what is accepted, and how it is kept and told.
//
// Every function gives the form in which the field is kept, padded as the amplifier pads it, or
// nothing for a text that it refuses. An empty text is a blank field and is kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmoor {

// `field` 0 to 7: position, speed, registration distance, registration speed, outputs, event, loop,
// next. Card firmware below 3 refuses the events SEL5 and SEL6.
[[nodiscard]] std::optional<std::string> NormalIndexField(std::size_t field, std::string_view text,
                                                          int firmware);
[[nodiscard]] std::optional<std::string> NormalZoneLimit(std::string_view text);
[[nodiscard]] std::optional<std::string> NormalJogSpeed(std::string_view text);

// A whole number with `digits` places behind its sign, of which only "-" is told.
[[nodiscard]] std::string PaddedNumber(long long value, std::size_t digits);
// The whole number that a field tells, with or without a sign; 0 for any other text.
[[nodiscard]] std::int64_t TableNumber(std::string_view text);

}  // namespace velmoor
