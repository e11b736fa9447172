// The size of the motor that a project is for, and the limits that follow from it.

#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "project/data/MiscSettings.h"
#include "project/data/Schema.h"

namespace velmoor {

using schema::Misc;

MotorLimits clsHX7Project::LimitsOfMotor(const std::string& watts) {
  return watts.empty() ? MotorLimits() : ReadMotorLimits(Int32FromText(watts));
}

void clsHX7Project::ReadMotorSize() {
  motorSize_ = CheckedMotorSize(
      ReadMiscSetting(strProjectDatabasePath_, Misc::kMotorSize).value_or(std::string()));
}

void clsHX7Project::SetMotorSize(const std::string& watts) {
  const std::string size = CheckedMotorSize(watts);
  if (size.empty() || size == motorSize_ || IsReadOnly()) return;
  WriteMiscSetting(strProjectDatabasePath_, Misc::kMotorSize, size);
  motorSize_ = size;
  blnNeedsSaving_ = true;
  UseLimitsOf(size);
}

void clsHX7Project::NoteMotorSize(const std::string& watts) {
  const std::string size = CheckedMotorSize(watts);
  if (size.empty() || !motorSize_.empty() || IsReadOnly()) return;
  WriteMiscSetting(strProjectDatabasePath_, Misc::kMotorSize, size);
  motorSize_ = size;
  motorNoted_ = true;
  UseLimitsOf(size);
}

void clsHX7Project::UseLimitsOf(const std::string& watts) {
  parameters_.TakeLimits(LimitsOfMotor(CheckedMotorSize(watts)));
}

}  // namespace velmoor
