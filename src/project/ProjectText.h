// A project as text that people and version control read, TOML: the machine, every parameter with
// its name and unit, the tables, in one order and in one spelling. docs/guide/text.md tells the
// form.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

class clsHX7Project;

enum class TextScope { changed, everything };  // what differs from a new project, or all of it

// What the project holds; edits that windows have not applied are none of it. Two exports of the
// same contents are the same bytes.
[[nodiscard]] std::string ExportText(clsHX7Project& project, TextScope scope);

// Puts a text into the project, and marks what changed; `name` is the file's. Every value goes
// through the rules of typing it; with one that is refused nothing is changed. Each refusal is one
// line, "axis1.toml:12: ...", in the order of the text, the first bounds::kFaultsTold of them.
// Empty: done, and the project needs saving.
[[nodiscard]] std::vector<std::string> ImportText(clsHX7Project& project, std::string_view text,
                                                  const std::string& name);

}  // namespace velmoor
