// The catalogue library over this system's own catalogue file, "IdeInfo.mdb".
//
// The file holds every language and motor size. McatCopy copies it to "tempIdeInfo.mdb" in the
// directory that world() names; McatUparaCreate makes there the tables of one language and one
// motor size, and may be called again for another.
#pragma once

#include <string>

#include "platform/Mcatbase.h"

namespace velmoor {

class CatalogueLibrary final : public Mcatbase {
 public:
  // Results beside 0.
  static constexpr std::int32_t kNoCatalogue = 1;    // "IdeInfo.mdb" is missing or unreadable
  static constexpr std::int32_t kCopyFailed = 2;     // the working copy cannot be written
  static constexpr std::int32_t kNotACatalogue = 3;  // wrong password, damaged, or other tables
  static constexpr std::int32_t kWrongOrder = 4;     // called before the step that it needs
  static constexpr std::int32_t kUnknownModel = 5;   // no such amplifier or option card

  [[nodiscard]] static std::string WorkingCopyPath();

  std::int32_t McatCopy(std::int32_t language) override;
  std::int32_t McatOpen() override;
  // A language that the catalogue lacks, and each text that is not translated, comes out in
  // English; a motor size that it lacks gives the limits of the standard size.
  std::int32_t McatUparaCreate(std::int16_t language, std::int32_t servoModel,
                               std::int32_t servoFirmware, std::int32_t servoSpecial,
                               std::int32_t motorSize, std::int32_t optionModel,
                               std::int32_t optionFirmware, std::int32_t optionSpecial,
                               std::int16_t axis) override;
  std::int32_t McatClose() override;
  std::int32_t McatRemove() override;

 private:
  std::string copyIdentity_;  // of the file that this process made; empty: none
  bool opened_ = false;
};

}  // namespace velmoor
