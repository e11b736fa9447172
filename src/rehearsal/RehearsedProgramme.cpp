#include "rehearsal/RehearsedProgramme.h"

#include "project/clsHX7Project.h"
#include "project/data/UnitConversion.h"
#include "simulator/axis/AxisSettings.h"
#include "simulator/memory/TableForms.h"

namespace velmoor {

RehearsedProgramme::RehearsedProgramme(clsHX7Project& project) : units_(UnitsOf(project)) {
  const clsHX7Position& table = project.Position();
  for (int step = 1; step <= table.RowsInArray(); ++step) rows_.push_back(table.Stored(step));
}

const std::string& RehearsedProgramme::Text(int step, int column) const {
  return rows_.at(static_cast<std::size_t>(step) - 1).cells.at(static_cast<std::size_t>(column));
}

const std::string& RehearsedProgramme::Sent(int step, int column) const {
  return rows_.at(static_cast<std::size_t>(step) - 1)
      .controller.at(static_cast<std::size_t>(column));
}

bool RehearsedProgramme::IsBlank(int step) const {
  return Sent(step, clsHX7Position::position).empty();
}

std::int64_t RehearsedProgramme::Loop(int step) const {
  return TableNumber(Sent(step, clsHX7Position::loop));
}

bool RehearsedProgramme::IsEndless(int step) const {
  return step > 0 && Sent(step, clsHX7Position::position).ends_with("INFINITE");
}

double RehearsedProgramme::WantedSpeed(int step) const {
  const std::string& position = Sent(step, clsHX7Position::position);
  if (position.empty() || position == "-" || position == "STOP") return 0;
  return CountsPerSecond(static_cast<double>(TableNumber(Sent(step, clsHX7Position::speed))));
}

bool RehearsedProgramme::OnlyWaits(int step) const {
  return Sent(step, clsHX7Position::event).starts_with("T");
}

double RehearsedProgramme::Dwell(int step) const {
  constexpr double kMilliseconds = 1000;
  const std::string& event = Sent(step, clsHX7Position::event);
  const std::size_t time = event.find('T');
  if (time == std::string::npos) return 0;
  return static_cast<double>(TableNumber(event.substr(time + 1))) / kMilliseconds;
}

}  // namespace velmoor
