#include "platform/toml/TomlTexts.h"

// Some systems deliver it compiled as well: this file needs none of that.
#define TOML_HEADER_ONLY 1
#include <toml++/toml.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/Numbers.h"

namespace velmoor::toml_texts {
namespace {

using Kind = KeyedNode::Kind;

KeyedNode NodeOf(const toml::node& node);

int LineOf(const toml::source_region& source) {
  return static_cast<int>(std::max<toml::source_index>(source.begin.line, 1));
}

// The library keeps keys sorted; whoever tells of them wants the order of the text.
std::vector<KeyedEntry> EntriesOf(const toml::table& table) {
  struct Placed {
    toml::source_position at;
    KeyedEntry entry;
  };
  std::vector<Placed> placed;
  for (const auto& [key, value] : table) {
    KeyedEntry entry{std::string(key.str()), NodeOf(value)};
    // A table's own place is that of its heading; a key in the text has a better one.
    if (!value.is_table()) entry.value.line = LineOf(key.source());
    placed.push_back({key.source().begin, std::move(entry)});
  }
  std::ranges::stable_sort(placed, [](const Placed& a, const Placed& b) { return a.at < b.at; });
  std::vector<KeyedEntry> entries;
  for (Placed& each : placed) entries.push_back(std::move(each.entry));
  return entries;
}

KeyedNode NodeOf(const toml::node& node) {
  KeyedNode result{Kind::other, LineOf(node.source()), {}};
  if (const toml::table* const table = node.as_table()) {
    result.kind = Kind::table;
    result.entries = EntriesOf(*table);
  } else if (const toml::array* const list = node.as_array()) {
    result.kind = Kind::list;
    for (const toml::node& item : *list) result.items.push_back(NodeOf(item));
  } else if (const auto* const text = node.as_string()) {
    result.kind = Kind::text;
    result.text = text->get();
  } else if (const auto* const whole = node.as_integer()) {
    result.kind = Kind::whole;
    result.text = NumberText(whole->get());
  } else if (const auto* const number = node.as_floating_point()) {
    if (!std::isfinite(number->get())) return result;
    result.kind = Kind::number;
    result.text = NumberText(number->get());
  }
  return result;
}

}  // namespace

KeyedNode TomlTexts::Read(std::string_view text) const {
  try {
    return NodeOf(toml::parse(text));
  } catch (const toml::parse_error& error) {
    throw KeyedTextError(LineOf(error.source()), std::string(error.description()));
  }
}

}  // namespace velmoor::toml_texts
