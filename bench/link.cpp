// What one exchange of a command and its answer costs: processor time, and time on the line.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

constexpr std::int32_t kRatePerRun = 200;  // more runs where they are shorter

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
  Link link(bench, baudRate, Pace::paced);
  std::vector<LineRun> runs;
  for (int i = 0; i < baudRate / kRatePerRun; ++i) {
    const LineRun run = link.line.Time("an exchange", [&] { return Exchange(link.comm); });
    runs.push_back({run.taken / kMixture, run.wire / kMixture, run.limit / kMixture});
  }
  return LineFigure("An exchange at " + std::to_string(baudRate) + " bit/s", kMilliseconds, runs);
}

// The least that any program can do: write, and read until the second CR, without a look at what
// came. What this takes beyond the wire is the simulator's and the machine's, as each waking costs.
LineRun BareExchanges(int device, std::int32_t baudRate) {
  std::size_t bytes = 0;
  const Stopwatch watch;
  for (const std::string command : kCommands) {
    const std::string line = command + '\r';
    Require(write(device, line.data(), line.size()) == static_cast<ssize_t>(line.size()),
            "a bare write");
    bytes += line.size();
    for (std::ptrdiff_t ends = 0; ends < 2;) {
      std::array<char, 256> chunk{};
      const ssize_t count = read(device, chunk.data(), chunk.size());
      Require(count > 0, "a bare read");
      bytes += static_cast<std::size_t>(count);
      ends += std::count(chunk.begin(), chunk.begin() + count, '\r');
    }
  }
  const double taken = watch.Seconds();
  const std::size_t awaited = bytes - std::size(kCommands);  // the LF behind each answer
  return {taken / kMixture, WireSeconds(bytes, baudRate) / kMixture,
          WireSeconds(awaited, baudRate) / kMixture};
}

Figure BareTimeOnTheLine(const Workbench& bench, std::int32_t baudRate) {
  Link link(bench, baudRate, Pace::paced);
  link.comm.disconnect();
  const int device = open(link.line.Device().c_str(), O_RDWR | O_NOCTTY);
  Require(device >= 0, "the bare opening of the line");
  std::vector<LineRun> runs;
  for (int i = 0; i < baudRate / kRatePerRun; ++i) {
    runs.push_back(BareExchanges(device, baudRate));
  }
  close(device);
  return LineFigure("The same by bare system calls", kMilliseconds, runs);
}

}  // namespace

void MeasureLink(Workbench& bench) {
  bench.table.Add(ProcessorTime(bench));
  for (const std::int32_t rate : kBaudRates) {
    bench.table.Add(TimeOnTheLine(bench, rate));
    bench.table.Add(BareTimeOnTheLine(bench, rate));
  }
}

}  // namespace velmoor::bench
