// The vocabulary of the wire: every command word, and the selectors that choose among them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace velmoor {

inline constexpr std::string_view kRigidityCommand = "STIFF";
inline constexpr std::string_view kInertiaRatioCommand = "TUNESTORE";
inline constexpr std::string_view kHomeOffsetCommand = "ZSET";
inline constexpr std::string_view kAlarmHistoryCommand = "ALM";
inline constexpr std::string_view kParameterCommand = "PRM";
inline constexpr std::string_view kJogForwardCommand = "JOGP";
inline constexpr std::string_view kJogReverseCommand = "JOGN";

// One field of a table's row.
struct FieldCommand {
  std::string_view word;
  std::string_view field;  // in the user's words
};
// In the order in which they travel.
inline constexpr std::array<FieldCommand, 8> kIndexTableCommands{
    {{"POST", "position"},
     {"SPDT", "speed"},
     {"RDSTT", "registration distance"},
     {"RSPDT", "registration speed"},
     {"POUTT", "outputs"},
     {"EVENTT", "event"},
     {"LOOPT", "loop"},
     {"NEXTT", "next"}}};
inline constexpr std::array<FieldCommand, 2> kZoneTableCommands{
    {{"ZONENT", "lower limit"}, {"ZONEPT", "upper limit"}}};
inline constexpr std::array<FieldCommand, 1> kJogTableCommands{{{"JSPDT", "speed"}}};

// Commands without an argument, answered by an acknowledge.
enum class SimpleCommand : std::int32_t {
  resetAlarm = 0,
  servoOn,
  servoOff,
  parametersInit,
  jogInit,
  indexInit,
  zoneInit,
  jogStore,
  indexStore,
  zoneStore,
  clearAlarmHistory,
  resetAbsoluteEncoder,
  skip,
  zeroReturn,  // nothing in the system sends it
  restart
};
inline constexpr std::array<std::string_view, 15> kSimpleCommands{
    "ARES",      "SVON",     "SVOFF",     "PRMINIT",  "JSPDINIT",
    "PGMINIT",   "ZONEINIT", "JSPDSTORE", "PGMSTORE", "ZONESTORE",
    "ALMTRCCLR", "ABSPGRES", "SKIP",      "ZRN",      "RES"};

// Questions whose answer is a number.
enum class ValueCommand : std::int32_t {
  motorSpeed = 0,  // rpm
  motorPosition,
  torque,          // percent of the rated torque
  speedReference,  // rpm
  followingError,
  amplifierInputs,  // bits, like the next three
  optionInputs,
  amplifierOutputs,
  optionOutputs,
  targetPosition,
  distanceToTarget,
  registrationPosition,
  distanceToRegistration,
  status,  // bits
  currentPosition,
  rigidity,
  inertiaRatio
};
inline constexpr std::array<std::string_view, 17> kValueCommands{
    "NFB", "PFB", "TREF", "NREF", "PER", "IN1", "IN2",   "OUT1",   "OUT2",
    "POS", "DST", "RPOS", "RDST", "STS", "PUN", "STIFF", "INERTIA"};

// Questions whose answer is a text.
enum class InfoCommand : std::int32_t {
  error = 0,  // a blank before its value, like the alarm
  alarm,
  servoType,
  servoVersion,
  servoYSpec,
  motorSize,
  motorType,
  optionType,
  optionVersion,
  optionYSpec,
  encoderInfo,
  encoderVersion,
  encoderInfoAgain  // the same question as encoderInfo
};
inline constexpr std::array<std::string_view, 13> kReadInfoCommands{
    "ERR",  "ALM", "SVTYPE", "SVVER",  "SVYSPEC", "MTSIZE", "MTTYPE",
    "TYPE", "VER", "YSPEC",  "PGTYPE", "PGVER",   "PGTYPE"};

}  // namespace velmoor
