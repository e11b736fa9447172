// The name in front of an answered value: "Pn100", "POST5", "PUN".
#pragma once

#include <string_view>

namespace velmoor {

// The answer to `command`, "0PRM100", names another parameter, row or value than was asked. `head`
// is the answer up to its delimiter, "0Pn101". A head that is no name of the vocabulary names
// nothing else.
[[nodiscard]] bool NamesAnother(std::string_view command, std::string_view head);

}  // namespace velmoor
