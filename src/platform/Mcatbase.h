// The catalogue library: the maker's data of models, parameters and alarms, from which the
// session's working copy is built. Each call returns 0 on success, another number is the error's.
#pragma once

#include <cstdint>

namespace velmoor {

class Mcatbase {
 public:
  virtual ~Mcatbase() = default;
  // Copies "IdeInfo.mdb" of the application directory to "tempIdeInfo.mdb".
  virtual std::int32_t McatCopy(std::int32_t language) = 0;
  virtual std::int32_t McatOpen() = 0;
  // Makes the parameter tables of the working copy for one model. `motorSize` is in watts.
  virtual std::int32_t McatUparaCreate(std::int16_t language, std::int32_t servoModel,
                                       std::int32_t servoFirmware, std::int32_t servoSpecial,
                                       std::int32_t motorSize, std::int32_t optionModel,
                                       std::int32_t optionFirmware, std::int32_t optionSpecial,
                                       std::int16_t axis) = 0;
  virtual std::int32_t McatClose() = 0;
  // Deletes the working copy, but only the file that this process made.
  virtual std::int32_t McatRemove() = 0;
};

}  // namespace velmoor
