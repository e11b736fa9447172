// What a user waits for at the bar of a transfer: the whole project at each speed of the line, each
// table by itself, and the answer to Stop. A restart behind a download is the amplifier's own time
// and not part of it.
#include <optional>

#include "PacedLine.h"
#include "link/BaudRates.h"
#include "operations/UploadFlow.h"
#include "platform/Numbers.h"

namespace velmoor::bench {
namespace {

constexpr std::int32_t kTableRate = 38400;
constexpr int kRuns = 2;  // at that rate; one at the others

// The project's own parameter for the speed: a download of everything sends it.
void SetBaudRate(clsHX7Project& project, std::int32_t baudRate) {
  clsHX7Editor& editor = project.Editor();
  editor.EditValue(editor.FindRow("Pn801"), NumberText(baudRate));
  Require(editor.AcceptEdits(), "the storing of Pn801");
}

void MeasureWhole(Workbench& bench, std::int32_t baudRate, int runs) {
  LiveSession live(bench, baudRate);
  SetBaudRate(live.Project(), baudRate);
  std::vector<LineRun> downloads;
  std::vector<LineRun> uploads;
  for (int i = 0; i < runs; ++i) {
    downloads.push_back(
        live.Line().Time("Download All", [&] { return live.Project().DownloadAll(); }));
    Require(live.Session().Hardware().connection.AwaitRestart({}).found,
            "finding the amplifier again");
    uploads.push_back(
        live.Line().Time("Upload All", [&] { return RunUploadStages(live.Project()); }));
    live.Project().DropUpload();
  }
  const std::string at = " at " + std::to_string(baudRate) + " bit/s";
  bench.table.Add(LineFigure("Download All" + at, kSeconds, downloads));
  bench.table.Add(LineFigure("Upload All" + at, kSeconds, uploads));
}

template <typename Table>
void MeasureTable(Workbench& bench, LiveSession& live, const std::string& name, Table& table) {
  constexpr int kRowsOfAll = 256;  // more runs where they are shorter
  std::vector<LineRun> downloads;
  std::vector<LineRun> uploads;
  for (int i = 0; i < kRowsOfAll / table.RowsInArray(); ++i) {
    downloads.push_back(live.Line().Time(name, [&] { return table.Download(true); }));
    uploads.push_back(live.Line().Time(name, [&] { return table.Upload(); }));
  }
  bench.table.Add(LineFigure(name + ", download", kMilliseconds, downloads));
  bench.table.Add(LineFigure(name + ", upload", kMilliseconds, uploads));
}

// From the press of Stop to the end of the download. The step under way goes out whole.
LineRun StopDownload(LiveSession& live) {
  std::optional<Stopwatch> pressed;
  LineBytes before;
  const Connection stops = live.Project().ToolDownloading.Connect(
      [&](Tool /*tool*/, std::int16_t row, std::int16_t /*total*/) {
        if (row != 64 || pressed) return;
        pressed.emplace();
        before = live.Line().Port().bytes;
        live.Session().SetStopProcedure(true);
      });
  const bool whole = live.Project().Position().Download(true);
  Require(pressed && !whole, "Stop");
  const LineRun run = live.Line().RunSince(before, pressed->Seconds());
  live.Session().SetStopProcedure(false);
  return run;
}

}  // namespace

void MeasureTransfers(Workbench& bench) {
  for (const std::int32_t rate : kBaudRates)
    MeasureWhole(bench, rate, rate == kTableRate ? kRuns : 1);
  LiveSession live(bench, kTableRate);
  MeasureTable(bench, live, "Index table, 128 steps", live.Project().Position());
  MeasureTable(bench, live, "Zone table, 32 zones", live.Project().Zone());
  MeasureTable(bench, live, "Jog table, 16 speeds", live.Project().Jog());
  std::vector<LineRun> stops;
  stops.reserve(kRuns);
  for (int i = 0; i < kRuns; ++i) stops.push_back(StopDownload(live));
  bench.table.Add(LineFigure("Stop, pressed before a step goes out", kMilliseconds, stops));
}

}  // namespace velmoor::bench
