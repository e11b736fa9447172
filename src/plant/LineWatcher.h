// Watches a line: asks its axes in turn, keeps the minute before each alarm, and hands on what is
// read. It reads and never writes: nothing that it sends moves, changes or resets anything.
//
// It runs for months. Nothing that fails outside ends it, and each trouble is told when it begins
// and when it is over.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "plant/AxisRecordings.h"
#include "plant/LineRound.h"
#include "plant/WatchReports.h"
#include "session/Session.h"

namespace velmoor {

class LineWatcher {
 public:
  // All must outlive the object; `path` is that of the line file. Throws FileError and
  // std::runtime_error.
  LineWatcher(WatchHost& host, SerialPort& port, const AlarmNames& names, const LineFile& line,
              const std::string& path);

  // Watches until the host ends, or wants the file to be read again.
  void Run();

 private:
  using Time = std::chrono::milliseconds;

  void Step();
  [[nodiscard]] bool IsLent();
  [[nodiscard]] bool IsOpen();
  // Nobody sees the axes now.
  void Lose(const std::string& state, const std::string& reason);
  void Pause();

  void OnSeen(std::size_t axis);
  void KeepAlarm(std::size_t axis);
  [[nodiscard]] std::vector<std::string> AlarmRemarks(const AxisState& axis);

  // What is done while a question is on its way.
  void Serve();
  void WatchClock(Time now);
  [[nodiscard]] LineFigures Figures() const;
  [[nodiscard]] std::string StatusWords() const;

  WatchHost& host_;
  SerialPort& port_;
  const AlarmNames& names_;
  const std::string folder_;
  const std::vector<int> items_;
  std::unique_ptr<FileLock> lock_;
  ClassSerialComm comm_;
  std::vector<AxisState> axes_;
  LineRound round_;
  AxisRecordings recordings_;
  WatchReports reports_;

  bool served_ = false;
  bool lent_ = false;
  Time nextOpen_{0}, nextSlow_{0}, nextLook_{0};
  std::optional<Time> clockAhead_;  // the wall clock before the one that never goes back
  const Remark::Tell tell_;
  Remark portRemark_, recordingsRemark_;
  Connections connections_;
};

// The folder of a line file's watch.
[[nodiscard]] std::string WatchFolder(const std::string& lineFile, const WatchSettings& settings);
// That of its recordings.
[[nodiscard]] std::string WatchRecordings(const std::string& watchFolder);

}  // namespace velmoor
