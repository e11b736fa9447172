// What the sections of velmoor-bench measure with: the table, a folder, and the program's world of
// real windows, files and databases, with a user who agrees to everything.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "AgreeingUser.h"
#include "BenchAdapters.h"
#include "Figure.h"
#include "console/ConsoleSession.h"
#include "platform/World.h"
#include "platform/headless/HeadlessSettings.h"
#include "platform/qt/QtProgram.h"

namespace velmoor::bench {

class Workbench {
 public:
  // Puts its world in force and makes the full project. Draws into memory where there is no
  // display. `argc`, `argv` and the table must outlive the object. Throws std::runtime_error.
  Workbench(int& argc, char** argv, std::filesystem::path workFolder, Table& figures);
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  // Times `runs` runs of `work` and adds the figure.
  void Time(std::string what, Unit unit, int runs, Goal goal, const std::function<void()>& work,
            std::optional<Limit> limit = std::nullopt);

  Table& table;
  const std::filesystem::path folder;  // goes with the run; on the disk to be measured
  // A project with 128 steps, 32 zones and 16 speeds, each with all it can hold.
  const std::string fullProject;
  BenchAdapters adapters;

 private:
  void MakeFullProject();

  qt::QtProgram program_;
  AgreeingUser user_;
  headless::HeadlessSettings settings_;
  World world_;
};

// Throws std::runtime_error where a step of a measurement was refused.
void Require(bool done, const std::string& step);

// Starts the session and opens the project. Throws std::runtime_error.
void Open(ConsoleSession& session, const std::string& project);
void GoOnline(ConsoleSession& session);

// ---- the sections; each throws where something could not be measured

void MeasureLink(Workbench& bench);
void MeasureTransfers(Workbench& bench);
void MeasureOnline(Workbench& bench);
void MeasureProject(Workbench& bench);
void MeasureStart(Workbench& bench);
void MeasureWindows(Workbench& bench);
void MeasureReport(Workbench& bench);
void MeasureRehearsal(Workbench& bench);
void MeasureLine(Workbench& bench);
void MeasureMemory(Workbench& bench);

// What velmoor-bench does under this word: monitors for simulated hours, and tells of its memory.
inline constexpr const char* kMonitoringWord = "--monitor-for-hours";
int MonitorForHours(int argc, char** argv);

}  // namespace velmoor::bench
