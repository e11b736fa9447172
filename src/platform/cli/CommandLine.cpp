#include "platform/cli/CommandLine.h"

#include <utility>

namespace velmoor {

CommandLine::CommandLine(std::vector<std::string> arguments, std::vector<Option> options)
    : arguments_(std::move(arguments)), options_(std::move(options)) {}

bool CommandLine::Has(std::string_view option) const {
  return Value(option).has_value();
}

std::optional<std::string> CommandLine::Value(std::string_view option) const {
  for (const Option& given : options_) {
    if (given.name == option) return given.value;
  }
  return std::nullopt;
}

std::string CommandLine::Required(std::string_view option) const {
  const auto value = Value(option);
  if (!value || value->empty()) throw UsageError("Option --" + std::string(option) + " is missing");
  return *value;
}

}  // namespace velmoor
