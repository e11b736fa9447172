// What the program keeps of the machine's memory: after its start, with a project open, and in
// hours of recorded monitoring, of which the clock of a simulated line makes seconds.
#include <QCheckBox>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <iostream>
#include <sstream>
#include <string>

#include "BenchMain.h"
#include "Child.h"
#include "Desktop.h"
#include "Monitoring.h"
#include "WindowUser.h"
#include "Workbench.h"
#include "platform/Numbers.h"
#include "platform/headless/HeadlessEvents.h"
#include "simulator/InProcessPort.h"

namespace velmoor::bench {
namespace {

constexpr int kHours = 8;
constexpr const char* kHour = "monitored hour ";

// The session's clock follows the line's; each hour is told with the memory of then, and the axis
// turns the other way.
class Hours {
 public:
  Hours(InProcessPort& port, SimulatedAmplifier& amplifier, headless::HeadlessClock& clock)
      : port_(port), amplifier_(amplifier), clock_(clock) {
    port_.OnTimePassing([this](Micros) { Follow(); });
  }
  ~Hours() {
    port_.OnTimePassing([](Micros) {});
  }
  Hours(const Hours&) = delete;
  Hours& operator=(const Hours&) = delete;

  void Begin(QPushButton& button) {
    button_ = &button;
    begin_ = port_.Now();
    Tell();
    button.click();
  }

 private:
  void Follow() {
    const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(port_.Now());
    clock_.Advance(now - std::exchange(told_, now));
    if (button_ == nullptr || port_.Now() - begin_ < std::chrono::hours(hour_)) return;
    Tell();
    if (hour_ > kHours) {
      QTimer::singleShot(0, button_, &QPushButton::click);
      button_ = nullptr;
    }
  }
  void Tell() {
    std::cerr << kHour << hour_ << ": " << FixedText(ResidentBytes("self"), 0) << std::endl;
    ++hour_;
    amplifier_.State().axis.SwitchServo(true);
    amplifier_.State().axis.Jog(hour_ % 2 == 0 ? 1 : -1, 10);
  }

  InProcessPort& port_;
  SimulatedAmplifier& amplifier_;
  headless::HeadlessClock& clock_;
  QPushButton* button_ = nullptr;
  Micros begin_{0};
  std::chrono::milliseconds told_{0};
  int hour_ = 0;
};

void Add(Workbench& bench, const std::string& what, double bytes,
         std::optional<Limit> limit = std::nullopt, Goal goal = {150}) {
  bench.table.Add({what, kMegabytes, {bytes}, goal, limit});
}

void MeasurePrograms(Workbench& bench) {
  BareWindow bare;
  bare.WaitForWindow();
  const Limit qt{bare.ResidentMemory(), "bare Qt"};
  {
    Desktop empty(bench.folder);
    (void)empty.WaitForLine({"Flushing QRegion", "QFileDialog"});
    Add(bench, "velmoor, asking for a project", empty.ResidentMemory(), qt);
  }
  Desktop full(bench.folder, bench.fullProject);
  full.WaitForProject();
  Add(bench, "velmoor, a full project open", full.ResidentMemory(), qt);
}

void MeasureMonitoring(Workbench& bench) {
  Child child(ProgramBeside("velmoor-bench"), {kMonitoringWord});
  std::vector<double> hours;
  for (int hour = 0; hour <= kHours; ++hour) {
    hours.push_back(child.WaitForNumber(kHour + std::to_string(hour) + ": "));
  }
  child.WaitForSuccess();
  const std::string last = "hour " + std::to_string(kHours);
  Add(bench, "Five items monitored and recorded, at its start", hours[0]);
  Add(bench, "Five items monitored and recorded, hour 1", hours[1]);
  Add(bench, "Five items monitored and recorded, " + last, hours[kHours]);
  Add(bench, "Growth from hour 1 to " + last, hours[kHours] - hours[1], {}, Goal{1});
}

}  // namespace

int MonitorForHours(int argc, char** argv) {
  std::ostringstream nowhere;
  Table table(nowhere, Table::Form::plain);
  const TemporaryFolder folder({}, "velmoor-bench");
  Workbench bench(argc, argv, folder.Path(), table);
  const auto window = ShowMainWindow();
  SimulatedLine line;
  SimulatedAmplifier& amplifier = line.AddAmplifier({.baud = 38400});
  InProcessPort port(line);
  port.SetPaced(true);
  headless::HeadlessClock clock;
  world().clock = &clock;
  Hours hours(port, amplifier, clock);
  ConsoleSession session(port, std::cerr);
  session.SetBaudRate(38400);
  Open(session, bench.fullProject);
  GoOnline(session);
  QPushButton& begin = ShowMonitoring(session.project(), kFiveItems);
  const Recorded recorded;
  // As a window that others cover: a drawing leaves nothing behind, and 14400 an hour take minutes.
  begin.window()->setUpdatesEnabled(false);
  hours.Begin(begin);
  CloseWindows();
  return 0;
}

void MeasureMemory(Workbench& bench) {
  MeasurePrograms(bench);
  MeasureMonitoring(bench);
}

}  // namespace velmoor::bench
