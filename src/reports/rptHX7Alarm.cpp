#include "reports/rptHX7Alarm.h"

#include <algorithm>

#include "instruments/AlarmRecordings.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

constexpr std::size_t kLogLines = 20;

// "from -12 to 263, at last 263": what became of an item in front of the alarm.
std::string RangeOf(const std::vector<ChartPoint>& curve, int decimals) {
  const auto [least, greatest] = std::ranges::minmax(curve, {}, &ChartPoint::y);
  return "from " + FixedText(least.y, decimals) + " to " + FixedText(greatest.y, decimals) +
         ", at last " + FixedText(curve.back().y, decimals);
}

}  // namespace

void rptHX7Alarm::ActiveReport_ReportStart() {
  SetHeadings({"What", "As it was"});
  const RecordingFolder folder(Proj().FileName());
  const auto names = AlarmRecordings(folder);
  if (names.empty()) return SetNote("No alarm was recorded with this project.");
  const Recording recording = ReadRecording(folder.PathOf(names.front()));
  const RecordingHeading& heading = recording.heading;
  SetNote("Recording " + names.front() + ".");
  arTemp = {{"Moment", heading.begun}, {"What came", heading.cause}, {"Axis", heading.axis}};
  std::vector<std::string> log;
  for (const std::string& remark : heading.remarks) {
    const std::size_t colon = remark.find(": ");
    if (colon == std::string::npos) continue;
    if (remark.starts_with("Log: ")) {
      log.push_back(remark.substr(colon + 2));
    } else {
      arTemp.emplace_back(remark.substr(0, colon), remark.substr(colon + 2));
    }
  }
  arTemp.emplace_back("Gains", heading.gains);
  for (std::size_t item = 0; item < recording.curves.size(); ++item) {
    const RecordedItem& info = heading.items[item];
    if (info.unit.empty()) continue;
    arTemp.emplace_back(info.name + " (" + info.unit + ")",
                        RangeOf(recording.curves[item], info.decimals));
  }
  const std::size_t first = log.size() > kLogLines ? log.size() - kLogLines : 0;
  for (std::size_t line = first; line < log.size(); ++line) arTemp.emplace_back("Log", log[line]);
}

}  // namespace velmoor
