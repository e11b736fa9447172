// Command lines of the console program and of the simulator: one word a line.

#include <stdexcept>

#include "Target.h"
#include "console/Commands.h"
#include "online/TerminalScript.h"
#include "platform/cli/ProgramTable.h"
#include "simulator/program/ProgramOptions.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  std::vector<std::string> words;
  try {
    words = ScriptLines(fuzz::Text(data, size));
  } catch (const std::runtime_error&) {
    // More than any script.
  }
  for (const ProgramTable* table : {&ConsoleTable(), &SimulatorTable()}) {
    try {
      if (!AnswerToTheShell(*table, words).empty()) continue;
      const CommandLine line = ReadLine(*table, words);
      if (table == &SimulatorTable()) (void)OptionsOf(line);
    } catch (const UsageError&) {
      // Words for the user.
    }
  }
  return 0;
}
