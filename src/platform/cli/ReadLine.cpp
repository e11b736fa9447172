// The one place that sees the library for command lines.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

#include "platform/cli/ProgramTable.h"

namespace velmoor {
namespace {

constexpr int kMany = 1 << 20;

// The library's objects of one command, or of a program without commands.
struct Reader {
  CLI::App app;
  std::vector<CLI::Option*> arguments;
  std::map<const CLI::Option*, std::string> options;  // by our names
};

void AddOption(Reader& reader, const OptionEntry& entry) {
  CLI::Option* option = nullptr;
  if (entry.value.name.empty()) {
    option = reader.app.add_flag("--" + entry.name)->disable_flag_override();
  } else {
    option = reader.app.add_option("--" + entry.name)->type_size(1)->allow_extra_args(false);
  }
  option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  reader.options[option] = entry.name;
}

void AddArgument(Reader& reader, const ArgumentEntry& entry) {
  // The library tells arguments apart by name, and two of them may bear one.
  const std::string name = "argument" + std::to_string(reader.arguments.size());
  CLI::Option* const argument = reader.app.add_option(name)->type_size(1);
  argument->expected(1, entry.many ? kMany : 1)->allow_extra_args(entry.many);
  reader.arguments.push_back(argument);
}

// In the library's list an option stands once for each time that it was given.
std::vector<CommandLine::Option> OptionsOf(const Reader& reader) {
  std::vector<CommandLine::Option> given;
  std::map<const CLI::Option*, std::size_t> taken;
  for (const CLI::Option* const option : reader.app.parse_order()) {
    const auto known = reader.options.find(option);
    if (known == reader.options.end()) continue;
    const bool flag = option->get_items_expected_max() == 0;
    const std::size_t at = taken[option]++;
    given.push_back({known->second, flag ? std::string() : option->results().at(at)});
  }
  return given;
}

[[noreturn]] void RefuseOption(const std::string& word) {
  throw UsageError("Option " + word.substr(0, word.find('=')) + " is not known here");
}

bool IsOption(const std::string& word) {
  return word.size() > 1 && word.front() == '-';
}

// Throws UsageError for a word that nothing took. The library keeps the mark that ends the options
// among them.
void RefuseRest(const CLI::App& app) {
  std::vector<std::string> rest = app.remaining(true);
  std::erase(rest, "--");
  if (rest.empty()) return;
  if (IsOption(rest.front())) RefuseOption(rest.front());
  throw UsageError("'" + rest.front() + "' is one argument too many");
}

// Where an option stands last or takes nothing after its "=".
void RefuseMissingValues(const std::vector<OptionEntry>& options,
                         const std::vector<std::string>& words) {
  for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
    for (const OptionEntry& option : options) {
      if (option.value.name.empty()) continue;
      const bool last = words[i] == "--" + option.name && i + 1 == words.size();
      if (last || words[i] == "--" + option.name + "=") {
        throw UsageError("Option --" + option.name + " needs a value");
      }
    }
  }
}

CommandLine Collect(const Reader& reader, const std::string& command,
                    const std::vector<ArgumentEntry>& entries) {
  std::vector<std::string> arguments;
  if (!command.empty()) arguments.push_back(command);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::vector<std::string> given = reader.arguments[i]->results();
    if (given.empty() && entries[i].required) {
      throw UsageError(entries[i].value.name + " is missing");
    }
    for (const std::string& word : given) {
      if (word.empty()) throw UsageError(entries[i].value.name + " is empty");
      arguments.push_back(word);
    }
  }
  return {std::move(arguments), OptionsOf(reader)};
}

// Reads what stands behind `command`, whose entries these are.
CommandLine Read(const std::string& command, const std::vector<ArgumentEntry>& arguments,
                 const std::vector<OptionEntry>& options, std::vector<std::string> words) {
  Reader reader;
  reader.app.set_help_flag();
  // "/" begins a path on every system.
  reader.app.allow_windows_style_options(false);
  reader.app.allow_extras();
  for (const ArgumentEntry& argument : arguments) AddArgument(reader, argument);
  for (const OptionEntry& option : options) AddOption(reader, option);
  RefuseMissingValues(options, words);
  // The library takes the words from the end.
  std::ranges::reverse(words);
  try {
    reader.app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  RefuseRest(reader.app);
  return Collect(reader, command, arguments);
}

}  // namespace

const OptionEntry& OptionNamed(const ProgramTable& table, std::string_view name) {
  const auto found = std::ranges::find(table.options, name, &OptionEntry::name);
  if (found == table.options.end()) throw std::logic_error("no option " + std::string(name));
  return *found;
}

CommandLine ReadLine(const ProgramTable& table, const std::vector<std::string>& words) {
  if (table.commands.empty()) return Read("", table.arguments, table.options, words);
  if (words.empty()) throw UsageError("A command is missing");
  if (IsOption(words.front())) RefuseOption(words.front());
  const auto command = std::ranges::find(table.commands, words.front(), &CommandEntry::name);
  if (command == table.commands.end()) throw UsageError("'" + words.front() + "' is no command");
  std::vector<OptionEntry> options;
  for (const std::string& name : command->options) options.push_back(OptionNamed(table, name));
  return Read(command->name, command->arguments, options, {words.begin() + 1, words.end()});
}

}  // namespace velmoor
