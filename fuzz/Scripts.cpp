// Terminal scripts and logs, and what an amplifier's end of the line makes of any bytes.

#include "Target.h"
#include "online/TerminalScript.h"
#include "simulator/SimulatedLine.h"
#include "simulator/SimulatorConsole.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  std::string_view text = fuzz::Text(data, size);
  std::vector<std::string> lines;
  try {
    lines = ScriptLines(text);
  } catch (const std::runtime_error&) {
    // More than any script.
  }
  fuzz::Require(ScriptLines(TextOfLines(lines)) == lines, "a script that was saved reads the same");
  SimulatedLine line;
  line.AddAmplifier();
  Micros now{0};
  for (const std::string& each : lines) {
    (void)line.Receive(each + "\r", now, 9600);
    now += std::chrono::milliseconds(100);
  }
  (void)line.Receive(text, now, 9600);
  SimulatorConsole console(line);
  for (const std::string& each : lines) (void)console.Execute(each, now);
  return 0;
}
