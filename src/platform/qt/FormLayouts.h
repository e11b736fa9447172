// The layouts of the windows, one a file, compiled in.
//
// They are turned into code when the program is built: the loader that reads them at run time needs
// a library more, and a damaged layout would only show when its window opens.
#pragma once

#include <QWidget>
#include <string>

namespace velmoor::qt {

// A new, hidden window of that layout without a parent. Throws std::logic_error where none has the
// name.
[[nodiscard]] QWidget* MakeLayout(const std::string& name);

}  // namespace velmoor::qt
