// The licences of the libraries that the program stands on.
#pragma once

#include <string>

namespace velmoor {

// Name, use, licence and the notice that it demands, one library behind the other.
[[nodiscard]] std::string LicenceNotices();

}  // namespace velmoor
