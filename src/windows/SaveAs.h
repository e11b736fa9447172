// What a window writes under a name that the user picks.
#pragma once

#include <functional>
#include <string>

#include "platform/FileDialogs.h"

namespace velmoor {

// Asks for the file, and before it replaces one, and writes what `bytes` gives then. False: the
// user picked none, or it failed, of which the user was told behind `prefix`.
bool SaveAs(const FileDialogRequest& request, const std::string& prefix,
            const std::function<std::string()>& bytes);

}  // namespace velmoor
