// The windows by what the main window keeps of each, and the modules.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "session/Tools.h"

namespace velmoor {

// Those that are no tool of the project.
enum class ToolWindow : std::size_t {
  servoJog,
  monitoring,
  terminal,
  productInfo,
  inertiaRatio,
  communicationsSettings,
  homePosition,
  alarms,
};
inline constexpr std::size_t kToolWindows = 8;

enum class Module { testRun = 0, indexer = 1, tuning = 2, monitoring = 3, editor = 4 };

struct ModuleInfo {
  MainCommand command;
  const char* text;  // in the status bar
};
inline constexpr std::array<ModuleInfo, 5> kModules{{
    {MainCommand::mnuModuleTestRun, "Test Run"},
    {MainCommand::mnuModuleIndexer, "Indexer Setup"},
    {MainCommand::mnuModuleTuning, "Gain Setting/Tuning"},
    {MainCommand::mnuModuleMonitoring, "Monitoring/Troubleshooting"},
    {MainCommand::mnuModuleEditor, "Parameter Editor"},
}};

// A tool window of that type is on show. The parameter grid window serves several tools and is
// known by the first word of its caption; any other by the name of its form.
[[nodiscard]] bool IsToolWindowOpened(std::string_view strType);

}  // namespace velmoor
