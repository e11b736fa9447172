// The frame of the benchmarks: a folder of their own, the simulator beside them, and their end.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

namespace velmoor::bench {

// The program named, in the directory of this one.
inline std::string ProgramBeside(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

// Runs `work` with the path of velmoor-simulator, the first argument where one is given, and a
// folder that is removed afterwards. The exit status.
inline int RunWithSimulator(const std::string& name, int argc, char** argv,
                            const std::function<void(const std::string& simulator,
                                                     const std::filesystem::path& folder)>& work) {
  const auto folder = std::filesystem::temp_directory_path() / ("velmoor-" + name);
  try {
    std::filesystem::create_directories(folder);
    work(argc > 1 ? argv[1] : ProgramBeside("velmoor-simulator"), folder);
    std::filesystem::remove_all(folder);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << name << ": " << error.what() << "\n";
    return 1;
  }
}

}  // namespace velmoor::bench
