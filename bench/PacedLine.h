// velmoor-simulator as a child on a line of its own, and our end of the line.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchMain.h"
#include "Child.h"
#include "CountingPort.h"
#include "Timing.h"
#include "Workbench.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor::bench {

enum class Pace { paced, unpaced };  // paced: every character takes its time

// What a run took, and what its bytes alone take on the line; in seconds.
struct LineRun {
  double taken;
  double wire;
};

class PacedLine {
 public:
  // The line is there when the object is. Throws std::runtime_error.
  PacedLine(const std::filesystem::path& folder, std::int32_t baudRate, Pace pace = Pace::paced)
      : baudRate_(baudRate),
        link_(folder / "line"),
        simulator_(ProgramBeside("velmoor-simulator"), Words(pace)) {
    const Stopwatch watch;
    while (!std::filesystem::exists(link_)) {
      Require(watch.Seconds() < 5, "the start of velmoor-simulator");
      usleep(1000);
    }
    device_.SetDeviceMap({{"COM1", link_}});
  }

  [[nodiscard]] std::int32_t BaudRate() const { return baudRate_; }
  CountingPort& Port() { return port_; }
  // Throws std::runtime_error where `transfer` gives false.
  template <typename Transfer>
  [[nodiscard]] LineRun Time(const std::string& what, const Transfer& transfer) {
    port_.bytes = 0;
    const Stopwatch watch;
    Require(transfer(), what);
    const double taken = watch.Seconds();
    return {taken, WireSeconds(port_.bytes, baudRate_)};
  }

 private:
  [[nodiscard]] std::vector<std::string> Words(Pace pace) const {
    std::vector<std::string> words{"--link", link_, "--baud", std::to_string(baudRate_)};
    if (pace == Pace::paced) words.emplace_back("--paced");
    return words;
  }

  std::int32_t baudRate_;
  std::string link_;
  Child simulator_;
  posix::PosixSerialPort device_;
  CountingPort port_{device_};
};

// The limit is the mean of the runs' own.
[[nodiscard]] inline Figure LineFigure(std::string what, Unit unit,
                                       const std::vector<LineRun>& runs,
                                       std::optional<Goal> goal = std::nullopt) {
  Figure figure{std::move(what), unit, {}, goal, Limit{0, "wire"}};
  for (const LineRun& run : runs) {
    figure.samples.push_back(run.taken);
    figure.limit->value += run.wire / static_cast<double>(runs.size());
  }
  return figure;
}

// How far above the time of its bytes alone a transfer may be.
inline constexpr Goal kNearTheWire{1.03, Goal::Of::ratio};

// A session that is online on a paced line, with a full project open.
class LiveSession {
 public:
  LiveSession(Workbench& bench, std::int32_t baudRate)
      : line_(bench.folder, baudRate), session_(line_.Port(), nullptr) {
    session_.SetBaudRate(baudRate);
    Open(session_, bench.fullProject);
    GoOnline(session_);
  }

  PacedLine& Line() { return line_; }
  ConsoleSession& Session() { return session_; }
  clsHX7Project& Project() { return session_.project(); }

 private:
  PacedLine line_;
  ConsoleSession session_;
};

}  // namespace velmoor::bench
