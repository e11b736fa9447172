// A project's programme as the index table says it, held apart from the project: what becomes of
// that meanwhile changes nothing here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project/data/Units.h"
#include "tables/MotionTable.h"

namespace velmoor {

class clsHX7Project;

// Steps count from 1.
class RehearsedProgramme {
 public:
  explicit RehearsedProgramme(clsHX7Project& project);

  [[nodiscard]] int Steps() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] bool IsBlank(int step) const;
  // As the user's table shows the cell, by the column of clsHX7Position.
  [[nodiscard]] const std::string& Text(int step, int column) const;
  [[nodiscard]] std::int64_t Loop(int step) const;
  // Its move has no end of its own.
  [[nodiscard]] bool IsEndless(int step) const;
  // Counts a second; 0: it has no move.
  [[nodiscard]] double WantedSpeed(int step) const;
  // The event is a time alone, which looks at no move.
  [[nodiscard]] bool OnlyWaits(int step) const;
  // Seconds.
  [[nodiscard]] double Dwell(int step) const;
  [[nodiscard]] const Units& InUnits() const { return units_; }

 private:
  [[nodiscard]] const std::string& Sent(int step, int column) const;

  std::vector<MotionTable::StoredRow> rows_;
  Units units_;
};

}  // namespace velmoor
