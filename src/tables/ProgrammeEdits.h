// Edits of the motion programme that keep its labels and their references consistent.
#pragma once

#include "tables/MotionTable.h"

namespace velmoor {

class clsHX7Position;

// Follows labels that were renamed or cleared since `before`: next cells that bore the old label
// bear the new one, or become empty. A label that moved to another row is no rename.
void FollowLabels(clsHX7Position& table, const MotionTable::Rows& before);

// An empty step at `row`; it and all behind it move one down, their labels with them. False: the
// last step is in use.
[[nodiscard]] bool InsertStep(clsHX7Position& table, int row);
// Takes the step at `row` out; those behind it move one up. Next cells that lead to it become
// empty.
void DeleteStep(clsHX7Position& table, int row);

// Gives the empty number cells of every step that is not wholly blank what stands for "nothing":
// "-" for position and registration distance, 1 at the project's resolution for the speeds.
void AutoFillNoDistance(clsHX7Position& table, int resolution);

// The choices of a next cell: "END", then each label in the order of the steps, behind the mark
// that lets other texts be typed.
[[nodiscard]] std::string GetNewNextComboList(const clsHX7Position& table);

}  // namespace velmoor
