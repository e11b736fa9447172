// What the first page tells of a project: the machine, its figures, and how much of it is set up.
#pragma once

#include <vector>

#include "platform/PrintDocument.h"

namespace velmoor {

class clsHX7Project;

[[nodiscard]] std::vector<PrintFact> FactsOf(clsHX7Project& project);

}  // namespace velmoor
