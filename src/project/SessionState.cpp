#include "project/SessionState.h"

#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

const ComboLists& SessionState::ComboList() const {
  static const ComboLists kNone;
  return clsComboList ? clsComboList->ComboList() : kNone;
}

void SessionState::SetAxis(const std::string& axis) {
  const std::string digit = UpperCase(Trim(axis));
  strAxis = digit.size() == 1 && ParseHex(digit) ? digit : "0";
}

void SessionState::StartHelix7() {
  clsHelix7 = std::make_unique<clsHX7Helix7>();
}

bool SessionState::BuildDatabase() {
  std::string strMotorSize;
  clsHelix7->GetMotorSizeWhileOffline(strMotorSize);
  // A search without an answer leaves the port open, which another program may want.
  clsHelix7->GoOffline();
  return BuildDatabase(strMotorSize);
}

bool SessionState::BuildDatabase(const std::string& strMotorSize) {
  clsDatabase = std::make_unique<clsHX7Database>(eLanguage, strMotorSize);
  return clsDatabase->GetParameterDatabase();
}

void SessionState::SetDBAndTables() {
  strTHDatabasePath = JoinPath(world().catalogueCopyDirectory, "tempIdeInfo.mdb");
  tables = GetTableNames(strTHDatabasePath);
}

void SessionState::GetComboLists() {
  clsComboList = std::make_unique<clsHX7ComboList>();
  clsComboList->SetDatabasePath(strTHDatabasePath);
  clsComboList->GetComboLists(tables.DecDataTable);
}

void SessionState::GetAlarmDefinitions() {
  clsAlarm = std::make_unique<clsHX7Alarm>();
  clsAlarm->SetDatabasePath(strTHDatabasePath);
  clsAlarm->SetLanguage(eAlarmLanguage);
  clsAlarm->ReadFromDB();
}

void SessionState::ReleaseObjects() {
  clsHelix7.reset();
  clsComboList.reset();
  clsDatabase.reset();
  clsProject.reset();
}

}  // namespace velmoor
