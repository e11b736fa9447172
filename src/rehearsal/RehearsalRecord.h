// What an instrument would have seen of a rehearsal, as comma-separated text in the project's
// units: a heading, and a line for each sample.
#pragma once

#include <string>

#include "project/data/Units.h"
#include "rehearsal/Rehearsal.h"

namespace velmoor {

class RehearsalRecord {
 public:
  explicit RehearsalRecord(Units units);
  void Add(const RehearsalSample& sample);
  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  Units units_;
  std::string text_;
};

}  // namespace velmoor
