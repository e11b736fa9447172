// Where goes what a watch reads: to a broker, to files of a day, to a file of figures and to who
// asks for them.
//
// A change is told once: what was told last is known from the journal, also behind a kill.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "plant/DayFiles.h"
#include "plant/Messages.h"
#include "plant/Metrics.h"
#include "plant/Outbox.h"
#include "plant/Remark.h"
#include "plant/WatchHost.h"

namespace velmoor {

class WatchReports {
 public:
  // `host` and `axes` must outlive the object. `folder` is that of the watch, `lineFile` the path
  // of the line file. Throws FileError and std::runtime_error.
  WatchReports(WatchHost& host, const WatchSettings& settings, const std::string& folder,
               const std::string& lineFile, const std::vector<AxisState>& axes,
               std::vector<int> items);

  // ---- what is read; each by the place of its axis
  // State or alarm are as they are now.
  void Seen(std::size_t axis);
  // All its items were read.
  void Read(std::size_t axis);
  void Recorded(std::size_t axis, const std::string& name, std::size_t bytes);
  // "watched", "lent" or "no port".
  void Line(const std::string& state, const std::string& reason);

  // Hands on what waits. Never waits itself; to be called often.
  void Serve();
  // The figures, once in a while.
  void Show(LineFigures figures);
  // The last message.
  void End();

 private:
  using Time = std::chrono::milliseconds;

  // `key` is another one than was told, and is told from now on.
  [[nodiscard]] bool IsNews(const std::string& axis, const char* kind, const std::string& key);
  // Adds the message that `make` makes of its number, where messages go anywhere.
  template <typename Make>
  void Publish(const std::string& axis, const char* kind, Make make);
  void TellDropped(Time now);
  [[nodiscard]] std::string NameOf(std::size_t axis) const;

  WatchHost& host_;
  const WatchSettings settings_;
  const std::vector<AxisState>& axes_;
  const std::vector<int> items_;
  const Messages messages_;
  std::optional<DayFiles> days_;
  std::optional<Outbox> outbox_;
  std::unique_ptr<Publisher> publisher_;
  LineReport report_;
  std::map<std::string, std::string> keys_;  // what was told last, by axis and kind
  std::vector<Time> valuesDue_;
  Time nextServe_{0}, nextFlush_{0}, nextDropped_{0};
  const Remark::Tell tell_;
  Remark publisherRemark_, outboxRemark_, daysRemark_, metricsRemark_;
};

}  // namespace velmoor
