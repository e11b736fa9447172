// Digit-wise parameters: four hexadecimal digits, each with its own meaning and limit. Digit 0 is
// the right-most.
#pragma once

#include <string>
#include <vector>

#include "project/data/ParameterCatalogue.h"

namespace velmoor {

// The definition with that key, or null. "0" and an empty key belong to no definition.
[[nodiscard]] const NibbleDefinition* FindNibble(const std::vector<NibbleDefinition>& definitions,
                                                 const std::string& nibbleDataId);
// True when the key says that the parameter is coded in digits.
[[nodiscard]] bool IsNibbleKey(const std::string& nibbleDataId);
// The largest value of the definition, digit by digit, unused ones as "0".
[[nodiscard]] std::string GetMaximumHex(const NibbleDefinition& definition);

// The four digits at the end of an answer. Throws NumberError where they are no hexadecimal digits.
[[nodiscard]] std::string DigitsOfAnswer(const std::string& answer);

}  // namespace velmoor
