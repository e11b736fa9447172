// Storing and resetting what the amplifier holds.
#include <algorithm>
#include <string_view>

#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::int32_t kFactoryBaudRate = 9600;
constexpr std::int32_t kNormalTimeOut = 5000;

// What a reset is called; nothing for a selector that resets nothing.
std::optional<std::string> GetResetType(std::int32_t eItem) {
  switch (static_cast<SimpleCommand>(eItem)) {
    case SimpleCommand::resetAlarm:
      return "Current Alarm";
    case SimpleCommand::parametersInit:
      return "All Parameters";
    case SimpleCommand::jogInit:
      return "Jog Table";
    case SimpleCommand::indexInit:
      return "Index Table";
    case SimpleCommand::zoneInit:
      return "Zone Table";
    default:
      return std::nullopt;
  }
}

}  // namespace

ResultCode clsHX7Helix7::SaveTablesToMemory(std::int32_t eItem) {
  const auto store = static_cast<SimpleCommand>(eItem);
  switch (store) {
    case SimpleCommand::jogStore:
    case SimpleCommand::indexStore:
    case SimpleCommand::zoneStore: {
      const ResultCode lngResult = clsSerialComm.helixSimpleCommand(eItem);
      if (lngResult == kSuccess) unstored.erase(store);
      return lngResult;
    }
    default:
      return kSuccess;
  }
}

ResultCode clsHX7Helix7::ResetHardware() {
  const ResultCode lngResult =
      clsSerialComm.helixSimpleCommand(static_cast<std::int32_t>(SimpleCommand::restart));
  if (lngResult == kSuccess) {
    unstored.clear();
    motorMayBeOn = false;  // an amplifier restarts with its servo off
  }
  return lngResult;
}

ResultCode clsHX7Helix7::ResetDefaults(std::int32_t eItem) {
  const auto strType = GetResetType(eItem);
  if (!strType) return kSuccess;
  ResetStatus.Raise(*strType, "Start");
  ResultCode lngResult = clsSerialComm.helixSimpleCommand(eItem);
  const bool blnParameters = eItem == static_cast<std::int32_t>(SimpleCommand::parametersInit);
  if (blnParameters && lngResult == kSuccess) lngResult = RestartWithFactorySettings();
  ResetStatus.Raise(*strType, lngResult == kSuccess ? "Complete" : "Failed");
  return lngResult;
}

// The amplifier comes back at the speed of its factory settings, some time after its restart.
ResultCode clsHX7Helix7::RestartWithFactorySettings() {
  ResultCode lngResult = ResetHardware();
  if (lngResult != kSuccess) return lngResult;
  clsSerialComm.disconnect();
  std::int32_t lngBaudRate = 0;
  lngResult = RepeatWhileRestarting([&] {
    PrepareSearch(kFactoryBaudRate);
    bool blnEcho = true;
    return clsSerialComm.autoConnect(blnEcho, lngBaudRate);
  });
  // Written after a failed search too, as 0.
  gMainForm->SetBaudRate(lngBaudRate);
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

ResultCode clsHX7Helix7::RepeatWhileRestarting(const std::function<ResultCode()>& search) {
  ResultCode lngResult = search();
  for (int attempt = 1; attempt < intRestartAttempts; ++attempt) {
    const bool blnSilent = lngResult == kNotEstablished || lngResult == kNoResponse;
    if (!blnSilent || clsSerialComm.wasSearchStopped()) break;
    lngResult = search();
  }
  return lngResult;
}

}  // namespace velmoor
