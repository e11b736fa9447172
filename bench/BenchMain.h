// What every program of the benchmarks needs of its surroundings.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace velmoor::bench {

// The program named, in the directory of this one.
inline std::string ProgramBeside(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

// A new folder in `place`, the system's for temporary files where that is empty; it goes with the
// object.
class TemporaryFolder {
 public:
  // Throws std::runtime_error.
  explicit TemporaryFolder(const std::string& place, const std::string& name) {
    std::string pattern =
        (place.empty() ? std::filesystem::temp_directory_path().string() : place) + "/" + name +
        "-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error(pattern + " cannot be made");
    path_ = std::filesystem::absolute(pattern);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace velmoor::bench
