// What a cell of a motion table may hold: the one validation behind windows, paste and import.
//
// A check gives the text as it is stored (numbers at the project's resolution), or the words for
// the user. Words end with the line that says what becomes of the old value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/Project.h"
#include "tools/CellCheck.h"

namespace velmoor {

class clsHX7Position;

inline constexpr std::size_t kMostLabelCharacters = 16;
inline constexpr std::int32_t kMostLoops = 99999;
inline constexpr std::int32_t kMostEventTime = 99999;  // ms

// A number in units of that kind whose count the amplifier takes: distances to either side, speeds
// from 0. `name` heads the words: "Speed" gives "Speed value must be numeric!".
[[nodiscard]] CellCheck CheckNumber(const Project& project, UnitKind kind, const std::string& name,
                                    const std::string& text);
// The same words for the zone and jog tables, without a name of their own.
[[nodiscard]] CellCheck CheckLimit(const Project& project, UnitKind kind, const std::string& text);

// Cells of the index table; `step` is the row from 1.
[[nodiscard]] CellCheck CheckLabel(const clsHX7Position& table, int step, const std::string& text);
[[nodiscard]] CellCheck CheckMove(const Project& project, const std::string& text);
// The distance alone, with the words of its dialog; a sign that was typed stays.
[[nodiscard]] CellCheck CheckDialogDistance(const Project& project, const std::string& text);
[[nodiscard]] CellCheck CheckOutputs(const std::string& text);
[[nodiscard]] CellCheck CheckEvent(const std::string& text);
// The time behind an event, in milliseconds.
[[nodiscard]] CellCheck CheckEventTime(const std::string& text);
[[nodiscard]] CellCheck CheckLoop(const std::string& text);
[[nodiscard]] CellCheck CheckNext(const clsHX7Position& table, int step, const std::string& text);
// The check that belongs to a column of clsHX7Position; an empty text passes.
[[nodiscard]] CellCheck CheckIndexCell(const Project& project, const clsHX7Position& table,
                                       int step, int column, const std::string& text);

// The fault alone, without the line on the old value: for a list of faults of cells nobody edited.
[[nodiscard]] std::string FaultAlone(const std::string& words);

// What keeps the whole programme from being committed: each step that is filled in part, then each
// next label that no step bears. Empty when it may be committed.
struct ProgrammeFault {
  int step = 0;
  int column = -1;  // -1: the step as a whole
  std::string words;
};
[[nodiscard]] std::vector<ProgrammeFault> FaultsOfProgramme(const clsHX7Position& table);
// The words of the first.
[[nodiscard]] std::optional<std::string> FindProgrammeFault(const clsHX7Position& table);

}  // namespace velmoor
