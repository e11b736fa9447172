#include "simulator/Vocabulary.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"
#include "simulator/memory/TableForms.h"

namespace velmoor {
namespace {

constexpr std::uint32_t kHomeOffset = 0x81D;
constexpr std::uint32_t kInertiaRatio = 0x103;

struct Rigidity {
  int speedGain;     // Pn100
  int integralTime;  // Pn101
  int positionGain;  // Pn102
  int torqueFilter;  // Pn401
};
// The gains of the levels 1 to 10.
constexpr Rigidity kRigidities[] = {{15, 6000, 15, 250}, {20, 4500, 20, 200}, {30, 3000, 30, 130},
                                    {40, 2000, 40, 100}, {60, 1500, 60, 70},  {85, 1000, 85, 50},
                                    {120, 800, 120, 30}, {160, 600, 160, 20}, {200, 500, 200, 15},
                                    {250, 400, 250, 10}};

Reply Refuse(const std::string& code = "E210") {
  return {.text = code + " ERR", .accepted = false};
}
Reply Acknowledge() {
  return {.text = "OK", .acknowledges = true};
}
Reply Tell(std::string_view name, const std::string& value) {
  return {.text = std::string(name) + "=" + value};
}
Reply AcknowledgeIf(bool accepted) {
  return accepted ? Acknowledge() : Refuse();
}

// The row at the front of an argument: one to three digits below `rows`.
std::optional<std::size_t> RowOf(std::string_view digits, std::size_t rows) {
  if (digits.empty() || digits.size() > 3 ||
      digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  const auto row = static_cast<std::size_t>(ParseWhole(digits).value_or(0));
  return row < rows ? std::optional(row) : std::nullopt;
}

// A whole number of at most eight digits, with or without a sign.
std::optional<std::int64_t> NumberArgument(std::string_view text) {
  const std::size_t sign = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  if (text.size() == sign || text.size() > sign + 8 ||
      text.find_first_not_of("0123456789", sign) != std::string_view::npos) {
    return std::nullopt;
  }
  return ParseWhole(text);
}

// Reads or writes one field: `argument` is the row, for a write followed by "=" and the value.
template <typename Cell, typename NormalForm>
Reply TableField(std::string_view word, std::string_view argument, std::size_t rows, Cell cell,
                 NormalForm normalForm) {
  const std::size_t equals = argument.find('=');
  const std::string_view digits = argument.substr(0, equals);
  const auto row = RowOf(digits, rows);
  if (!row) return Refuse();
  if (equals == std::string_view::npos) {
    return Tell(std::string(word) + std::string(digits), cell(*row));
  }
  const std::optional<std::string> value = normalForm(argument.substr(equals + 1));
  if (value) cell(*row) = *value;
  return AcknowledgeIf(value.has_value());
}

struct Entry;
using Handler = Reply (*)(AmplifierState&, const Entry&, std::string_view argument);
struct Entry {
  std::string_view word;
  Handler handler;
  std::size_t detail = 0;  // which field, which bit count
};

Reply IndexField(AmplifierState& state, const Entry& entry, std::string_view argument) {
  return TableField(
      entry.word, argument, kIndexRows,
      [&](std::size_t row) -> std::string& {
        return state.memory.index.working[row][entry.detail];
      },
      [&](std::string_view text) {
        return NormalIndexField(entry.detail, text, state.settings.firmware);
      });
}

Reply ZoneField(AmplifierState& state, const Entry& entry, std::string_view argument) {
  return TableField(
      entry.word, argument, kZoneRows,
      [&](std::size_t row) -> std::string& {
        return state.memory.zones.working[row][entry.detail];
      },
      NormalZoneLimit);
}

Reply JogField(AmplifierState& state, const Entry& entry, std::string_view argument) {
  return TableField(
      entry.word, argument, kJogRows,
      [&](std::size_t row) -> std::string& { return state.memory.jog.working[row]; },
      NormalJogSpeed);
}

Reply Parameter(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  const std::size_t equals = argument.find('=');
  const std::string_view digits = argument.substr(0, equals);
  const auto pn = digits.size() <= 3 ? ParseHex(digits) : std::nullopt;
  if (!pn) return Refuse();
  ParameterMemory& parameters = state.memory.parameters;
  if (equals != std::string_view::npos) {
    return AcknowledgeIf(parameters.Write(*pn, argument.substr(equals + 1)));
  }
  // Told under its display name: an answer that repeated the command would pass for its echo.
  const auto value = parameters.Read(*pn);
  return value ? Tell("Pn" + HexText(*pn, 3), *value) : Refuse();
}

std::int32_t ValueOf(const AmplifierState& state, std::string_view word) {
  if (word == "STIFF") return state.rigidity;
  const auto fixed = state.values.find(word);
  return fixed != state.values.end() ? fixed->second : state.axis.Value(word).value_or(0);
}

Reply Value(AmplifierState& state, const Entry& entry, std::string_view argument) {
  if (!argument.empty()) return Refuse();
  const std::int32_t value = ValueOf(state, entry.word);
  if (entry.detail == 0) return Tell(entry.word, PaddedNumber(value, 8));
  std::string bits(entry.detail, '0');
  for (std::size_t bit = 0; bit < entry.detail; ++bit) {
    if (((static_cast<std::uint32_t>(value) >> bit) & 1U) != 0) bits[entry.detail - 1 - bit] = '1';
  }
  return Tell(entry.word, bits);
}

// The same word asks without an argument and sets with one.
Reply RigidityLevel(AmplifierState& state, const Entry& entry, std::string_view argument) {
  if (argument.empty()) return Value(state, entry, argument);
  const auto level = NumberArgument(argument);
  if (!level || *level < 1 || std::cmp_greater(*level, std::size(kRigidities))) return Refuse();
  const Rigidity& gains = kRigidities[static_cast<std::size_t>(*level - 1)];
  ParameterMemory& parameters = state.memory.parameters;
  parameters.Write(0x100, NumberText(gains.speedGain));
  parameters.Write(0x101, NumberText(gains.integralTime));
  parameters.Write(0x102, NumberText(gains.positionGain));
  parameters.Write(0x401, NumberText(gains.torqueFilter));
  state.rigidity = static_cast<std::int32_t>(*level);
  return Acknowledge();
}

Reply Information(AmplifierState& state, const Entry& entry, std::string_view argument) {
  if (!argument.empty()) return Refuse();
  const AmplifierSettings& settings = state.settings;
  const std::pair<std::string_view, std::string> texts[] = {
      {"TYPE", settings.optionType},
      {"SVTYPE", settings.servoType},
      {"MTTYPE", settings.motorType},
      {"MTSIZE", PaddedNumber(settings.watts / 10, 8)},
      {"PGTYPE", settings.encoder},
      {"VER", HexText(static_cast<std::uint32_t>(settings.firmware), 8)},
      {"SVVER", "00000012"},
      {"PGVER", "00000001"},
      {"YSPEC", "00000000"},
      {"SVYSPEC", "00000000"}};
  for (const auto& [word, text] : texts) {
    if (word == entry.word) return Tell(word, text);
  }
  return Refuse();
}

Reply ErrorCode(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  return argument.empty() ? Reply{.text = "ERR " + state.alarm.error} : Refuse();
}

// Without an argument the present state behind a blank; with one an entry of the history.
Reply Alarm(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  const AlarmState& alarm = state.alarm;
  if (argument.empty()) {
    return {.text = "ALM " + state.axis.StateText()};
  }
  const auto index = RowOf(argument, 10);
  if (!index) return Refuse();
  return Tell("ALM" + std::string(argument),
              *index < alarm.history.size() ? alarm.history[*index] : std::string());
}

// Motion is refused with the servo off, and while something else moves the axis.
Reply AcknowledgeMotion(const AmplifierState& state, bool accepted) {
  if (accepted) return Acknowledge();
  return Refuse(state.axis.IsServoOn() ? "E215" : "E214");
}

Reply Jog(AmplifierState& state, const Entry& entry, std::string_view argument) {
  const auto speed = NumberArgument(argument);
  if (!speed || *speed < 0) return Refuse();
  const int direction = entry.detail == 0 ? 1 : -1;
  return AcknowledgeMotion(state, state.axis.Jog(direction, static_cast<std::int32_t>(*speed)));
}

Reply HomeOffset(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  const auto offset = NumberArgument(argument);
  if (!offset || !state.memory.parameters.Write(kHomeOffset, argument)) return Refuse();
  state.axis.SetHomeOffset(static_cast<std::int32_t>(*offset));
  return Acknowledge();
}

// From the row named, or from where the parameters say.
Reply StartProgramme(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  const auto row = RowOf(argument, kIndexRows);
  if (!row && !argument.empty()) return Refuse();
  return AcknowledgeMotion(state, state.axis.StartProgramme(row));
}

Reply ReturnToZero(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  return argument.empty() ? AcknowledgeMotion(state, state.axis.ReturnToZero()) : Refuse();
}

Reply ServoOn(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  if (!argument.empty()) return Refuse();
  return state.axis.SwitchServo(true) ? Acknowledge() : Refuse("E216");
}

// ---- words without an argument

using Action = void (*)(AmplifierState&);

template <Action action>
Reply Do(AmplifierState& state, const Entry& /*entry*/, std::string_view argument) {
  if (!argument.empty()) return Refuse();
  action(state);
  return Acknowledge();
}

// The same for what takes the time of the memory.
template <Action action>
Reply DoSlowly(AmplifierState& state, const Entry& entry, std::string_view argument) {
  Reply reply = Do<action>(state, entry, argument);
  if (reply.accepted) reply.takes = state.settings.storeTime;
  return reply;
}

void Nothing(AmplifierState& /*state*/) {}
void ServoOff(AmplifierState& state) {
  state.axis.SwitchServo(false);
}
void StopMotion(AmplifierState& state) {
  state.axis.Skip();
}
void HaltProgramme(AmplifierState& state) {
  state.axis.HaltProgramme();
}
void ResetProgramme(AmplifierState& state) {
  state.axis.ResetProgramme();
}
void ResetAlarm(AmplifierState& state) {
  state.alarm.Reset();
}
void ClearHistory(AmplifierState& state) {
  state.alarm.history.clear();
}
void StoreInertia(AmplifierState& state) {
  state.memory.parameters.Write(kInertiaRatio, NumberText(ValueOf(state, "INERTIA")));
}
void InitParameters(AmplifierState& state) {
  // The speed stays until the restart that has to follow.
  state.memory.parameters.Init();
}
void StoreIndex(AmplifierState& state) {
  state.memory.index.Store();
}
void StoreZones(AmplifierState& state) {
  state.memory.zones.Store();
}
void StoreJog(AmplifierState& state) {
  state.memory.jog.Store();
}
void InitIndex(AmplifierState& state) {
  state.memory.index.Init();
}
void InitZones(AmplifierState& state) {
  state.memory.zones.Init();
}
void InitJog(AmplifierState& state) {
  state.memory.jog.Init();
}

Reply RestartWord(AmplifierState& /*state*/, const Entry& /*entry*/, std::string_view argument) {
  if (!argument.empty()) return Refuse();
  Reply reply = Acknowledge();
  reply.restarts = true;
  return reply;
}

constexpr Entry kWords[] = {{"PRM", Parameter},
                            {"POST", IndexField, 0},
                            {"SPDT", IndexField, 1},
                            {"RDSTT", IndexField, 2},
                            {"RSPDT", IndexField, 3},
                            {"POUTT", IndexField, 4},
                            {"EVENTT", IndexField, 5},
                            {"LOOPT", IndexField, 6},
                            {"NEXTT", IndexField, 7},
                            {"ZONENT", ZoneField, 0},
                            {"ZONEPT", ZoneField, 1},
                            {"JSPDT", JogField},
                            {"NFB", Value},
                            {"PFB", Value},
                            {"TREF", Value},
                            {"NREF", Value},
                            {"PER", Value},
                            {"IN1", Value, 8},
                            {"IN2", Value, 8},
                            {"OUT1", Value, 8},
                            {"OUT2", Value, 8},
                            {"POS", Value},
                            {"DST", Value},
                            {"RPOS", Value},
                            {"RDST", Value},
                            {"STS", Value, 7},
                            {"PUN", Value},
                            {"INERTIA", Value},
                            {"STIFF", RigidityLevel},
                            {"TYPE", Information},
                            {"SVTYPE", Information},
                            {"MTTYPE", Information},
                            {"MTSIZE", Information},
                            {"PGTYPE", Information},
                            {"VER", Information},
                            {"SVVER", Information},
                            {"PGVER", Information},
                            {"YSPEC", Information},
                            {"SVYSPEC", Information},
                            {"ERR", ErrorCode},
                            {"ALM", Alarm},
                            {"JOGP", Jog, 0},
                            {"JOGN", Jog, 1},
                            {"ZSET", HomeOffset},
                            {"ARES", Do<ResetAlarm>},
                            {"SVON", ServoOn},
                            {"SVOFF", Do<ServoOff>},
                            {"SKIP", Do<StopMotion>},
                            {"ZRN", ReturnToZero},
                            {"START", StartProgramme},
                            {"STOP", Do<HaltProgramme>},
                            {"PGMRES", Do<ResetProgramme>},
                            {"ALMTRCCLR", Do<ClearHistory>},
                            {"ABSPGRES", DoSlowly<Nothing>},
                            {"TUNESTORE", Do<StoreInertia>},
                            {"PRMINIT", DoSlowly<InitParameters>},
                            {"PGMINIT", DoSlowly<InitIndex>},
                            {"ZONEINIT", DoSlowly<InitZones>},
                            {"JSPDINIT", DoSlowly<InitJog>},
                            {"PGMSTORE", DoSlowly<StoreIndex>},
                            {"ZONESTORE", DoSlowly<StoreZones>},
                            {"JSPDSTORE", DoSlowly<StoreJog>},
                            {"RES", RestartWord}};

const Entry* EntryOf(std::string_view command) {
  const Entry* longest = nullptr;
  for (const Entry& entry : kWords) {
    const bool isLonger = longest == nullptr || entry.word.size() > longest->word.size();
    if (isLonger && command.starts_with(entry.word)) longest = &entry;
  }
  return longest;
}

}  // namespace

Reply ExecuteWord(AmplifierState& state, std::string_view command) {
  const Entry* const entry = EntryOf(command);
  return entry != nullptr ? entry->handler(state, *entry, command.substr(entry->word.size()))
                          : Refuse();
}

std::string_view WordOf(std::string_view command) {
  const Entry* const entry = EntryOf(command);
  return entry != nullptr ? entry->word : std::string_view();
}

bool IsValueWord(std::string_view word) {
  return std::ranges::any_of(kWords, [word](const Entry& entry) {
    return entry.word == word && (entry.handler == Value || entry.handler == RigidityLevel);
  });
}

int BitsOf(std::string_view word) {
  for (const Entry& entry : kWords) {
    if (entry.word == word && entry.handler == Value) return static_cast<int>(entry.detail);
  }
  return 0;
}

}  // namespace velmoor
