// The project's settings that are no parameter of the hardware, by name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmoor {

// The stored text, or nothing where the project holds no such setting. Throws DatabaseError.
[[nodiscard]] std::optional<std::string> ReadMiscSetting(const std::string& path,
                                                         std::string_view name);
// Stores the text, adding the setting where it is absent. Throws DatabaseError.
void WriteMiscSetting(const std::string& path, std::string_view name, std::string_view value);

}  // namespace velmoor
