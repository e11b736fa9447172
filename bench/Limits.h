// The physical limits that are measured beside the program: what the disk and the key take.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velmoor::bench {

// The median that it takes to write as many bytes as `model` has into a new file of `folder`, to
// flush it, to rename it over another, and to flush the folder; in seconds. Throws
// std::runtime_error.
[[nodiscard]] double FlushSeconds(const std::filesystem::path& folder, const std::string& model);

// The median that the derivation of a project's key takes in a process of its own, as it does in
// the programs: within this one it may take half as long again, by where its memory happens to lie.
// In seconds. Throws std::runtime_error.
[[nodiscard]] double KeySeconds();
// What velmoor-bench does under this word: derives a key and tells of the time.
inline constexpr const char* kKeyWord = "--derive-key";
int DeriveKey();

// Of what Times gave.
[[nodiscard]] double MedianOf(std::vector<double> times);

}  // namespace velmoor::bench
