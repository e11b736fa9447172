// What a program that was killed has left in its working file, and nobody has saved.
#pragma once

#include <string>

namespace velmoor {

// Keeps the working file as a project of its own beside it, "line1.unsaved.spj", where it holds
// other contents than `project`: marks do not count. To be called while the working file is
// locked. Returns the kept file; empty where nothing was to be kept. Throws FileError where it
// could not be.
[[nodiscard]] std::string KeepUnsavedWork(const std::string& working, const std::string& project);

}  // namespace velmoor
