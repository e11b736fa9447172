#include "simulator/memory/AmplifierMemory.h"

#include "platform/Numbers.h"
#include "simulator/memory/TableForms.h"

namespace velmoor {
namespace {

constexpr std::size_t kPlaces = 8;

bool IsPlain(std::string_view text) {
  const std::size_t first = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  return text.size() > first && text.size() - first <= kPlaces &&
         text.find_first_not_of("0123456789", first) == std::string_view::npos;
}

// The number behind a text as it comes over the wire.
std::optional<std::int64_t> ParseValue(FactoryKind kind, std::string_view text) {
  if (kind == FactoryKind::nibble) {
    const auto digits = text.size() <= kPlaces ? ParseHex(text) : std::nullopt;
    if (!digits || *digits > 0xFFFF) return std::nullopt;
    return *digits;
  }
  if (!IsPlain(text) || (kind == FactoryKind::text8 && text[0] == '-')) return std::nullopt;
  return ParseWhole(text);
}

bool IsWithinLimits(const FactoryValue& factory, std::int64_t value) {
  if (factory.kind != FactoryKind::decimal) return true;
  const auto low = ParseWhole(factory.min);
  const auto high = ParseWhole(factory.max);
  return (!low || value >= *low) && (!high || value <= *high);
}

}  // namespace

void ParameterMemory::Init() {
  for (const FactoryValue& factory : FactoryValues()) {
    cells_[ParseHex(factory.pn).value_or(0)] =
        Cell{&factory, ParseValue(factory.kind, factory.initial).value_or(0)};
  }
}

std::optional<std::string> ParameterMemory::Read(std::uint32_t pn) const {
  const auto cell = cells_.find(pn);
  if (cell == cells_.end()) return std::nullopt;
  const auto& [factory, value] = cell->second;
  if (factory->kind == FactoryKind::nibble) {
    return "0000" + HexText(static_cast<std::uint32_t>(value), 4);
  }
  return PaddedNumber(value, kPlaces);
}

bool ParameterMemory::Write(std::uint32_t pn, std::string_view text) {
  const auto cell = cells_.find(pn);
  if (cell == cells_.end()) return false;
  const FactoryValue& factory = *cell->second.factory;
  const auto value = ParseValue(factory.kind, text);
  if (!value || !IsWithinLimits(factory, *value)) return false;
  cell->second.value = *value;
  return true;
}

std::int64_t ParameterMemory::Value(std::uint32_t pn) const {
  const auto cell = cells_.find(pn);
  return cell != cells_.end() ? cell->second.value : 0;
}

}  // namespace velmoor
