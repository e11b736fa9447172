#include "online/clsHX7ServoJog.h"

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/MiscSettings.h"
#include "project/data/Schema.h"

namespace velmoor {

bool clsHX7ServoJog::ReadFromDB() {
  return Trapped("clsServoJog.ReadFromDB: ", [this] {
    const auto speed = ReadMiscSetting(strDatabasePath_, schema::Misc::kTestRunSpeed);
    if (speed && !speed->empty()) lngSpeed_ = Int32FromText(*speed);
    return true;
  });
}

bool clsHX7ServoJog::SaveToDB() {
  return Trapped("clsServoJog.SaveToDB: ", [this] {
    WriteMiscSetting(strDatabasePath_, schema::Misc::kTestRunSpeed, NumberText(lngSpeed_));
    return true;
  });
}

}  // namespace velmoor
