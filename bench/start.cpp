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
  constexpr int kRuns = 15;
  const std::string ctl = ProgramBeside("velmoorctl");
  const auto run = [](const std::string& program, const std::vector<std::string>& words) {
    return [=] { Child(program, words).WaitForSuccess(); };
  };
  const double process = MedianOf(Times(kRuns, run("/bin/true", {})));
  bench.Time("velmoorctl --help", kMilliseconds, kRuns, Goal{50}, run(ctl, {"--help"}),
             Limit{process, "process"});
  bench.Time("velmoorctl show: open, the key derived", kMilliseconds, kRuns, Goal{300},
             run(ctl, {"show", bench.fullProject, "index"}), Limit{process + KeySeconds(), "key"});
}

}  // namespace

void MeasureStart(Workbench& bench) {
  MeasureDesktop(bench);
  MeasureConsole(bench);
}

}  // namespace velmoor::bench
