// Combo list texts: items joined by "|", an item's position is its controller value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

// The position of the first item equal to `item`, or 0 when none is.
[[nodiscard]] std::int32_t ComboListIndex(std::string_view list, std::string_view item);
// The item at `index`; beyond the end the last one, before the start the first.
[[nodiscard]] std::string ComboListItem(std::string_view list, std::int32_t index);

}  // namespace velmoor
