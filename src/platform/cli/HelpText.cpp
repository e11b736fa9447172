#include <algorithm>

#include "platform/cli/ProgramTable.h"

namespace velmoor {
namespace {

constexpr std::size_t kAboutColumn = 32;
constexpr std::size_t kWidth = 92;

std::string Usage(const ProgramTable& table, const std::string& command,
                  const std::vector<ArgumentEntry>& arguments, bool options) {
  std::string text = table.name + (command.empty() ? "" : " " + command);
  for (const ArgumentEntry& argument : arguments) {
    const std::string word = argument.value.name + (argument.many ? "..." : "");
    text += argument.required ? " " + word : " [" + word + "]";
  }
  return text + (options ? " [OPTION...]" : "");
}

// `left`, and `about` in a column of its own, broken between words.
std::string Entry(const std::string& left, const std::string& about) {
  std::string text = "  " + left;
  std::size_t column = text.size();
  if (column + 1 > kAboutColumn) {
    text += '\n';
    column = 0;
  }
  text.append(kAboutColumn - column, ' ');
  column = kAboutColumn;
  for (std::size_t begin = 0; begin < about.size();) {
    const std::size_t end = std::min(about.find(' ', begin), about.size());
    const std::size_t size = end - begin;
    if (column > kAboutColumn && column + size + 1 > kWidth) {
      text += '\n' + std::string(kAboutColumn, ' ');
      column = kAboutColumn;
    } else if (column > kAboutColumn) {
      text += ' ';
      ++column;
    }
    text += about.substr(begin, size);
    column += size;
    begin = end + 1;
  }
  return text + '\n';
}

std::string OptionLine(const OptionEntry& option) {
  std::string left = "--" + option.name;
  if (!option.value.name.empty()) left += " " + option.value.name;
  return Entry(left, option.about);
}

std::string OwnOptions() {
  return Entry("--help", "this text") + Entry("--version", "the program's version");
}

}  // namespace

std::string HelpText(const ProgramTable& table) {
  std::string text = table.name + ": " + table.about + "\n\n";
  if (table.commands.empty()) {
    text += "  " + Usage(table, "", table.arguments, !table.options.empty()) + "\n\n";
  } else {
    for (const CommandEntry& command : table.commands) {
      text += Entry(Usage(table, command.name, command.arguments, false), command.about);
    }
    text += '\n';
  }
  for (const OptionEntry& option : table.options) text += OptionLine(option);
  text += OwnOptions();
  if (!table.commands.empty()) {
    text += "\n" + table.name + " COMMAND --help tells the options of one command.\n";
  }
  return table.notes.empty() ? text : text + "\n" + table.notes;
}

std::string HelpText(const ProgramTable& table, const CommandEntry& command) {
  std::string text = Usage(table, command.name, command.arguments, !command.options.empty()) +
                     "\n\n" + command.about + "\n\n";
  for (const std::string& name : command.options) text += OptionLine(OptionNamed(table, name));
  return text + OwnOptions();
}

std::string VersionText(const ProgramTable& table) {
  return table.name + " " VELMOOR_VERSION "\n";
}

std::string AnswerToTheShell(const ProgramTable& table, const std::vector<std::string>& words) {
  const auto end = std::ranges::find(words, "--");
  if (std::find(words.begin(), end, "--help") != end) {
    for (const CommandEntry& command : table.commands) {
      if (words.front() == command.name) return HelpText(table, command);
    }
    return HelpText(table);
  }
  if (std::find(words.begin(), end, "--version") != end) return VersionText(table);
  if (words.size() == 2 && words[0] == "--completion") return CompletionScript(table, words[1]);
  return {};
}

}  // namespace velmoor
