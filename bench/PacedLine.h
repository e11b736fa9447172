// velmoor-simulator as a child on a line of its own, and our end of the line.
#pragma once

#include <unistd.h>
#include <iostream>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchMain.h"
#include "Child.h"
#include "CountingPort.h"
#include "Timing.h"
#include "Workbench.h"
#include "platform/Numbers.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor::bench {

enum class Pace { paced, unpaced };  // paced: every character takes its time

// What a run took, what all its bytes take on the line, and those alone that it has to wait for; in
// seconds.
struct LineRun {
  double taken;
  double wire;
  double limit;
};

class PacedLine {
 public:
  // The line, with so many axes from 0 on, is there when the object is. Throws std::runtime_error.
  PacedLine(const std::filesystem::path& folder, std::int32_t baudRate, Pace pace = Pace::paced,
            std::uint32_t axes = 1)
      : baudRate_(baudRate),
        link_(folder / "line"),
        simulator_(ProgramBeside("velmoor-simulator"), Words(pace, axes)) {
    const Stopwatch watch;
    while (!std::filesystem::exists(link_)) {
      Require(watch.Seconds() < 5, "the start of velmoor-simulator");
      usleep(1000);
    }
    device_.SetDeviceMap({{"COM1", link_}});
  }

  [[nodiscard]] std::int32_t BaudRate() const { return baudRate_; }
  CountingPort& Port() { return port_; }
  [[nodiscard]] const std::string& Device() const { return link_; }
  // A run that took `taken` seconds and began when so many bytes had passed.
  [[nodiscard]] LineRun RunSince(const LineBytes& before, double taken) const {
    const LineBytes& now = port_.bytes;
    return {taken, WireSeconds(now.all - before.all, baudRate_),
            WireSeconds(now.awaited - before.awaited, baudRate_)};
  }
  // Throws std::runtime_error where `transfer` gives false.
  template <typename Transfer>
  [[nodiscard]] LineRun Time(const std::string& what, const Transfer& transfer) {
    const LineBytes before = port_.bytes;
    const Stopwatch watch;
    Require(transfer(), what);
    return RunSince(before, watch.Seconds());
  }

 private:
  [[nodiscard]] std::vector<std::string> Words(Pace pace, std::uint32_t axes) const {
    std::vector<std::string> words{"--link", link_, "--baud", std::to_string(baudRate_)};
    if (pace == Pace::paced) words.emplace_back("--paced");
    for (std::uint32_t axis = 0; axis < axes; ++axis) {
      words.emplace_back("--axis");
      words.push_back(HexText(axis));
    }
    return words;
  }

  std::int32_t baudRate_;
  std::string link_;
  Child simulator_;
  posix::PosixSerialPort device_;
  CountingPort port_{device_};
};

// Limit and goal are means over the runs: the goal is 3 % above the time of all bytes.
[[nodiscard]] inline Figure LineFigure(std::string what, Unit unit,
                                       const std::vector<LineRun>& runs) {
  constexpr double kAboveTheWire = 1.03;
  Figure figure{std::move(what), unit, {}, Goal{0}, Limit{0, "wire"}};
  const auto share = 1 / static_cast<double>(runs.size());
  for (const LineRun& run : runs) {
    figure.samples.push_back(run.taken);
    figure.limit->value += share * run.limit;
    figure.goal->most += share * run.wire * kAboveTheWire * unit.perBase;
  }
  return figure;
}

// A session that is online on a paced line, with a full project open.
class LiveSession {
 public:
  LiveSession(Workbench& bench, std::int32_t baudRate)
      : line_(bench.folder, baudRate), session_(line_.Port(), std::cerr) {
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
