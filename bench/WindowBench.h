// The frame of the benchmarks that draw windows.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "BenchAdapters.h"
#include "platform/World.h"
#include "platform/qt/QtProgram.h"

namespace velmoor::bench {

// Runs `work` with real windows, in the folder that the first argument names, else in one named
// after the benchmark. Draws into memory where there is no display. The exit status.
inline int RunWithWindows(const std::string& name, int argc, char** argv,
                          const std::function<int(const std::string& folder)>& work) {
  if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const std::string folder =
      argc > 1 ? argv[1] : (std::filesystem::temp_directory_path() / ("velmoor-" + name)).string();
  std::filesystem::create_directories(folder);
  qt::QtProgram program(argc, argv, nullptr);
  BenchAdapters all;
  World adapters;
  program.FillWorld(adapters);
  all.Fill(adapters, folder);
  SetWorld(&adapters);
  const int status = work(folder);
  SetWorld(nullptr);
  return status;
}

}  // namespace velmoor::bench
