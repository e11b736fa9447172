// The session's fields and the steps of a start that every front end shares: the main window, the
// console program and the tests derive from it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "link/clsHX7Helix7.h"
#include "online/clsHX7Alarm.h"
#include "platform/ServingPort.h"
#include "project/clsHX7Project.h"
#include "project/data/ParameterCatalogue.h"
#include "project/data/clsHX7ComboList.h"
#include "project/data/clsHX7Database.h"
#include "session/Session.h"

namespace velmoor {

class SessionState : public Session {
 public:
  // `comm` must outlive the session.
  explicit SessionState(SerialPort& comm) : comm_(comm) {}
  SessionState(const SessionState&) = delete;
  SessionState& operator=(const SessionState&) = delete;

  // ---- Session
  Project* CurrentProject() override { return clsProject.get(); }
  clsHX7Helix7* Helix7() override { return clsHelix7.get(); }
  [[nodiscard]] const AlarmNames* Alarm() const override { return clsAlarm.get(); }
  [[nodiscard]] const ComboLists& ComboList() const override;
  clsHX7Procedure* Procedure() override { return nullptr; }
  SerialPort& Comm() override { return comm_; }
  [[nodiscard]] bool IsOnline() const override { return blnIsOnline; }
  [[nodiscard]] bool StopProcedure() const override { return blnStopProcedure; }
  void SetStopProcedure(bool stop) override { blnStopProcedure = stop; }
  [[nodiscard]] std::string THDatabasePath() const override { return strTHDatabasePath; }
  [[nodiscard]] std::string ParametersTable() const override { return tables.ParametersTable; }
  [[nodiscard]] std::string NibbleTable() const override { return tables.NibbleTable; }
  [[nodiscard]] std::string DecDataTable() const override { return tables.DecDataTable; }
  [[nodiscard]] std::string Axis() const override { return strAxis; }
  // A text that is not one hexadecimal digit falls back to "0".
  void SetAxis(const std::string& axis) override;
  [[nodiscard]] std::int32_t BaudRate() const override { return lngBaudRate; }
  void SetBaudRate(std::int32_t rate) override { lngBaudRate = rate; }
  [[nodiscard]] std::int16_t COM() const override { return intCOM; }
  void SetCOM(std::int16_t index) override { intCOM = index; }
  [[nodiscard]] std::int16_t Echo() const override { return intEcho; }
  void SetEcho(std::int16_t echo) override { intEcho = echo; }
  void SetHelix7CommExists(bool exists) override { blnHelix7CommExists = exists; }
  [[nodiscard]] std::int32_t Language() const override { return eLanguage; }
  [[nodiscard]] std::string LastMotorSize() const override { return strLastMotorSize; }
  void SetLastMotorSize(const std::string& watts) override { strLastMotorSize = watts; }

  // Null where none was ever opened.
  [[nodiscard]] clsHX7Project* OwnProject() { return clsProject.get(); }
  void SetOnline(bool online) { blnIsOnline = online; }
  // Whether waiting for an answer serves the window's events.
  void SetServesWhileWaiting(bool serves) { comm_.SetServes(serves); }
  // Puts another project in the place of the session's, and gives that one back.
  std::unique_ptr<clsHX7Project> SwapProject(std::unique_ptr<clsHX7Project> other) {
    std::swap(clsProject, other);
    return other;
  }

  // ---- the steps of a start
  void StartHelix7();
  // Makes the catalogue's working copy for the motor that is connected, or for the last one. False
  // after a failure, of which the user was told; the start goes on all the same.
  bool BuildDatabase();
  // The same for `strMotorSize` watts, without looking for an amplifier.
  bool BuildDatabase(const std::string& strMotorSize);
  // Finds the copy and its tables' names; throws DatabaseError.
  void SetDBAndTables();
  void GetComboLists();
  // Throws DatabaseError.
  void GetAlarmDefinitions();
  // Releases the objects, the project last but one, in the order of a teardown.
  void ReleaseObjects();

 protected:
  // Named as the session's fields are everywhere else.
  std::int32_t eLanguage = 2;
  std::int32_t eAlarmLanguage = 2;
  bool blnStopProcedure = false;
  std::string strTHDatabasePath;
  CatalogueTables tables;
  bool blnIsOnline = false;
  bool blnHelix7CommExists = false;
  std::int16_t intCOM = 0;
  std::int32_t lngBaudRate = 9600;
  std::int16_t intEcho = 1;
  std::string strAxis = "0";
  std::string strLastMotorSize = "30";
  std::unique_ptr<clsHX7Helix7> clsHelix7;
  std::unique_ptr<clsHX7ComboList> clsComboList;
  std::unique_ptr<clsHX7Database> clsDatabase;
  std::unique_ptr<clsHX7Alarm> clsAlarm;
  std::unique_ptr<clsHX7Project> clsProject;

 private:
  ServingPort comm_;
};

}  // namespace velmoor
