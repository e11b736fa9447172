// Digit-wise parameters: four hexadecimal digits, each with its own meaning and limit. Digit 0 is the
// right-most.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "project/data/ParameterCatalogue.h"

namespace velmoor {

class NibbleDefinitions {
 public:
  NibbleDefinitions() = default;
  // The records of the digit table in its order: four consecutive ones a definition, digit 0 first.
  explicit NibbleDefinitions(std::vector<NibbleRecord> records) : records_(std::move(records)) {}

  // The index of the first record with that `nibble_data_id`, or nothing.
  [[nodiscard]] std::optional<std::size_t> Find(const std::string& nibbleDataId) const;
  // How many values a digit of the definition at `index` may take; nothing when the digit is unused.
  [[nodiscard]] std::optional<int> Allowed(int digit, std::size_t index) const;
  // The largest value of the definition, digit by digit, unused ones as "0".
  [[nodiscard]] std::string MaximumHex(std::size_t index) const;

 private:
  std::vector<NibbleRecord> records_;
};

}  // namespace velmoor
