#include "online/TerminalWords.h"

#include <algorithm>
#include <array>

namespace velmoor {
namespace {

constexpr std::array kWords = std::to_array<TerminalWord>({
    {"PRM", "parameter: PRM80B asks, PRM80B=1 sets"},
    {"PRMINIT", "all parameters back to factory values"},
    {"ALM", "alarm and state; ALM0 to ALM9 the history"},
    {"ARES", "resets the alarm"},
    {"ALMTRCCLR", "clears the alarm history"},
    {"ERR", "the latest error code"},
    {"STS", "status, as bits"},
    {"NFB", "motor speed in rpm"},
    {"NREF", "speed reference in rpm"},
    {"TREF", "torque in percent"},
    {"PFB", "motor position in counts"},
    {"PUN", "current position in counts"},
    {"POS", "target position in counts"},
    {"DST", "distance to the target"},
    {"PER", "following error"},
    {"RPOS", "registration position"},
    {"RDST", "distance to the registration position"},
    {"IN1", "inputs of the amplifier, as bits"},
    {"IN2", "inputs of the option card, as bits"},
    {"OUT1", "outputs of the amplifier, as bits"},
    {"OUT2", "outputs of the option card, as bits"},
    {"SVON", "servo on"},
    {"SVOFF", "servo off"},
    {"JOGP", "jogs forward: JOGP500, until SKIP"},
    {"JOGN", "jogs in reverse: JOGN500, until SKIP"},
    {"SKIP", "ends the motion in progress"},
    {"START", "runs the index table; START5 from row 5"},
    {"STOP", "halts the programme"},
    {"PGMRES", "puts the programme back to its beginning"},
    {"ZRN", "zero point return"},
    {"ZSET", "home offset: ZSET-1200"},
    {"STIFF", "rigidity: STIFF asks, STIFF4 sets"},
    {"INERTIA", "inertia ratio in percent"},
    {"TUNESTORE", "keeps the measured inertia ratio"},
    {"POST", "index table, position: POST5 asks for row 5"},
    {"SPDT", "index table, speed"},
    {"RDSTT", "index table, registration distance"},
    {"RSPDT", "index table, registration speed"},
    {"POUTT", "index table, outputs"},
    {"EVENTT", "index table, event"},
    {"LOOPT", "index table, loop"},
    {"NEXTT", "index table, next"},
    {"PGMSTORE", "stores the index table"},
    {"PGMINIT", "empties the index table"},
    {"ZONENT", "zone table, lower limit"},
    {"ZONEPT", "zone table, upper limit"},
    {"ZONESTORE", "stores the zone table"},
    {"ZONEINIT", "empties the zone table"},
    {"JSPDT", "jog table, speed"},
    {"JSPDSTORE", "stores the jog table"},
    {"JSPDINIT", "empties the jog table"},
    {"ABSPGRES", "resets the absolute encoder"},
    {"TYPE", "kind of option card"},
    {"VER", "version of the option card"},
    {"YSPEC", "special version of the option card"},
    {"SVTYPE", "kind of amplifier"},
    {"SVVER", "version of the amplifier"},
    {"SVYSPEC", "special version of the amplifier"},
    {"MTTYPE", "kind of motor"},
    {"MTSIZE", "rated power, in tens of watts"},
    {"PGTYPE", "kind of encoder"},
    {"PGVER", "version of the encoder"},
    {"RES", "restarts the amplifier"},
    {"SCRIPTON", "lines are stored instead of sent", true},
    {"SCRIPTOFF", "lines are sent again", true},
    {"SCRIPTLIST", "shows the stored lines", true},
    {"SCRIPTCLEAR", "forgets the stored lines", true},
    {"RUN", "sends the stored lines, while scripting is on", true},
    {"END", "closes the terminal, as EXIT and QUIT", true},
    {"EXIT", "closes the terminal", true},
    {"QUIT", "closes the terminal", true},
});

}  // namespace

std::span<const TerminalWord> TerminalWords() {
  return kWords;
}

bool LacksAxis(std::string_view line) {
  return std::ranges::any_of(
      kWords, [&](const TerminalWord& word) { return !word.own && line.starts_with(word.word); });
}

Completion Complete(const std::string& line, const std::string& axis) {
  const bool addressed = !axis.empty() && line.starts_with(axis);
  const std::string typed = addressed ? line.substr(axis.size()) : line;
  Completion completion{line, {}};
  std::string common;
  for (const TerminalWord& word : kWords) {
    // A line without the axis can only be one of the terminal's own; it gets the axis otherwise.
    if (!word.word.starts_with(typed) || (addressed && word.own)) continue;
    const std::string whole = (word.own ? "" : axis) + std::string(word.word);
    const auto differs = std::ranges::mismatch(common, whole).in1;
    common = completion.words.empty() ? whole : std::string(common.begin(), differs);
    completion.words.push_back(word);
  }
  if (common.size() >= line.size()) completion.line = common;
  return completion;
}

}  // namespace velmoor
