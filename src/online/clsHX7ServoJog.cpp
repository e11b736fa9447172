#include "online/clsHX7ServoJog.h"

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/MiscSettings.h"
#include "project/data/Schema.h"

namespace velmoor {

clsHX7ServoJog::clsHX7ServoJog() : closed_(frm_.Closed.Connect([this] { frm_ServoJogClosed(); })) {}

bool clsHX7ServoJog::Show_ServoJog() {
  frm_.SetSpeed(lngSpeed_);
  return frm_.Show(FormMode::modal);
}

void clsHX7ServoJog::frm_ServoJogClosed() {
  lngSpeed_ = frm_.Speed();
  blnNeedsSaving_ = frm_.NeedsSaving();
  SaveToDB();
  ServoJogClosed.Raise();
}

bool clsHX7ServoJog::ReadFromDB() {
  // "ReadToDB" is the intended word.
  return Trapped("clsServoJog.ReadToDB: ", [this] {
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
