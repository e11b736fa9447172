#include "compiler/Model.h"

#include <algorithm>

namespace velmoor::catalogue {
namespace {

template <typename Entry>
const Entry* Find(const std::vector<Entry>& entries, std::string Entry::*key,
                  const std::string& wanted) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [&](const Entry& entry) { return entry.*key == wanted; });
  return found == entries.end() ? nullptr : &*found;
}

template <typename Entry>
std::size_t Key(const std::vector<Entry>& entries, const Entry* entry) {
  return entry == nullptr ? 0 : static_cast<std::size_t>(entry - entries.data()) + 1;
}

}  // namespace

bool IsUserUnit(const std::string& unit) {
  return unit == "distance" || unit == "speed" || unit == "acceleration";
}

const Parameter* FindParameter(const Catalogue& catalogue, const std::string& pn) {
  return Find(catalogue.parameters, &Parameter::pn, pn);
}
const List* FindList(const Catalogue& catalogue, const std::string& name) {
  return Find(catalogue.lists, &List::name, name);
}
const Digits* FindDigits(const Catalogue& catalogue, const std::string& name) {
  return Find(catalogue.digits, &Digits::name, name);
}

std::size_t ListKey(const Catalogue& catalogue, const std::string& name) {
  return Key(catalogue.lists, FindList(catalogue, name));
}
std::size_t DigitsKey(const Catalogue& catalogue, const std::string& name) {
  return Key(catalogue.digits, FindDigits(catalogue, name));
}

}  // namespace velmoor::catalogue
