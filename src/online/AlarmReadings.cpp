#include "online/AlarmReadings.h"

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr int kHistoryEntries = 10;

std::string HexOf(ResultCode code) {
  return HexText(static_cast<std::uint32_t>(code));
}

}  // namespace

bool IsAlarm(const AlarmReading& reading) {
  return reading.display.starts_with("A.");
}

bool IsWarning(const AlarmReading& reading) {
  return reading.display.starts_with("A.9");
}

AlarmReading DescribeAlarm(const AlarmNames& names, const std::string& strDisplay) {
  const std::string display(Trim(strDisplay));
  return {names.GetAlarmName(display), names.GetAlarmCode(display), display};
}

AlarmReading DescribeAlarm(const std::string& strDisplay) {
  return DescribeAlarm(*gMainForm->Alarm(), strDisplay);
}

AlarmReading DescribeDeviceError(ResultCode code) {
  const AlarmNames& names = *gMainForm->Alarm();
  // The one lookup takes the code in hexadecimal, the other in decimal.
  return {"could not be read: " + names.GetErrorName(HexOf(code)), HexOf(code),
          names.GetErrorPanelDisplay(NumberText(code))};
}

ResultCode ReadAlarm(AlarmReading& reading) {
  std::string strAlarm;
  const ResultCode result = gMainForm->Helix7()->GetAlarm(strAlarm);
  if (result == kSuccess) reading = DescribeAlarm(strAlarm);
  if (result > 0) reading = DescribeDeviceError(result);
  return result;
}

ResultCode ReadAlarmHistory(std::vector<AlarmReading>& readings) {
  readings.clear();
  for (int index = 0; index < kHistoryEntries; ++index) {
    std::string strAlarm;
    const ResultCode result = gMainForm->Helix7()->GetAlarmHistory(index, strAlarm);
    if (result < 0) return result;
    if (result > 0) {
      readings.push_back(DescribeDeviceError(result));
    } else if (!Trim(strAlarm).empty()) {
      readings.push_back(DescribeAlarm(strAlarm));
    }
  }
  return kSuccess;
}

ResultCode ReadError(std::string& strError) {
  std::string answer;
  const ResultCode result = gMainForm->Helix7()->GetError(answer);
  if (result != kSuccess) return result;
  strError = Trim(answer);
  if (strError.size() > 5) strError = strError.substr(5, 4);
  return kSuccess;
}

}  // namespace velmoor
