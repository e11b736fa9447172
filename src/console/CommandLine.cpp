#include "console/CommandLine.h"

namespace velmoor {

CommandLine::CommandLine(const std::vector<std::string>& words,
                         const std::set<std::string>& flags) {
  bool optionsEnded = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (optionsEnded || word.size() < 3 || word.substr(0, 2) != "--") {
      if (word == "--" && !optionsEnded) {
        optionsEnded = true;
      } else {
        arguments_.push_back(word);
      }
      continue;
    }
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(2, equals == std::string::npos ? equals : equals - 2);
    if (flags.contains(name)) {
      options_.push_back({name, ""});
    } else if (equals != std::string::npos) {
      options_.push_back({name, word.substr(equals + 1)});
    } else if (i + 1 < words.size()) {
      options_.push_back({name, words[++i]});
    } else {
      throw UsageError("Option --" + name + " needs a value");
    }
  }
}

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

void CommandLine::AllowOnly(const std::set<std::string>& allowed) const {
  for (const Option& given : options_) {
    if (!allowed.contains(given.name)) {
      throw UsageError("Option --" + given.name + " is not known to this command");
    }
  }
}

}  // namespace velmoor
