#include "mechanics/MachineResults.h"

#include "platform/Numbers.h"
#include "project/data/MachineUnits.h"

namespace velmoor {

void MachineResults::Take(const MachineFigures& figures, const MachineDescription& description) {
  const std::string& distance = description.distanceUnits;
  const std::string speed = SpeedUnitsOf(distance, description.timeUnits);
  const int places = description.machine.resolution;
  const auto orNone = [](bool known, const std::string& text) { return known ? text : "-"; };
  rows_ = {
      {"Gear ratio B/A",
       orNone(figures.valid, NumberText(figures.ratio.b) + "/" + NumberText(figures.ratio.a)), ""},
      {"Travel per motor turn", NumberText(figures.travelPerMotorTurn), distance},
      {"Smallest step", FixedText(figures.smallestStep, places), distance},
      {"Counts per " + distance, NumberText(figures.countsPerUnit), "counts"},
      {"Allowable resolution",
       orNone(figures.hasRange, NumberText(figures.lowestResolution) + " to " +
                                    NumberText(figures.highestResolution)),
       "decimal places"},
      {"Top speed, the motor at its limit of " + NumberText(figures.motorSpeed) + " rpm (Pn30D)",
       FixedText(figures.reachedSpeed, places), speed},
      {"Largest speed that can be written", FixedText(figures.topSpeed, 0), speed},
  };
}

std::string MachineResults::Text(int row, int column) const {
  static constexpr const char* kHeadings[] = {"Result", "Value", "Unit"};
  if (row == 0) return kHeadings[column];
  const Row& shown = rows_.at(static_cast<std::size_t>(row) - 1);
  return column == 0 ? shown.name : column == 1 ? shown.value : shown.unit;
}

}  // namespace velmoor
