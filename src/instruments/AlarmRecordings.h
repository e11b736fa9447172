// The recordings of a project that an alarm has made.
#pragma once

#include <string>
#include <vector>

#include "recordings/RecordingFolder.h"

namespace velmoor {

// What the heading of such a recording says it began by.
inline constexpr const char* kAlarmCause = "alarm ";

// Their names, the latest first. One that cannot be read is passed over.
[[nodiscard]] std::vector<std::string> AlarmRecordings(const RecordingFolder& folder);

}  // namespace velmoor
