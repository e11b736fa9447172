#include "platform/win32/Text.h"

#include <system_error>

#include "platform/win32/Windows.h"

namespace velmoor::win32 {

std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(count), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), count);
  return wide;
}

std::string Narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int count =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(count), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), count, nullptr, nullptr);
  return narrow;
}

std::string SystemText(unsigned long error) {
  std::string text = std::system_category().message(static_cast<int>(error));
  text.erase(text.find_last_not_of("\r\n ") + 1);
  return text;
}

std::string Variable(const wchar_t* name) {
  std::wstring value(32'767, L'\0');  // the longest that there can be
  const DWORD size = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  value.resize(size);
  return Narrow(value);
}

}  // namespace velmoor::win32
