// Times monitoring passes against the time of their bytes on the line, the way from the release of
// a jog button to the stop command, and watches the memory over eight simulated hours of
// monitoring.
//
//   bench_online [path of velmoor-simulator]
#include <chrono>
#include <filesystem>
#include <fstream>
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
#include "simulator/InProcessPort.h"

namespace velmoor {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::int32_t kBaudRate = 38400;

struct Bench {
  explicit Bench(const fs::path& folder) { adapters.Fill(world.world, folder.string()); }
  void Begin(BenchSession& session, const fs::path& folder) {
    session.SetBaudRate(kBaudRate);
    session.Start();
    const std::string path = (folder / "bench.spj").string();
    adapters.files.ReplaceDurably(JoinPath(world.world.appDirectory, "Velmoor.spt"), path);
    session.Open(path);
    session.GoOnline();
  }
  headless::HeadlessForm& Monitoring(BenchSession& session) {
    session.project().Monitoring().Show_Monitoring();
    headless::HeadlessForm& form = world.forms.Get("frmMonitoring");
    for (const char* const tick :
         {"chkOption_0", "chkOption_1", "chkOption_7", "chkOption_9", "chkOption_10"}) {
      form.Check(tick, true);
    }
    return form;
  }
  headless::HeadlessWorld world;
  bench::BenchAdapters adapters;
};

void MeasurePasses(Bench& bench, BenchSession& session, bench::CountingPort& port) {
  constexpr int kPasses = 200, kYields = kPasses * 6;  // five items and the end of each pass
  headless::HeadlessForm& form = bench.Monitoring(session);
  bench.world.events.AtYield(kYields, [&] { form.Press("cmdMonitoring"); });
  bench::MeasureTransfer(std::to_string(kPasses) + " passes over five items", port, kBaudRate, [&] {
    form.Press("cmdMonitoring");
    return true;
  });
  form.Press("cmdExit");
}

void MeasureRelease(Bench& bench, BenchSession& session, bench::CountingPort& port) {
  double worst = 0;
  bench.world.forms.OnShow("frmServoJog", [&](headless::HeadlessForm& form) {
    bench.world.boxes.Expect("Use extreme caution!", BoxAnswer::yes);
    form.Press("cmdServo");
    for (int i = 0; i < 50; ++i) {
      form.Hold("cmdJog_0");
      const auto released = Clock::now();
      form.LetGo("cmdJog_0");
      const std::chrono::duration<double, std::milli> taken = port.lastWrite - released;
      worst = std::max(worst, taken.count());
    }
    form.Press("cmdExit");
  });
  session.project().ServoJog().Show_ServoJog();
  std::cout << "from the release of the jog button to the stop command on the line, worst of 50: "
            << FixedText(worst, 3) << " ms (goal 20)\n";
}

double MegabytesInUse() {
  std::ifstream status("/proc/self/statm");
  double all = 0, resident = 0;
  status >> all >> resident;
  return resident * 4096 / 1e6;
}

// In-process: time passes as fast as the processor can.
void WatchMemory(Bench& bench, const fs::path& folder) {
  SimulatedLine line;
  SimulatedAmplifier& amplifier = line.AddAmplifier({.baud = kBaudRate});
  InProcessPort port(line);
  port.SetPaced(true);
  BenchSession session(port);
  port.OnTimePassing([&](Micros) {
    static std::chrono::milliseconds told{0};
    const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(port.Now());
    bench.world.clock.Advance(now - std::exchange(told, now));
  });
  bench.world.world.clock = &bench.world.clock;
  bench.Begin(session, folder);
  headless::HeadlessForm& form = bench.Monitoring(session);
  constexpr std::chrono::hours kAll{8};
  const auto begin = port.Now();
  std::chrono::hours next{1};
  amplifier.State().axis.SwitchServo(true);
  std::function<void()> look = [&] {
    if (port.Now() - begin >= next) {
      std::cout << next.count() << " h: " << FixedText(MegabytesInUse(), 1) << " MB\n";
      ++next;
      amplifier.State().axis.Jog(next.count() % 2 == 0 ? 1 : -1, 10);
    }
    if (port.Now() - begin >= kAll) {
      form.Press("cmdMonitoring");
    } else {
      bench.world.events.AtYield(1000, look);
    }
  };
  bench.world.events.AtYield(1000, look);
  const auto start = Clock::now();
  form.Press("cmdMonitoring");
  const std::chrono::duration<double> wall = Clock::now() - start;
  std::cout << "eight hours of monitoring took " << FixedText(wall.count(), 1) << " s\n";
  form.Press("cmdExit");
}

void Run(const std::string& simulator, const fs::path& folder) {
  {
    Bench bench(folder);
    const bench::SimulatorChild child(simulator, kBaudRate, true);
    posix::PosixSerialPort line;
    line.SetDeviceMap({{"COM1", child.Link()}});
    bench::CountingPort port(line);
    BenchSession session(port);
    bench.Begin(session, folder);
    MeasurePasses(bench, session, port);
    MeasureRelease(bench, session, port);
  }
  Bench bench(folder);
  WatchMemory(bench, folder);
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  return velmoor::bench::RunWithSimulator("bench_online", argc, argv, velmoor::Run);
}
