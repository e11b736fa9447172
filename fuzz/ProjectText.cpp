// A project from text.

#include "project/ProjectText.h"

#include "ProgramSession.h"
#include "Target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  using namespace velmoor::fuzz;
  static ProgramSession session("text");
  clsHX7Project& project = campaign::Program::Project();
  const std::string before = ExportText(project, TextScope::changed);
  if (!ImportText(project, Text(data, size), "text").empty()) {
    Require(ExportText(project, TextScope::changed) == before, "a refusal changes nothing");
    return 0;
  }
  const std::string exported = ExportText(project, TextScope::changed);
  for (const TextScope scope : {TextScope::changed, TextScope::everything}) {
    const std::string text = ExportText(project, scope);
    Require(ImportText(project, text, "text").empty(), "an export can be imported");
    Require(ExportText(project, TextScope::changed) == exported, "an export imports to the same");
  }
  return 0;
}
