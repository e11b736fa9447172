// Command lines of the console program and of the simulator: one word a line.

#include "Target.h"
#include "console/CommandLine.h"
#include "online/TerminalScript.h"
#include "simulator/program/ProgramOptions.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  const std::vector<std::string> words = ScriptLines(fuzz::Text(data, size));
  try {
    const CommandLine line(words, {"yes", "new", "all"});
    (void)line.Has("yes");
    (void)line.Value("port");
    line.AllowOnly({"port", "axis", "yes"});
    (void)line.Required("port");
  } catch (const UsageError&) {
    // Words for the user.
  }
  std::vector<const char*> plain;
  plain.reserve(words.size());
  for (const std::string& word : words) plain.push_back(word.c_str());
  try {
    (void)ParseOptions(plain);
  } catch (const std::invalid_argument&) {
    // Words for the user.
  }
  return 0;
}
