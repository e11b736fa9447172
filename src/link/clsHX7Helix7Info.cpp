// What the amplifier tells about itself: types, versions, models, alarms.
#include <cmath>
#include <limits>
#include <utility>

#include "link/CommandWords.h"
#include "link/ModelStrings.h"
#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

std::int32_t Selector(InfoCommand command) {
  return static_cast<std::int32_t>(command);
}

}  // namespace

ResultCode clsHX7Helix7::GetInfo(std::int32_t cmd, std::string& strInfo) {
  std::string strAnswer;
  const ResultCode lngResult = clsSerialComm.helixReadInfo(cmd, strAnswer);
  if (lngResult == kSuccess) strInfo = std::move(strAnswer);
  return lngResult;
}

ResultCode clsHX7Helix7::GetVersion(std::int32_t cmd, std::string& strVersion) {
  const ResultCode lngResult = GetInfo(cmd, strVersion);
  if (lngResult == kSuccess) strVersion = Right(strVersion, 4);
  return lngResult;
}

ResultCode clsHX7Helix7::GetYSpec(std::int32_t cmd, std::string& strYSpec) {
  std::string strAnswer;
  const ResultCode lngResult = GetInfo(cmd, strAnswer);
  if (lngResult != kSuccess || strAnswer.empty()) return lngResult;
  const auto number = ParseWhole(strAnswer);
  if (!number) return kValueNotFound;
  strYSpec = *number == 0 ? "Standard" : "Y" + NumberText(*number);
  return lngResult;
}

ResultCode clsHX7Helix7::GetOptionType(std::string& strType) {
  return GetInfo(Selector(InfoCommand::optionType), strType);
}
ResultCode clsHX7Helix7::GetOptionVersion(std::string& strVersion) {
  return GetVersion(Selector(InfoCommand::optionVersion), strVersion);
}
ResultCode clsHX7Helix7::GetOptionYSpec(std::string& strYSpec) {
  return GetYSpec(Selector(InfoCommand::optionYSpec), strYSpec);
}
ResultCode clsHX7Helix7::GetServoType(std::string& strType) {
  return GetInfo(Selector(InfoCommand::servoType), strType);
}
ResultCode clsHX7Helix7::GetServoVersion(std::string& strVersion) {
  return GetVersion(Selector(InfoCommand::servoVersion), strVersion);
}
ResultCode clsHX7Helix7::GetServoYSpec(std::string& strYSpec) {
  return GetYSpec(Selector(InfoCommand::servoYSpec), strYSpec);
}

// ---- encoder

ResultCode clsHX7Helix7::GetEncoderInfo(std::string& strInfo) {
  return GetInfo(Selector(InfoCommand::encoderInfo), strInfo);
}
ResultCode clsHX7Helix7::GetEncoderVersion(std::string& strValue) {
  return GetVersion(Selector(InfoCommand::encoderVersion), strValue);
}

ResultCode clsHX7Helix7::GetEncoderNumber(std::uint32_t& number) {
  std::string strInfo;
  const ResultCode lngResult = GetEncoderInfo(strInfo);
  if (lngResult != kSuccess) return lngResult;
  const auto value = ParseHex(Trim(strInfo));
  if (!value) return kValueNotFound;
  number = *value;
  return kSuccess;
}

ResultCode clsHX7Helix7::GetEncoderResolution(std::int32_t& lngCount) {
  std::uint32_t number = 0;
  const ResultCode lngResult = GetEncoderNumber(number);
  // A quarter of the counts; one bit or none rounds to 0.
  if (lngResult == kSuccess) lngCount = ToInt32(std::ldexp(1.0, static_cast<int>(number % 32)) / 4);
  return lngResult;
}

