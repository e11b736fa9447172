// How long the real programs take until they are there: velmoor until its windows are drawn and its
// project is open, velmoorctl from its start to its end.
#include <string>
#include <vector>

#include "BenchMain.h"
#include "Child.h"
#include "Desktop.h"
#include "Limits.h"
#include "Timing.h"
#include "Workbench.h"

namespace velmoor::bench {
namespace {

double MedianOf(std::vector<double> samples) {
  return Figure{"", kSeconds, std::move(samples), {}, {}}.Median();
}

std::vector<double> ProgramTimes(const std::string& program,
                                 const std::vector<std::string>& words) {
  constexpr int kRuns = 15;
  return Times(kRuns, [&] { Child(program, words).WaitForSuccess(); });
}

void MeasureDesktop(Workbench& bench) {
  constexpr int kRuns = 7;
  const double bare = MedianOf(Times(kRuns, [] { BareWindow().WaitForWindow(); }));
  const Limit qt{bare, "bare Qt"};
  Figure splash{"velmoor, splash window drawn", kMilliseconds, {}, Goal{500}, qt};
  Figure window{"velmoor, main window; less 1 s of splash", kMilliseconds, {}, Goal{500}, qt};
  Figure ready{"velmoor, project open; less 2 s of pauses",
               kMilliseconds,
               {},
               Goal{1000},
               Limit{bare + KeySeconds(), "Qt + key"}};
  for (int i = 0; i < kRuns; ++i) {
    const Stopwatch watch;
    Desktop desktop(bench.folder, bench.fullProject);
    desktop.WaitForWindow("frmSplash");
    splash.samples.push_back(watch.Seconds());
    desktop.WaitForWindow("frmMain");
    window.samples.push_back(watch.Seconds() - kPause);
    desktop.WaitForProject();
    ready.samples.push_back(watch.Seconds() - 2 * kPause);
  }
  for (const Figure& figure : {splash, window, ready}) bench.table.Add(figure);
}

void MeasureConsole(Workbench& bench) {
  const std::string program = ProgramBeside("velmoorctl");
  const double process = MedianOf(ProgramTimes("/bin/true", {}));
  bench.table.Add({"velmoorctl --help", kMilliseconds, ProgramTimes(program, {"--help"}), Goal{50},
                   Limit{process, "process"}});
  bench.table.Add({"velmoorctl show FILE index", kMilliseconds,
                   ProgramTimes(program, {"show", bench.fullProject, "index"}), Goal{300},
                   Limit{process + KeySeconds(), "key"}});
}

}  // namespace

void MeasureStart(Workbench& bench) {
  MeasureDesktop(bench);
  MeasureConsole(bench);
}

}  // namespace velmoor::bench
