#include "project/data/MotorLimits.h"

#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/CatalogueSource.h"
#include "project/data/Schema.h"

namespace velmoor {

namespace source = catalogue_source;

MotorLimits ReadMotorLimits(Database& catalogue, std::int32_t watts) {
  using P = source::Parameters;
  using M = source::MotorLimits;
  MotorLimits limits;
  for (const auto rows = catalogue.OpenTable(P::kTable); !rows->AtEnd(); rows->MoveNext()) {
    limits[rows->Text(P::kPn)] = {rows->Text(P::kMin), rows->Text(P::kMax),
                                  rows->Text(P::kInitial)};
  }
  const std::string size = NumberText(watts);
  for (const auto rows = catalogue.OpenTable(M::kTable); !rows->AtEnd(); rows->MoveNext()) {
    if (rows->Text(M::kWatts) != size) continue;
    limits[rows->Text(M::kPn)] = {rows->Text(M::kMin), rows->Text(M::kMax),
                                  rows->Text(M::kInitial)};
  }
  return limits;
}

MotorLimits ReadMotorLimits(std::int32_t watts) {
  return ReadMotorLimits(*OpenForReading(JoinPath(world().appDirectory, "IdeInfo.mdb")), watts);
}

std::string CheckedMotorSize(const std::string& watts) {
  constexpr std::int64_t kMostWatts = 65535;
  const auto number = ParseWhole(watts);
  return number && *number >= 1 && *number <= kMostWatts ? NumberText(*number) : std::string();
}

}  // namespace velmoor
