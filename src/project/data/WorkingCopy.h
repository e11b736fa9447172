// Makes the tables of one language and one motor size from those of the catalogue file.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Database.h"

namespace velmoor {

// Whether the database holds the tables of a catalogue file.
[[nodiscard]] bool IsCatalogue(Database& database);
// Throws DatabaseError; the tables are then those of before. Texts that the language lacks come out
// in English; a motor size without limits of its own takes those of the standard motor.
void FillWorkingCopy(const std::string& path, std::int32_t language, std::int32_t motorSize);

}  // namespace velmoor
