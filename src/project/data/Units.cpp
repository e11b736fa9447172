#include "project/data/Units.h"

#include <utility>

#include "platform/Numbers.h"
#include "project/data/MachineUnits.h"
#include "project/data/UnitConversion.h"

namespace velmoor {

void UpdateConversionFactors(ConversionFactors& factors, std::string_view timeUnits,
                             std::int16_t resolution) {
  if (timeUnits == "seconds") factors[3] = 60.0;
  if (timeUnits == "minutes") factors[3] = 1.0;
  factors[0] = PowerOfTen(resolution);
  factors[1] = factors[3] * factors[0] / 1000;
  factors[2] = factors[1] * factors[3] / 60 / 1000;
}

Units Units::Of(std::int16_t resolution, std::string distance, std::string time) {
  Units units{resolution, std::move(distance), std::move(time), {}};
  UpdateConversionFactors(units.factors, units.time, resolution);
  return units;
}

double Units::Factor(UnitKind kind) const {
  return factors[static_cast<std::size_t>(kind)];
}

std::string Units::Word(UnitKind kind) const {
  switch (kind) {
    case UnitKind::distance:
      return distance;
    case UnitKind::speed:
      return SpeedUnitsOf(distance, time);
    case UnitKind::acceleration:
      return AccelerationUnitsOf(distance, time);
  }
  return {};
}

std::string Units::Shown(double counts, UnitKind kind) const {
  return CountsToUnits(counts, Factor(kind), resolution);
}

}  // namespace velmoor
