#include "rehearsal/RehearsalRecord.h"

#include <utility>

#include "platform/Csv.h"
#include "platform/Numbers.h"

namespace velmoor {

RehearsalRecord::RehearsalRecord(Units units) : units_(std::move(units)) {
  CsvRow head{"time (s)",
              "step",
              "position (" + units_.Word(UnitKind::distance) + ")",
              "speed (1/min)",
              "following error (" + units_.Word(UnitKind::distance) + ")",
              "torque (%)"};
  for (unsigned i = 0; i < kRehearsedOutputs; ++i) head.push_back("POUT" + NumberText(i));
  head.emplace_back("zone");
  text_ = CsvLine(head);
}

void RehearsalRecord::Add(const RehearsalSample& sample) {
  CsvRow row{FixedText(sample.seconds, 3),
             NumberText(sample.step),
             units_.Shown(sample.position, UnitKind::distance),
             NumberText(sample.speed),
             units_.Shown(sample.error, UnitKind::distance),
             NumberText(sample.torque)};
  for (unsigned i = 0; i < kRehearsedOutputs; ++i) {
    row.emplace_back(((sample.outputs >> i) & 1U) != 0 ? "1" : "0");
  }
  row.push_back(NumberText(sample.zone));
  text_ += CsvLine(row);
}

}  // namespace velmoor
