// Command lines of the console program and of the simulator: one word a line.

#include "console/Commands.h"
#include "Target.h"
#include "online/TerminalScript.h"
#include "platform/cli/ProgramTable.h"
#include "simulator/program/ProgramOptions.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  const std::vector<std::string> words = ScriptLines(fuzz::Text(data, size));
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
