// Times what a user waits for around a project: opening and saving it, storing tables and
// parameters, deriving a gear ratio. bench_project [FOLDER] works in FOLDER, which lies on the disk
// to be measured.

#include <filesystem>

#include "BenchAdapters.h"
#include "Timing.h"
#include "mechanics/MachineEdit.h"
#include "platform/headless/HeadlessWorld.h"
#include "project/BenchSession.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "tables/CellRules.h"

namespace velmoor {
namespace {

void FillProgramme(clsHX7Position& table) {
  for (int step = 1; step <= table.RowsInArray(); ++step) {
    const std::string label = "step" + std::to_string(step);
    const std::string next = step < 128 ? "step" + std::to_string(step + 1) : "END";
    const char* const cells[] = {label.c_str(), "I+10.000", "50.000", "-",         "1.000",
                                 ":::::",       "IT0",      "1",      next.c_str()};
    for (int column = 0; column < 9; ++column) table.SetText(step, column, cells[column]);
    table.SetDirtyCell(step, true);
  }
}

void Run(const std::filesystem::path& folder) {
  headless::HeadlessWorld world;
  bench::BenchAdapters adapters;
  adapters.Fill(world.world, folder.string());
  SimulatedLine line;
  line.AddAmplifier({});
  InProcessPort port(line);
  BenchSession session(port);

  bench::Heading();
  bench::Time("session's start but for its pauses", 5, "< 300", [&] { session.Start(); });
  const std::string path = (folder / "bench.spj").string();
  adapters.files.ReplaceDurably(JoinPath(world.world.appDirectory, "Velmoor.spt"), path);
  bench::Time("open a project", 21, "< 60", [&] { session.Open(path); });
  clsHX7Project& project = session.project();
  FillProgramme(project.Position());
  bench::Time("store 128 steps", 21, "< 60", [&] { project.Position().SaveToDB(); });
  bench::Time("save over the project file", 21, "", [&] { project.Save(); });
  bench::Time("check one cell of a step", 101, "< 5", [&] {
    (void)CheckIndexCell(project, project.Position(), 64, clsHX7Position::label, "another label");
  });
  bench::Time("reduce a gear ratio", 101, "< 2", [] {
    double a = 157079.633, b = 8192;
    (void)ReduceGearRatio(a, b);
  });
  const MachineEdit edit(project.MechanicalSystem());
  bench::Time("a machine's live figures", 101, "< 5", [&] { (void)edit.Figures(); });
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  const fs::path folder =
      (argc > 1 ? fs::path(argv[1]) : fs::temp_directory_path()) / "velmoor-bench";
  fs::create_directories(folder);
  velmoor::Run(folder);
  fs::remove_all(folder);
}
