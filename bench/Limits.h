// The physical limits that are measured beside the program: what the disk and the key take.
#pragma once

#include <filesystem>
#include <string>

namespace velmoor::bench {

// The median that it takes to write as many bytes as `model` has into a new file of `folder`, to
// flush it, to rename it over another, and to flush the folder; in seconds. Throws
// std::runtime_error.
[[nodiscard]] double FlushSeconds(const std::filesystem::path& folder, const std::string& model);

// The median that the derivation of a project's key takes; in seconds.
[[nodiscard]] double KeySeconds();

}  // namespace velmoor::bench
