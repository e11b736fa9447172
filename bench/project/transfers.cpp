// Times the transfer of a whole project against the time of its bytes on the line, and how long
// Stop takes. The restart behind a download is the amplifier's own time and not part of it.
//
//   bench_transfers [path of velmoor-simulator]
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>

#include "BenchAdapters.h"
#include "BenchMain.h"
#include "CountingPort.h"
#include "SimulatorChild.h"
#include "platform/Numbers.h"
#include "platform/headless/HeadlessWorld.h"
#include "platform/posix/PosixSerialPort.h"
#include "project/BenchSession.h"
#include "project/UploadFlow.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::int32_t kBaudRate = 38400;

void SetBaudRate(clsHX7Project& project) {
  BlockMatrix rows;
  project.Editor().GetBlockMatrix(rows);
  const int row = rows.FindRow("Pn801");
  rows.Set(row, Column::value, NumberText(kBaudRate));
  rows.Set(row, Column::dirty, "1");
  project.Editor().LetBlockMatrix(rows);
  if (!project.Editor().SaveToDB()) throw std::runtime_error("Pn801 cannot be stored");
}

void MeasureStop(BenchSession& session) {
  Clock::time_point pressed;
  const Connection stops = session.project().ToolDownloading.Connect(
      [&](Tool /*tool*/, std::int16_t row, std::int16_t /*total*/) {
        if (row != 64) return;
        pressed = Clock::now();
        session.SetStopProcedure(true);
      });
  const bool done = session.project().DownloadAll();
  const std::chrono::duration<double, std::milli> taken = Clock::now() - pressed;
  std::cout << "Stop before step 64 of a download" << (done ? " FAILED" : "")
            << ": the step, which "
            << "is eight exchanges, and the marks of the rest take " << FixedText(taken.count(), 1)
            << " ms\n";
}

void Run(const std::string& simulator, const fs::path& folder) {
  headless::HeadlessWorld world;
  bench::BenchAdapters adapters;
  adapters.Fill(world.world, folder.string());
  const bench::SimulatorChild child(simulator, kBaudRate, true);
  posix::PosixSerialPort line;
  line.SetDeviceMap({{"COM1", child.Link()}});
  bench::CountingPort port(line);
  BenchSession session(port);
  session.SetBaudRate(kBaudRate);
  session.Start();
  const std::string path = (folder / "bench.spj").string();
  adapters.files.ReplaceDurably(JoinPath(world.world.appDirectory, "Velmoor.spt"), path);
  session.Open(path);
  clsHX7Project& project = session.project();
  SetBaudRate(project);
  session.GoOnline();
  bench::MeasureTransfer("Download All", port, kBaudRate, [&] { return project.DownloadAll(); });
  if (session.Helix7()->GoOnlineAfterRestart() != kSuccess) {
    throw std::runtime_error("no answer after the restart");
  }
  bench::MeasureTransfer("Upload All", port, kBaudRate, [&] { return RunUploadStages(project); });
  project.RestoreSnapshot();
  MeasureStop(session);
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::bench::RunWithSimulator("bench_transfers", argc, argv, velmoor::Run);
}
