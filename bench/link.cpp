// What one exchange of a command and its answer costs: processor time, and time on the line.
#include <ctime>
#include <iterator>
#include <string>

#include "PacedLine.h"
#include "link/BaudRates.h"
#include "link/ClassSerialComm.h"

namespace velmoor::bench {
namespace {

// A mixture as a download and a monitoring pass send it.
constexpr const char* kCommands[] = {"0PRM81D", "0PUN", "0POST5=I+100", "0PRM81D=-1200", "0ALM"};
constexpr auto kMixture = static_cast<double>(std::size(kCommands));

double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

bool Exchange(ClassSerialComm& comm) {
  for (const char* const command : kCommands) {
    RawResponse response;
    if (comm.writeToSerial(command, response) != kSuccess) return false;
  }
  return true;
}

// The line and a device on it that has exchanged some commands already.
class Link {
 public:
  Link(const Workbench& bench, std::int32_t baudRate, Pace pace)
      : line(bench.folder, baudRate, pace) {
    comm.setupClass(line.Port(), 0, baudRate, true, 1, 5000);
    Require(comm.manualConnect(), "the opening of the line");
    for (int i = 0; i < 4; ++i) Require(Exchange(comm), "an exchange");
  }
  PacedLine line;
  ClassSerialComm comm;
};

Figure ProcessorTime(const Workbench& bench) {
  constexpr int kBatches = 20;
  constexpr int kRounds = 200;
  Link link(bench, 38400, Pace::unpaced);
  Figure figure{"Processor time of an exchange", kMicroseconds, {}, Goal{100}, {}};
  for (int batch = 0; batch < kBatches; ++batch) {
    const double before = ProcessorSeconds();
    for (int i = 0; i < kRounds; ++i) Require(Exchange(link.comm), "an exchange");
    figure.samples.push_back((ProcessorSeconds() - before) / (kRounds * kMixture));
  }
  return figure;
}

Figure TimeOnTheLine(const Workbench& bench, std::int32_t baudRate) {
  constexpr std::int32_t kRatePerRun = 200;  // more runs where they are shorter
  Link link(bench, baudRate, Pace::paced);
  std::vector<LineRun> runs;
  for (int i = 0; i < baudRate / kRatePerRun; ++i) {
    const LineRun run = link.line.Time("an exchange", [&] { return Exchange(link.comm); });
    runs.push_back({run.taken / kMixture, run.wire / kMixture, run.limit / kMixture});
  }
  return LineFigure("An exchange at " + std::to_string(baudRate) + " bit/s", kMilliseconds, runs);
}

}  // namespace

void MeasureLink(Workbench& bench) {
  bench.table.Add(ProcessorTime(bench));
  for (const std::int32_t rate : kBaudRates) bench.table.Add(TimeOnTheLine(bench, rate));
}

}  // namespace velmoor::bench
