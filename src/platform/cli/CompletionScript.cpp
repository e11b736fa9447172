// The completions of three shells, from the program's table alone.
#include <algorithm>
#include <array>

#include "platform/cli/ProgramTable.h"

namespace velmoor {
namespace {

using Kind = ValueEntry::Kind;

std::string Joined(const std::vector<std::string>& words, std::string_view between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : std::string(between)) + word;
  return text;
}

// Within single quotes of any shell; "also" is escaped with a backslash first.
std::string Quoted(const std::string& text, std::string_view also = {}) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
      continue;
    }
    if (also.find(c) != std::string_view::npos) quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

// The name as a part of a shell function's.
std::string FunctionName(const ProgramTable& table) {
  std::string name = "_" + table.name;
  std::ranges::replace(name, '-', '_');
  return name;
}

std::vector<const OptionEntry*> OptionsOf(const ProgramTable& table, const CommandEntry& command) {
  std::vector<const OptionEntry*> options;
  for (const std::string& name : command.options) options.push_back(&OptionNamed(table, name));
  return options;
}

std::vector<const OptionEntry*> OptionsOf(const ProgramTable& table) {
  std::vector<const OptionEntry*> options;
  for (const OptionEntry& option : table.options) options.push_back(&option);
  return options;
}

// ---- bash

std::string BashReply(const ValueEntry& value) {
  switch (value.kind) {
    case Kind::file:
      return "compgen -f -- \"$current\"";
    case Kind::folder:
      return "compgen -d -- \"$current\"";
    case Kind::words:
      // In a list, what stands before the last comma stays.
      return value.list ? "compgen -P \"$before\" -W '" + Joined(value.words, " ") +
                              "' -- \"${current##*,}\""
                        : "compgen -W '" + Joined(value.words, " ") + "' -- \"$current\"";
    case Kind::text:
      break;
  }
  return "true";
}

// What may stand next behind one command, or behind the program itself.
std::string BashScope(const std::vector<const OptionEntry*>& options,
                      const std::vector<ArgumentEntry>& arguments, const std::string& indent) {
  std::string words = "--help";
  for (const OptionEntry* const option : options) words += " --" + option->name;
  std::string text = indent + "if [[ $current == -* ]]; then\n" + indent +
                     "  mapfile -t COMPREPLY < <(compgen -W '" + words + "' -- \"$current\")\n" +
                     indent + "  return\n" + indent + "fi\n";
  text += indent + "case $place in\n";
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string at = arguments[i].many ? "*" : std::to_string(i);
    text += indent + "  " + at + ") mapfile -t COMPREPLY < <(" + BashReply(arguments[i].value) +
            ") ;;\n";
  }
  return text + indent + "esac\n";
}

std::string BashScript(const ProgramTable& table) {
  const std::string function = FunctionName(table);
  std::string taking;
  std::string values;
  for (const OptionEntry& option : table.options) {
    if (option.value.name.empty()) continue;
    taking += (taking.empty() ? "--" : " | --") + option.name;
    values += "    --" + option.name + ")\n      mapfile -t COMPREPLY < <(" +
              BashReply(option.value) + ")\n      return\n      ;;\n";
  }
  const bool commands = !table.commands.empty();
  std::string text =
      "# Completion of " + table.name + " for bash.\n" + function + "() {\n" +
      "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
      "  local before= place=0 i\n"
      "  [[ $current == *,* ]] && before=${current%,*},\n"
      "  COMPREPLY=()\n";
  if (!values.empty()) text += "  case $previous in\n" + values + "  esac\n";
  // The place is how many arguments stand before the word.
  text += std::string("  for ((i = ") + (commands ? "2" : "1") + "; i < COMP_CWORD; ++i)); do\n" +
          "    case ${COMP_WORDS[i]} in\n";
  if (!taking.empty()) text += "      " + taking + ") ((++i)) ;;\n";
  text += "      -*) ;;\n      *) ((++place)) ;;\n    esac\n  done\n";
  if (commands) {
    std::string names;
    for (const CommandEntry& command : table.commands) names += command.name + " ";
    text += "  if ((COMP_CWORD == 1)); then\n    mapfile -t COMPREPLY < <(compgen -W '" + names +
            "--help --version' -- \"$current\")\n    return\n  fi\n  case ${COMP_WORDS[1]} in\n";
    for (const CommandEntry& command : table.commands) {
      text += "    " + command.name + ")\n" +
              BashScope(OptionsOf(table, command), command.arguments, "      ") + "      ;;\n";
    }
    text += "  esac\n";
  } else {
    text += BashScope(OptionsOf(table), table.arguments, "  ");
  }
  text += "  [[ ${COMPREPLY[0]-} == *= ]] && compopt -o nospace\n";
  return text + "}\ncomplete -o filenames -F " + function + " " + table.name + "\n";
}

// ---- zsh

