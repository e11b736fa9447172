// The limits of the parameters for a size of motor, out of the catalogue file.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "platform/Database.h"

namespace velmoor {

// Texts as the catalogue has them: whole numbers, in counts; empty where a form has no limits.
struct ParameterLimits {
  std::string min, max, initial;
};
// By the parameter's name.
using MotorLimits = std::map<std::string, ParameterLimits, std::less<>>;

// Of every parameter for a motor of `watts`; a size that the catalogue tells nothing of has those
// of the standard motor. Throws DatabaseError.
[[nodiscard]] MotorLimits ReadMotorLimits(Database& catalogue, std::int32_t watts);
// The same out of the program's catalogue file.
[[nodiscard]] MotorLimits ReadMotorLimits(std::int32_t watts);

// A rated power as a whole number of watts that a motor can have; else empty.
[[nodiscard]] std::string CheckedMotorSize(const std::string& watts);

}  // namespace velmoor
