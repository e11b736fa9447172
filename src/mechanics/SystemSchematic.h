// The picture of a machine: how motor, gear and load hang together, and where its measures stand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Drawing.h"

namespace velmoor {

inline constexpr double kSchematicWidth = 360;
inline constexpr double kSchematicHeight = 190;

// What is written into the picture, as the user reads it.
struct SchematicTexts {
  std::string n1, n2;   // "N1 = 1"
  std::string encoder;  // "2048 lines"
  std::string measure;  // "Lead = 5 mm"
};

// Shapes on a sheet of kSchematicWidth by kSchematicHeight. An unknown system shows motor and gear
// only.
[[nodiscard]] std::vector<DrawingShape> SystemSchematic(std::int32_t system,
                                                        const SchematicTexts& texts);

}  // namespace velmoor
