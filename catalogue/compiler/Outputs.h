// What the catalogue becomes: the catalogue file, the project template, and the factory values for
// the simulated amplifier. The model has passed its checks, except that a translation may name what
// does not exist, which becomes a problem here.
#pragma once

#include <string>
#include <vector>

#include "compiler/Model.h"
#include "compiler/TableImage.h"

namespace velmoor::catalogue {

[[nodiscard]] std::vector<TableImage> CatalogueTables(const Catalogue& catalogue,
                                                      Problems& problems);
[[nodiscard]] std::vector<TableImage> TemplateTables(const Catalogue& catalogue);
// One line a parameter: {"80A", "3", "0", "15", FactoryKind::decimal},
[[nodiscard]] std::string FactoryValues(const Catalogue& catalogue);

}  // namespace velmoor::catalogue
