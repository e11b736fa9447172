// Writes the header that windows and twins are built with.
#pragma once

#include <QByteArray>

#include "Source.h"

namespace velmoor::layouts {

// Throws std::runtime_error where the names cannot be those of members.
[[nodiscard]] QByteArray HeaderOf(const Source& source);

}  // namespace velmoor::layouts
