// What a recording tells of the session that made it: the items and their units, gains and window
// as the amplifier has them then, and at an alarm the lines, the step and the log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "online/AlarmReadings.h"
#include "online/MonitoredItems.h"
#include "project/SessionState.h"
#include "recordings/BlackBox.h"
#include "recordings/Trigger.h"

namespace velmoor {

class RecordingHeadings {
 public:
  // `session` must outlive the object.
  explicit RecordingHeadings(SessionState& session) : session_(session) {}

  // Of the machine, where the project has one.
  [[nodiscard]] MonitoredUnits Units() const;
  // The columns of every recording here. The last one is the alarm, at kAlarmItem.
  [[nodiscard]] std::vector<RecordedItem> Items() const;
  // Reference units for one unit of the recorded positions; 0: not known.
  [[nodiscard]] double CountsForDistance() const;

  // Of a recording that begins now. `mayAsk`: the amplifier may be asked; otherwise gains are the
  // project's, and the window is not known.
  [[nodiscard]] RecordingHeading Of(const std::string& cause, bool mayAsk) const;
  // Of the minute before an alarm, which `box` holds.
  [[nodiscard]] RecordingHeading OfAlarm(const AlarmReading& alarm, const BlackBox& box,
                                         bool mayAsk) const;
  // The moment when that step of the programme begins, by its target; nothing for a step without an
  // absolute position.
  [[nodiscard]] std::optional<Trigger> OfStep(int step) const;

 private:
  class Asking;
  [[nodiscard]] RecordingHeading Heading(const std::string& cause, Asking& asking) const;
  [[nodiscard]] std::string Gains(Asking& asking) const;
  [[nodiscard]] std::string InPositionWindow(Asking& asking) const;
  [[nodiscard]] std::vector<std::string> AlarmRemarks(const AlarmReading& alarm,
                                                      const BlackBox& box, Asking& asking) const;
  [[nodiscard]] std::string LineWords(int item, const BlackBox& box, Asking& asking) const;
  [[nodiscard]] std::string StepWords(const BlackBox& box) const;

  SessionState& session_;
};

}  // namespace velmoor