ResultCode clsHX7Helix7::GetEncoderResolutionBits(std::string& strResBits) {
  std::string strInfo;
  const ResultCode lngResult = GetEncoderInfo(strInfo);
  if (lngResult != kSuccess) return lngResult;
  const auto bits = ParseHex(Right(Trim(strInfo), 2));
  if (!bits) return kValueNotFound;
  strResBits = NumberText(*bits) + "-Bit";
  return kSuccess;
}

ResultCode clsHX7Helix7::GetEncoderType(std::string& strType) {
  std::uint32_t number = 0;
  const ResultCode lngResult = GetEncoderNumber(number);
  if (lngResult != kSuccess) return lngResult;
  const double kind = RoundHalfEven(static_cast<double>(number) / 256);
  strType = std::fmod(kind, 2) == 0 ? "Incremental" : "Absolute";
  return kSuccess;
}

// ---- models

ResultCode clsHX7Helix7::GetMotorType(std::string& strType) {
  return GetInfo(Selector(InfoCommand::motorType), strType);
}

ResultCode clsHX7Helix7::GetMotorSize(std::string& strSize) {
  std::string strAnswer;
  const ResultCode lngResult = GetInfo(Selector(InfoCommand::motorSize), strAnswer);
  if (lngResult != kSuccess) return lngResult;
  // The amplifier counts in tens of watts.
  const auto tens = ParseWhole(strAnswer);
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() / 10;
  if (!tens || *tens < 0 || *tens > kMost) return kValueNotFound;
  strSize = NumberText(*tens * 10);
  return kSuccess;
}

ResultCode clsHX7Helix7::ReadMotorCodes() {
  const ResultCode lngResult = GetMotorType(strMotorType);
  return lngResult != kSuccess ? lngResult : GetMotorSize(strMotorSize);
}

ResultCode clsHX7Helix7::GetServoModel(std::string& strModel) {
  const ResultCode lngResult = ReadMotorCodes();
  if (lngResult != kSuccess) return lngResult;
  strModel = "VKLM-" + GetServoYY(strMotorSize) + GetServoX(strMotorType) + "E";
  return kSuccess;
}

ResultCode clsHX7Helix7::GetMotorModel(std::string& strModel) {
  ResultCode lngResult = ReadMotorCodes();
  if (lngResult == kSuccess) lngResult = GetEncoderInfo(strEncoderInfo);
  if (lngResult != kSuccess) return lngResult;
  strModel = "VMM" + GetMotorW(strMotorType) + "H-" + GetMotorYY(strMotorSize) +
             GetMotorX(strMotorType) + GetMotorV(strEncoderInfo);
  return kSuccess;
}

// ---- alarms

ResultCode clsHX7Helix7::GetAlarm(std::string& strAlarm) {
  const ResultCode lngResult = GetInfo(Selector(InfoCommand::alarm), strAlarm);
  if (lngResult == kSuccess && strAlarm == "INPOS") strAlarm = "RUN";
  if (lngResult == kSuccess) AlarmRead.Raise(strAlarm);
  return lngResult;
}

ResultCode clsHX7Helix7::GetAlarmHistory(std::int32_t Index, std::string& strAlarm) {
  return clsSerialComm.readAlarmHistory(Index, strAlarm);
}

ResultCode clsHX7Helix7::GetError(std::string& strError) {
  RawResponse response;
  const ResultCode lngResult = clsSerialComm.writeToSerial(gMainForm->Axis() + "ERR", response);
  if (lngResult == kSuccess) strError = response[1];
  return lngResult;
}

std::string clsHX7Helix7::GetAlarmAndError() {
  std::string strText;
  std::string strAnswer;
  if (GetAlarm(strAnswer) == kSuccess) strText = gMainForm->Alarm()->GetAlarmName(strAnswer);
  // The error's name replaces the alarm's on purpose, even where it is empty.
  if (GetError(strAnswer) == kSuccess) {
    strText = gMainForm->Alarm()->GetErrorName(Mid(strAnswer, 6, 4));
  }
  return strText.empty() ? strText : "\r" + strText;
}

}  // namespace velmoor
