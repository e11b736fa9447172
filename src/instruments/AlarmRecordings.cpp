#include "instruments/AlarmRecordings.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace velmoor {

std::vector<std::string> AlarmRecordings(const RecordingFolder& folder) {
  std::vector<std::pair<std::string, std::string>> found;  // by their moments, whatever the name
  for (const std::string& name : folder.Names()) {
    try {
      const RecordingHeading heading = ReadRecordingHeading(folder.PathOf(name));
      if (heading.cause.starts_with(kAlarmCause)) found.emplace_back(heading.begun, name);
    } catch (const std::exception&) {
      continue;
    }
  }
  std::ranges::sort(found, std::greater<>());
  std::vector<std::string> names;
  for (auto& [moment, name] : found) names.push_back(std::move(name));
  return names;
}

}  // namespace velmoor
