// Refuses a catalogue that is inconsistent, or that the program could not work with.
#pragma once

#include <string_view>

#include "compiler/Model.h"

namespace velmoor::catalogue {

void CheckCatalogue(const Catalogue& catalogue, Problems& problems);

// What the single subjects demand.
void CheckParameters(const Catalogue& catalogue, Problems& problems);
void CheckLists(const Catalogue& catalogue, Problems& problems);
void CheckDigits(const Catalogue& catalogue, Problems& problems);
void CheckAlarms(const Catalogue& catalogue, Problems& problems);
void CheckLanguages(const Catalogue& catalogue, Problems& problems);
// What the program's tools rely on: parameters by name, with their kinds, units and items.
void CheckRequirements(const Catalogue& catalogue, Problems& problems);
// The template's machine and values.
void CheckTemplate(const Catalogue& catalogue, Problems& problems);

// Of meanings that are joined by "|".
[[nodiscard]] int CountOfChoices(std::string_view choices);
// A text in which the link would read a device error: "E" and a digit.
[[nodiscard]] bool LooksLikeError(const std::string& text);

}  // namespace velmoor::catalogue
