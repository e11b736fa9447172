// A project's text as a project, for whoever compares it with one.
#pragma once

#include <string>
#include <vector>

namespace velmoor {

class SessionState;

struct TextProject {
  std::string path;                 // of a project in the program's own folder
  std::vector<std::string> faults;  // where the text was refused; there is no project then
};

// Puts the text into a new project. What the session has open stands aside meanwhile, and no event
// runs. Throws FileError.
[[nodiscard]] TextProject MakeTextProject(SessionState& session, const std::string& textPath);

}  // namespace velmoor
