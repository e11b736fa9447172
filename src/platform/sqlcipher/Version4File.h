// Files of the engine's version 4 as its defaults make them: pages of 4096 bytes, SHA-512.
//
// The engine of the older systems cannot read them at all, so they are unsealed here, whichever
// engine the program is built with. Such files are only read; what is written has the written form.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/sqlcipher/KeyRing.h"
#include "platform/sqlcipher/SystemFiles.h"

namespace velmoor::sqlcipher {

// Nothing, where the file is of another form or has another password. Throws DatabaseError for a
// file that is damaged or cannot be read.
[[nodiscard]] std::optional<FileImage> UnsealVersion4(const std::string& path,
                                                      std::string_view password, KeyRing& keys);

}  // namespace velmoor::sqlcipher
