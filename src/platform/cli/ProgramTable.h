// What a program's command line may hold: one table, from which the line is read, the help written
// and the completions of the shells made.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/cli/CommandLine.h"

namespace velmoor {

// What an argument or an option takes.
struct ValueEntry {
  enum class Kind { text, file, folder, words };
  std::string name;  // in the help, such as "FILE"
  Kind kind = Kind::text;
  std::vector<std::string> words = {};  // of Kind::words, to choose from; the program checks them
  bool list = false;                    // several of the words, with commas between
};

struct ArgumentEntry {
  ValueEntry value;
  bool required = true;
  bool many = false;  // as often as one likes; the last argument alone
};

struct OptionEntry {
  std::string name;  // without its dashes
  std::string about;
  ValueEntry value = {};  // without a name: a flag
  bool repeats = false;
};

struct CommandEntry {
  std::string name;
  std::string about;
  std::vector<ArgumentEntry> arguments = {};
  std::vector<std::string> options = {};  // names from the program's options
};

struct ProgramTable {
  std::string name;
  std::string about;
  // Without commands, or of every command by its name.
  std::vector<OptionEntry> options;
  std::vector<ArgumentEntry> arguments = {};
  std::vector<CommandEntry> commands = {};
  std::string notes = {};  // what the help says at its end
};

// The option of that name. The table must have it.
[[nodiscard]] const OptionEntry& OptionNamed(const ProgramTable& table, std::string_view name);

// Reads a line. "--" ends the options, "--name=value" is "--name value". Throws UsageError for what
// the table does not have, for a value or an argument that is missing, and for an empty argument.
[[nodiscard]] CommandLine ReadLine(const ProgramTable& table,
                                   const std::vector<std::string>& words);

// The whole help, or that of one command.
[[nodiscard]] std::string HelpText(const ProgramTable& table);
[[nodiscard]] std::string HelpText(const ProgramTable& table, const CommandEntry& command);
[[nodiscard]] std::string VersionText(const ProgramTable& table);

// A script that teaches a shell the program's line: "bash", "zsh" or "fish". Throws UsageError for
// any other.
[[nodiscard]] std::string CompletionScript(const ProgramTable& table, std::string_view shell);

// What is asked of the program itself and not of its work: --help, --version, --completion SHELL.
// Empty: none of them. Throws UsageError.
[[nodiscard]] std::string AnswerToTheShell(const ProgramTable& table,
                                           const std::vector<std::string>& words);

}  // namespace velmoor
