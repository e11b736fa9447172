// The session's connection to the amplifier: going online and offline, the way back after a
// restart, and noticing that the line is gone.
//
// Owned by whoever owns the session, beside it. The port is open while the session is online, and
// at no other time but inside an operation.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "online/AlarmReadings.h"
#include "operations/Desk.h"
#include "operations/MotorMatch.h"
#include "platform/Event.h"
#include "platform/Events.h"
#include "project/SessionState.h"

namespace velmoor {

// What became of a restart.
struct Restarted {
  bool found = false;   // and at the speed that was wanted
  std::string words{};  // for the user, where there is more to tell than that it was found
};

// Where and how the user wants the amplifier to be talked to.
struct LineSettings {
  std::int16_t com = 0;  // index of the port, from 0
  std::int32_t bitsPerSecond = 9600;
  std::string axis{"0"};
  bool echo = true;
};

class HardwareConnection {
 public:
  enum class Outcome : std::uint8_t { online, failed, byHand };

  // Both must outlive the object.
  HardwareConnection(SessionState& session, Desk& desk) : session_(session), desk_(desk) {}
  // Behind the making of the device object; shows its searches.
  void FollowDevice();
  // Behind the making of a project.
  void FollowProject();
  void ForgetProject() { project_.Clear(); }

  [[nodiscard]] LineState State() const { return state_; }
  // "Offline", "Online", "In alarm A.10: Overload", "Lost 09:12".
  [[nodiscard]] std::string StateText() const;
  // The same, and where it is connected: "Online, axis 0, 38400, COM1".
  [[nodiscard]] std::string ConnectionText() const;
  // The motor at its end.
  [[nodiscard]] MotorMatch& Motor() { return motor_; }

  // The user's command: searches, and tells what became of it. `byHand`: the user wants to connect
  // by hand.
  Outcome GoOnline();
  // The user's choice of another port, from 0: searches there, an online session after its
  // question.
  Outcome GoOnlineAt(std::int16_t com);
  // For an operation: asks once where the session is online, and searches otherwise. False: nobody
  // was found, of which the user was told behind "Cannot go online!" and `failure`.
  [[nodiscard]] bool GoOnlineFor(const std::string& failure);
  // From now on that is by these settings alone, without a search: on a line of many axes the
  // time-outs of a search at other speeds would be spent on each of them.
  void StayOn(const LineSettings& settings) { fixed_ = settings; }
  // The amplifier was told to restart: finds it again, at `rate` where that was changed; 0 is none
  // that a line can have.
  [[nodiscard]] Restarted AwaitRestart(std::optional<std::int32_t> rate);
  // The user's command.
  void GoOffline();
  // Without a word.
  void Leave();
  // Takes the settings into the session and connects by them, without a search; an online session
  // is asked about first, then `prepare` runs, which may refuse. Tells what became of it. False:
  // refused or failed.
  bool ConnectBy(const LineSettings& settings, const std::function<bool()>& prepare);
  // The axes that answer by the settings, of which that of the axis does not matter. An online
  // session keeps its line; otherwise the port is open for the search alone. `queried` gets the
  // count of the axes asked and ends the search with false. Nothing: the port could not be opened,
  // of which the user was told.
  [[nodiscard]] std::optional<std::vector<std::string>> FindAxes(
      const LineSettings& settings, const std::function<bool(int queried)>& queried);
  // Tells of an amplifier just connected that does not echo, or does not acknowledge, and offers to
  // set it right. Asks the amplifier once where it was not searched for.
  void OfferToSetLineRight(bool searched);

  // What the amplifier shows on its panel, as it was just read.
  void NoteAlarm(const AlarmReading& reading);
  // An exchange failed since the line was last known to be good.
  void Suspect() { suspect_ = true; }
  // Goes offline when the port is gone, or when an operation failed and the amplifier is silent.
  void LeaveIfLost();
  // Looks whether the line broke while nothing was asked; tells of it once.
  void WatchLine();
  // Goes offline, with one box that offers to try again.
  void TellLost(const std::string& reason);

 private:
  // The session is connected now, or is not any more.
  void TellOnline();
  void TellOffline();
  [[nodiscard]] bool MayLeaveForChange();
  [[nodiscard]] bool ReachFixed(const std::string& failure);
  // The same twice.
  [[nodiscard]] std::string TryTwice(const LineSettings& settings);
  // The words of the failure, empty when it is connected.
  [[nodiscard]] std::string TryBy(const LineSettings& settings);
  [[nodiscard]] bool Take(const LineSettings& settings);
  [[nodiscard]] ResultCode Search(const std::function<ResultCode()>& search);
  void Show(LineState state);

  SessionState& session_;
  Desk& desk_;
  LineState state_ = LineState::offline;
  AlarmReading alarm_;  // while the state is that of an alarm
  WallTime lost_;       // when it was, while it is
  bool suspect_ = false;
  int tries_ = 0;  // of the search under way
  std::optional<LineSettings> fixed_;
  MotorMatch motor_{session_, desk_};
  Connections device_, project_;
};

}  // namespace velmoor
