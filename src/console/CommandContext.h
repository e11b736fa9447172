// What every command of velmoorctl gets, and the session it works in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/Commands.h"
#include "console/ConsoleSession.h"
#include "platform/cli/CommandLine.h"
#include "platform/cli/ProgramTable.h"

namespace velmoor {

struct Context {
  const CommandLine& line;
  const ConsoleProgram& program;

  // The command's own name is argument 0.
  [[nodiscard]] const std::string& Argument(std::size_t i) const { return line.Arguments().at(i); }
};

// A command: what the help tells of it, and what it does. False after a failure, of which the user
// was told, or after a difference.
struct ConsoleCommand {
  CommandEntry entry;
  bool (*run)(const Context& context);
};
using Commands = std::vector<ConsoleCommand>;

// ---- for the entries
[[nodiscard]] inline ArgumentEntry FileArgument() {
  return {.value = {"FILE", ValueEntry::Kind::file}};
}
[[nodiscard]] inline ArgumentEntry OneOf(const std::string& name,
                                         const std::vector<std::string>& words) {
  return {.value = {name, ValueEntry::Kind::words, words}};
}

// Builds the session by the options --axis, --port and --motor-size. Throws UsageError.
class Work {
 public:
  explicit Work(const Context& context);

  [[nodiscard]] bool Started() const { return started_; }
  // With the option --read-only one of a newer version too. What an opening that succeeds has told
  // is a remark: the command does what it was asked for.
  [[nodiscard]] bool Open(const std::string& fileName);
  // Started, and online; false after a failure, of which the user was told behind "Cannot go
  // online!".
  [[nodiscard]] bool Connect() {
    return started_ && session_.Hardware().connection.GoOnlineFor("");
  }
  // Saves the project. False: the file is not as it was opened, or has another name, and --yes was
  // not said; the user was told. Throws FileError.
  [[nodiscard]] bool Save();
  ConsoleSession& session() { return session_; }
  clsHX7Project& project() { return session_.project(); }

 private:
  ConsoleSession session_;
  ConsoleBoxes& boxes_;
  NewerProject newer_;
  std::string givenSize_;  // of the motor, by --motor-size; empty: as the project says
  bool started_ = false;
};

// The items of a list such as "index,zone", blanks around them and empty ones included.
[[nodiscard]] std::vector<std::string> SplitAtCommas(std::string_view list);

// Prints each on a line of its own.
void TellFaults(const Context& context, const std::vector<std::string>& faults);

// Agrees to every question, by --yes. Throws UsageError without it.
void RequireAgreement(const Context& context);

}  // namespace velmoor
