// Connection, identity and the forwarded operations; resets are in clsHX7Helix7Resets.cpp, the
// motor in clsHX7Helix7Motor.cpp, the judgement of writes in clsHX7Helix7Writes.cpp, what the
// amplifier tells about itself in clsHX7Helix7Info.cpp.
#include "link/clsHX7Helix7.h"

#include <utility>

#include "link/CommandWords.h"
#include "link/ModelStrings.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::int32_t kSearchTimeOut = 500;
constexpr std::int32_t kNormalTimeOut = 5000;

std::int32_t Selector(SimpleCommand command) {
  return static_cast<std::int32_t>(command);
}

}  // namespace

clsHX7Helix7::clsHX7Helix7() {
  clsSerialComm.setupClass(gMainForm->Comm());
  clsSerialComm.setWriteCheck([this](const std::string& strLine, ResultCode lngResult) {
    return CheckWrite(strLine, lngResult);
  });
}

// ---- connection

void clsHX7Helix7::SetComm(std::int16_t iAxisNo, std::int32_t lBaudRate, bool bEchoBack,
                           std::int16_t iComPort, std::int32_t lTimeOut) {
  clsSerialComm.setupClass(gMainForm->Comm(), iAxisNo, lBaudRate, bEchoBack, iComPort, lTimeOut);
}

void clsHX7Helix7::PrepareSearch(std::int32_t lngBaudRate) {
  const auto axis = static_cast<std::int16_t>(ParseHex(gMainForm->Axis()).value_or(0) & 0xF);
  const auto comPort = static_cast<std::int16_t>(gMainForm->COM() + 1);
  clsSerialComm.setAxisNo(axis);
  clsSerialComm.setComPort(comPort);
  clsSerialComm.setBaudRate(lngBaudRate);
  clsSerialComm.setEchoBack(gMainForm->Echo() != 0);
  clsSerialComm.setTimeOut(kSearchTimeOut);
}

void clsHX7Helix7::SetSearchWatch(SearchWatch watch) {
  if (!watch) return clsSerialComm.setSearchWatch({});
  clsSerialComm.setSearchWatch([watch = std::move(watch)](std::int32_t bitsPerSecond) {
    return watch(bitsPerSecond, gMainForm->Axis());
  });
}

ResultCode clsHX7Helix7::FindAmplifier(bool& blnEcho, std::int32_t& lngBaudRate) {
  if (gMainForm->IsOnline() && gMainForm->Comm().IsOpen()) {
    if (clsSerialComm.askAgain() == kSuccess) {
      blnEcho = clsSerialComm.echoBack();
      lngBaudRate = clsSerialComm.baudRate();
      return kSuccess;
    }
    clsSerialComm.setTimeOut(kSearchTimeOut);
  }
  return clsSerialComm.autoConnect(blnEcho, lngBaudRate);
}

