// Alarms and errors of the connected hardware, read and put into words.
#pragma once

#include <string>
#include <vector>

#include "link/ResultCode.h"
#include "session/Session.h"

namespace velmoor {

// One alarm or device error.
struct AlarmReading {
  std::string name;     // "Overspeed"; empty without a definition
  std::string code;     // status code
  std::string display;  // of the panel: "A.40"
};

// The display is that of an alarm or a warning, and no state.
[[nodiscard]] bool IsAlarm(const AlarmReading& reading);
// A.9x: the servo stays on.
[[nodiscard]] bool IsWarning(const AlarmReading& reading);

// Of the panel display "A.40", blanks around it dropped.
[[nodiscard]] AlarmReading DescribeAlarm(const AlarmNames& names, const std::string& strDisplay);
// By the names of the session.
[[nodiscard]] AlarmReading DescribeAlarm(const std::string& strDisplay);
// Of a read that the amplifier refused, by the number of the refusal: the name says that this is no
// alarm of the machine.
[[nodiscard]] AlarmReading DescribeDeviceError(ResultCode code);

// The present state of the amplifier. Below 0: it could not be read, and `reading` stays. A device
// error is told in `reading` and is the result.
[[nodiscard]] ResultCode ReadAlarm(AlarmReading& reading);
// The ten entries, newest first, without the empty ones. Below 0: the first failure, with the
// entries that came before it.
[[nodiscard]] ResultCode ReadAlarmHistory(std::vector<AlarmReading>& readings);
// The error code's four characters. Otherwise the failure.
[[nodiscard]] ResultCode ReadError(std::string& strError);

}  // namespace velmoor
