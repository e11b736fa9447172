// Texts of this program are UTF-8; the system's are UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace velmoor::win32 {

[[nodiscard]] std::wstring Wide(std::string_view text);
[[nodiscard]] std::string Narrow(std::wstring_view text);
// The system's words for an error of GetLastError, without a line end.
[[nodiscard]] std::string SystemText(unsigned long error);
// A variable of the environment; empty where there is none.
[[nodiscard]] std::string Variable(const wchar_t* name);

}  // namespace velmoor::win32
