// Reads the catalogue's files into the model. What is malformed goes to `problems`.
#pragma once

#include "compiler/Model.h"

namespace velmoor::catalogue {

struct SourceFile {
  std::string name;
  std::string text;
};

// The subject of a file is told by the beginning of its name: "parameters", "lists", "digits",
// "alarms", "template" or "language". Parameter files are taken in the order of the parameters.
[[nodiscard]] Catalogue ReadCatalogue(const std::vector<SourceFile>& files, Problems& problems);

}  // namespace velmoor::catalogue
