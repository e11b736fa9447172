#include "online/TerminalScript.h"

#include <stdexcept>

#include "platform/Bounds.h"
#include "platform/Numbers.h"

namespace velmoor {

std::vector<std::string> ScriptLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = Trim(text.substr(0, end));
    // An empty line would go out as a line of its own, which nothing answers.
    if (line.size() > bounds::kScriptLine) {
      throw std::runtime_error("Line " + NumberText(lines.size() + 1) +
                               " of the script is longer than any command.");
    }
    if (!line.empty()) lines.emplace_back(line);
    if (lines.size() > bounds::kScriptLines) {
      throw std::runtime_error("The script has more than " + NumberText(bounds::kScriptLines) +
                               " lines.");
    }
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string TextOfLines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

}  // namespace velmoor
