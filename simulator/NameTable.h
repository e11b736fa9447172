// Tables of the words by which a console knows the members of an enumeration: a range of pairs of
// a name and a value.
#pragma once

#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace velmoor {

template <typename Table>
[[nodiscard]] auto ValueNamed(const Table& table, std::string_view name)
    -> std::optional<decltype(std::begin(table)->second)> {
  for (const auto& [known, value] : table) {
    if (known == name) return value;
  }
  return std::nullopt;
}

// All names, with a blank between them.
template <typename Table>
[[nodiscard]] std::string NamesOf(const Table& table) {
  std::string names;
  for (const auto& [name, value] : table) {
    if (!names.empty()) names += ' ';
    names += name;
  }
  return names;
}

}  // namespace velmoor