std::string ZshAction(const ValueEntry& value) {
  switch (value.kind) {
    case Kind::file:
      return "_files";
    case Kind::folder:
      return "_files -/";
    case Kind::words:
      return value.list ? "_values -s , item " + Joined(value.words, " ")
                        : "(" + Joined(value.words, " ") + ")";
    case Kind::text:
      break;
  }
  return " ";
}

std::string ZshScope(const std::vector<const OptionEntry*>& options,
                     const std::vector<ArgumentEntry>& arguments, const std::string& indent) {
  std::string text = indent + "_arguments -S : \\\n" + indent + "  '--help[this text]'";
  for (const OptionEntry* const option : options) {
    std::string entry = "--" + option->name + "[" + option->about + "]";
    if (!option->value.name.empty()) {
      entry += ":" + option->value.name + ":" + ZshAction(option->value);
    }
    text += " \\\n" + indent + "  " + (option->repeats ? "'*'" : "") + Quoted(entry);
  }
  for (const ArgumentEntry& argument : arguments) {
    const std::string place = argument.many ? "*:" : argument.required ? ":" : "::";
    text += " \\\n" + indent + "  " +
            Quoted(place + argument.value.name + ":" + ZshAction(argument.value));
  }
  return text + "\n";
}

std::string ZshScript(const ProgramTable& table) {
  std::string text = "#compdef " + table.name + "\n# Completion of " + table.name + " for zsh.\n";
  if (table.commands.empty()) return text + ZshScope(OptionsOf(table), table.arguments, "");
  text += "local -a commands=(\n";
  for (const CommandEntry& command : table.commands) {
    text += "  " + Quoted(command.name + ":" + command.about) + "\n";
  }
  text +=
      ")\nif ((CURRENT == 2)); then\n  _describe command commands\n"
      "  _values option --help --version\n  return\nfi\n"
      "local command=$words[2]\nshift words\n((CURRENT--))\ncase $command in\n";
  for (const CommandEntry& command : table.commands) {
    text += "  " + command.name + ")\n" +
            ZshScope(OptionsOf(table, command), command.arguments, "    ") + "    ;;\n";
  }
  return text + "esac\n";
}

// ---- fish

std::string FishValue(const ValueEntry& value) {
  switch (value.kind) {
    case Kind::file:
      return " -F";
    case Kind::folder:
      return " -x -a '(__fish_complete_directories)'";
    case Kind::words:
      return value.list ? " -x -a '(__fish_append , " + Joined(value.words, " ") + ")'"
                        : " -x -a " + Quoted(Joined(value.words, " "));
    case Kind::text:
      break;
  }
  return " -x";
}

std::string FishLine(const ProgramTable& table, const std::string& condition,
                     const std::string& rest) {
  return "complete -c " + table.name +
         (condition.empty() ? std::string() : " -n " + Quoted(condition, "\\")) + rest + "\n";
}

std::string FishScope(const ProgramTable& table, const std::string& condition,
                      const std::vector<const OptionEntry*>& options,
                      const std::vector<ArgumentEntry>& arguments) {
  std::string text;
  for (const OptionEntry* const option : options) {
    text += FishLine(table, condition,
                     " -l " + option->name + " -d " + Quoted(option->about, "\\") +
                         (option->value.name.empty() ? "" : FishValue(option->value)));
  }
  for (const ArgumentEntry& argument : arguments) {
    const ValueEntry& value = argument.value;
    if (value.kind == Kind::words) {
      text += FishLine(table, condition, " -a " + Quoted(Joined(value.words, " ")));
    } else if (value.kind != Kind::text) {
      text += FishLine(table, condition, " -F");
    }
  }
  return text;
}

std::string FishScript(const ProgramTable& table) {
  std::string text = "# Completion of " + table.name + " for fish.\ncomplete -c " + table.name +
                     " -f\n" + FishLine(table, "", " -l help -d 'this text'") +
                     FishLine(table, "", " -l version -d 'the version of the program'");
  if (table.commands.empty()) {
    return text + FishScope(table, "", OptionsOf(table), table.arguments);
  }
  for (const CommandEntry& command : table.commands) {
    text += FishLine(table, "__fish_use_subcommand",
                     " -a " + command.name + " -d " + Quoted(command.about, "\\"));
    text += FishScope(table, "__fish_seen_subcommand_from " + command.name,
                      OptionsOf(table, command), command.arguments);
  }
  return text;
}

}  // namespace

std::string CompletionScript(const ProgramTable& table, std::string_view shell) {
  struct Shell {
    std::string_view name;
    std::string (*script)(const ProgramTable& table);
  };
  constexpr std::array<Shell, 3> kShells{
      {{"bash", BashScript}, {"zsh", ZshScript}, {"fish", FishScript}}};
  const auto* const found = std::ranges::find(kShells, shell, &Shell::name);
  if (found == kShells.end()) throw UsageError("--completion takes bash, zsh or fish");
  return found->script(table);
}

}  // namespace velmoor