ResultCode clsHX7Helix7::GoOnline(bool blnHideError) {
  PrepareSearch(gMainForm->BaudRate());
  bool blnEcho = true;
  std::int32_t lngBaudRate = 0;
  ResultCode lngResult = FindAmplifier(blnEcho, lngBaudRate);
  if (lngResult == kSuccess) {
    const std::string strError = IdentityText(IsRX900AndVKLM());
    if (strError.empty()) {
      gMainForm->SetHelix7CommExists(true);
      gMainForm->SetBaudRate(lngBaudRate);
      gMainForm->SetEcho(blnEcho ? 1 : 0);
    } else {
      // Any failure of the identity becomes the same result.
      lngResult = kPortNotOpen;
      clsSerialComm.TellFailure({.code = lngResult, .reason = strError});
      if (!blnHideError) ShowExclamation(strError);
    }
  }
  if (lngResult == kSuccess) lngResult = GetServoModel(strServoModel);
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

bool clsHX7Helix7::GoOnlineManually() {
  const bool blnOpen = clsSerialComm.manualConnect();
  if (blnOpen) {
    // The model is a courtesy here; the caller tests the identity.
    (void)GetServoModel(strServoModel);
    gMainForm->SetHelix7CommExists(true);
  }
  return blnOpen;
}

bool clsHX7Helix7::GoOffline() {
  MakeMotorSafe();
  clsSerialComm.disconnect();
  gMainForm->SetHelix7CommExists(false);
  return true;
}

ResultCode clsHX7Helix7::GoOnlineAfterRestart() {
  return RepeatWhileRestarting([this] { return GoOnline(true); });
}

// ---- identity

std::string clsHX7Helix7::IdentityText(ResultCode result) const {
  if (result == kSuccess) return {};
  if (result == kNotRX900) return "Option type error: Not RX900!";
  if (result == kNotVKLM && !servoTypeFailed) return "Servo type error: Not VKLM!";
  return "Unable to determine if hardware is a RX900+VKLM set!\r"
         "Check hardware and communications before proceeding.\r\r" +
         CauseOf(LatestFailure(), *gMainForm->Alarm());
}

ResultCode clsHX7Helix7::IsRX900AndVKLM() {
  servoTypeFailed = false;
  const ResultCode lngResult = GetOptionType(strOptionType);
  if (lngResult != kSuccess) return lngResult;
  if (Right(strOptionType, 4) != "0600") return kNotRX900;
  // A failed read ends as a wrong amplifier; IdentityText has other words for it.
  strServoType.clear();
  servoTypeFailed = GetServoType(strServoType) != kSuccess;
  const std::string strType = Right(strServoType, 2);
  if (strType != "02") return kNotVKLM;
  strServoType = GetServoTypeModelString(strType);
  return kSuccess;
}

bool clsHX7Helix7::GetAxis(const std::string& strThisAxis) {
  RawResponse response;
  const ResultCode lngResult = clsSerialComm.writeToSerial(strThisAxis + "TYPE", response);
  YieldEvents();
  return lngResult == kSuccess && Mid(response[1], 11, 4) == "0600";
}

ResultCode clsHX7Helix7::AskAcknowledges(bool& acknowledges) {
  std::string strValue;
  const ResultCode lngResult = GetParameter("802", strValue);
  if (lngResult == kSuccess) acknowledges = ParseWhole(Trim(strValue)) != 0;
  return lngResult;
}

ResultCode clsHX7Helix7::MakeItAcknowledge() {
  clsSerialComm.setTimeOut(kSearchTimeOut);
  const ResultCode lngResult = clsSerialComm.askForAcknowledges();
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

ResultCode clsHX7Helix7::MakeItEcho() {
  ResultCode lngResult = SetParameter("800", "1");
  if (lngResult == kSuccess) lngResult = ResetHardware();
  if (lngResult != kSuccess) return lngResult;
  clsSerialComm.disconnect();
  return GoOnlineAfterRestart();
}

bool clsHX7Helix7::Answers() {
  std::string strType;
  clsSerialComm.setTimeOut(kSearchTimeOut);
  const ResultCode lngResult = GetOptionType(strType);
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult == kSuccess;
}

ResultCode clsHX7Helix7::AskState(std::string& strAlarm, std::int32_t& lngStatus) {
  clsSerialComm.setTimeOut(kSearchTimeOut);
  ResultCode lngResult = GetAlarm(strAlarm);
  if (lngResult == kEchoMismatch || lngResult == kValueNotFound) {
    clsSerialComm.Drain();
    lngResult = GetAlarm(strAlarm);
  }
  if (lngResult == kSuccess) {
    lngResult = GetHelixValue(static_cast<std::int32_t>(ValueCommand::status), lngStatus);
  }
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

bool clsHX7Helix7::IsOptionVersionNew() {
  std::string strVersion;
  if (!gMainForm->IsOnline() || GetOptionVersion(strVersion) != kSuccess) return false;
  return ParseHex(strVersion).value_or(0) >= 3;
}

bool clsHX7Helix7::GetMotorSizeWhileOffline(std::string& strSize) {
  if (GoOnline(true) != kSuccess) {
    // The port deliberately stays as the search left it.
    strSize = gMainForm->LastMotorSize();
    return true;
  }
  if (GetMotorSize(strSize) == kSuccess) {
    gMainForm->SetLastMotorSize(strSize);
  } else {
    strSize = gMainForm->LastMotorSize();
  }
  GoOffline();
  return true;
}

// ---- values, parameters, tables

ResultCode clsHX7Helix7::GetHelixValue(std::int32_t cmd, std::int32_t& lngData) {
  const ResultCode lngResult = clsSerialComm.helixGetValue(cmd, lngData);
  if (lngResult == kSuccess) ValueRead.Raise(static_cast<ValueCommand>(cmd), lngData);
  return lngResult;
}

ResultCode clsHX7Helix7::GetInertiaRatio(std::int32_t& lngReturn) {
  return GetHelixValue(static_cast<std::int32_t>(ValueCommand::inertiaRatio), lngReturn);
}

ResultCode clsHX7Helix7::GetRigidity(std::int16_t& iReturn) {
  std::int32_t lngValue = 0;
  const ResultCode lngResult =
      GetHelixValue(static_cast<std::int32_t>(ValueCommand::rigidity), lngValue);
  if (!std::in_range<std::int16_t>(lngValue)) return kValueNotFound;
  iReturn = static_cast<std::int16_t>(lngValue);
  return lngResult;
}

ResultCode clsHX7Helix7::SetInertiaRatio() {
  return clsSerialComm.SetInertiaRatio();
}
ResultCode clsHX7Helix7::SetRigidity(std::int16_t iValue) {
  return clsSerialComm.SetRigidity(iValue);
}
ResultCode clsHX7Helix7::GetParameter(const std::string& sParmNo, std::string& sParmVal) {
  return clsSerialComm.readParameter(sParmNo, sParmVal);
}
ResultCode clsHX7Helix7::SetParameter(const std::string& sParmNo, const std::string& sParmVal) {
  return clsSerialComm.writeParameter(sParmNo, sParmVal);
}
ResultCode clsHX7Helix7::SetHomeOffset(std::int32_t lngOffset) {
  return clsSerialComm.writeHomeOffset(lngOffset);
}
ResultCode clsHX7Helix7::readIndexTable(std::int16_t iRow, IndexRow& strIndex) {
  return clsSerialComm.readIndexTable(iRow, strIndex);
}
ResultCode clsHX7Helix7::writeIndexTable(std::int16_t iRow, const IndexRow& strIndex) {
  // Also a row whose answer does not come may be there.
  unstored.insert(SimpleCommand::indexStore);
  return clsSerialComm.writeIndexTable(iRow, strIndex);
}
ResultCode clsHX7Helix7::readZoneTable(std::int16_t iRow, ZoneRow& strZone) {
  return clsSerialComm.readZoneTable(iRow, strZone);
}
ResultCode clsHX7Helix7::writeZoneTable(std::int16_t iRow, const ZoneRow& strZone) {
  unstored.insert(SimpleCommand::zoneStore);
  return clsSerialComm.writeZoneTable(iRow, strZone);
}
ResultCode clsHX7Helix7::readJogTable(std::int16_t iRow, std::string& strJogSpeed) {
  return clsSerialComm.readJogTable(iRow, strJogSpeed);
}
ResultCode clsHX7Helix7::writeJogTable(std::int16_t iRow, const std::string& strJogSpeed) {
  unstored.insert(SimpleCommand::jogStore);
  return clsSerialComm.writeJogTable(iRow, strJogSpeed);
}

// ---- commands

ResultCode clsHX7Helix7::ClearAlarmHistory() {
  return clsSerialComm.helixSimpleCommand(Selector(SimpleCommand::clearAlarmHistory));
}
ResultCode clsHX7Helix7::ResetAbsoluteEncoder() {
  return clsSerialComm.helixSimpleCommand(Selector(SimpleCommand::resetAbsoluteEncoder));
}

ResultCode clsHX7Helix7::SendToSerial(const std::string& strCmd, std::string& strReturn) {
  RawResponse response;
  const ResultCode lngResult = clsSerialComm.writeToSerial(strCmd, response);
  if (lngResult == kSuccess) strReturn = response[1];
  return lngResult;
}

}  // namespace velmoor
