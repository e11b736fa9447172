#include <algorithm>

#include "compiler/Outputs.h"
#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor::catalogue {
namespace {

struct Line {
  std::string initial;
  std::string min;
  std::string max;
  std::string kind;
};

Line DigitsLine(const Catalogue& catalogue, const Parameter& parameter) {
  std::string max;
  const auto& counts = FindDigits(catalogue, parameter.choice)->counts;
  for (std::size_t digit = 4; digit-- > 0;) {
    max += HexText(static_cast<std::uint32_t>(std::max(counts[digit], 1) - 1));
  }
  return {parameter.digits, "0000", max, "nibble"};
}

Line FactoryLine(const Catalogue& catalogue, const Parameter& parameter) {
  const std::int64_t initial = parameter.factory.value_or(parameter.limits.initial);
  switch (*parameter.kind) {
    case Kind::digits:
      return DigitsLine(catalogue, parameter);
    case Kind::halves:
      return {PadToDigits(NumberText(initial), 8), "00000000", "99999999", "text8"};
    case Kind::list: {
      const std::size_t items = FindList(catalogue, parameter.choice)->items.size();
      return {NumberText(initial), "0", NumberText(items - 1), "decimal"};
    }
    case Kind::decimal:
      break;
  }
  return {NumberText(initial), NumberText(std::min(initial, parameter.limits.min)),
          NumberText(parameter.limits.max), "decimal"};
}

}  // namespace

std::string FactoryValues(const Catalogue& catalogue) {
  std::string text;
  for (const Parameter& parameter : catalogue.parameters) {
    const Line line = FactoryLine(catalogue, parameter);
    text += "{\"" + parameter.pn.substr(2) + "\", \"" + line.initial + "\", \"" + line.min +
            "\", \"" + line.max + "\", FactoryKind::" + line.kind + "},\n";
  }
  return text;
}

}  // namespace velmoor::catalogue
