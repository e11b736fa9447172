// The device object: the one door of the system to the amplifier.
//
// It owns the command exchange and adds what the system knows of the hardware: that it must be an
// RX900 option card on a VKLM amplifier, how the model strings are made up, and what a reset takes.
// The main window owns the one instance. Every operation with a ResultCode throws nothing and shows
// nothing, but GoOnline; callers report with DisplayError. Outputs are set on success only unless
// told otherwise. Reads and writes the session through gMainForm. One thread.
//
// A write is done when it is acknowledged. The exchange takes whatever holds no error for a
// success; here every operation that changes something gives -9 for an answer that denies it ("NG",
// or a value in place of "OK") and -10 for noise, of which nobody knows whether it was done. After
// noise a value is read back once, and the write counts when the amplifier holds it.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "link/ClassSerialComm.h"
#include "link/CommandWords.h"
#include "link/ResultCode.h"
#include "platform/Event.h"

namespace velmoor {

class clsHX7Helix7 {
 public:
  // Sets the exchange up on gMainForm's port with its defaults; the port stays closed.
  clsHX7Helix7();
  clsHX7Helix7(const clsHX7Helix7&) = delete;
  clsHX7Helix7& operator=(const clsHX7Helix7&) = delete;

  // Nothing here raises it; the main window answers it by going offline.
  Event<> CommunicationDown;
  // Display name of what is reset, and "Start", "Complete" or "Failed".
  Event<const std::string&, const std::string&> ResetStatus;
  // Each value and each panel display, as its answer came, whoever has asked.
  Event<ValueCommand, std::int32_t> ValueRead;
  Event<const std::string&> AlarmRead;

  // ---- what is known of the connected hardware; kept across a disconnection
  [[nodiscard]] const std::string& OptionType() const { return strOptionType; }
  [[nodiscard]] const std::string& ServoModel() const { return strServoModel; }
  [[nodiscard]] const std::string& ServoType() const { return strServoType; }
  // Rated power in watts as decimal text, of the last model that was read; empty before.
  [[nodiscard]] const std::string& MotorSize() const { return strMotorSize; }
  [[nodiscard]] ClassSerialComm& SerialComm() { return clsSerialComm; }
  // The words of -10 to 0; throws std::out_of_range otherwise.
  [[nodiscard]] const std::string& ErrorMessages(ResultCode iNegativeIndex) const;
  // What failed last, with its cause; code 0 before the first failure.
  [[nodiscard]] const LinkFailure& LatestFailure() const { return clsSerialComm.LatestFailure(); }

  // ---- connection
  // Asks once at the present speed where the session is online already; searches the amplifier on
  // the session's axis and port otherwise, or when nobody answers. Tests its identity and adopts
  // its speed and echo. -1 for a wrong identity. Shows the reason in a box unless `blnHideError`; a
  // failed search shows nothing. The port stays open after a failure; the time-out is 5000 ms
  // afterwards.
  [[nodiscard]] ResultCode GoOnline(bool blnHideError);
  // Opens the port with the settings as they are and reads the model; no search, no identity test.
  // Returns whether the port opened.
  [[nodiscard]] bool GoOnlineManually();
  // Closes the port. Always true.
  bool GoOffline();
  // GoOnline without a box, repeated until the amplifier is back from its restart or the attempts
  // are used up. A port that cannot be opened ends it at once.
  [[nodiscard]] ResultCode GoOnlineAfterRestart();
  // Told before each speed that a search tries; false ends the search with -7. Events may run in
  // it.
  using SearchWatch = std::function<bool(std::int32_t bitsPerSecond, const std::string& axis)>;
  void SetSearchWatch(SearchWatch watch);
  // How often a search is made after a restart, 4 unless set; a search without answer takes 3 s.
  void SetRestartAttempts(int count) { intRestartAttempts = count; }

  void SetAxisNumber(std::int16_t intAxis) { clsSerialComm.setAxisNo(intAxis); }
  void SetBaudRate(std::int32_t lngBaud) { clsSerialComm.setBaudRate(lngBaud); }
  void SetCOMPort(std::int16_t intCOM) { clsSerialComm.setComPort(intCOM); }  // from 1
  void SetEcho(bool blnEcho) { clsSerialComm.setEchoBack(blnEcho); }
  void SetTimeOut(std::int32_t lngTimeOut) { clsSerialComm.setTimeOut(lngTimeOut); }  // ms
  void SetComm(std::int16_t iAxisNo, std::int32_t lBaudRate, bool bEchoBack, std::int16_t iComPort,
               std::int32_t lTimeOut);

  // ---- identity
  // 0, -900 (another option card), -999 (another amplifier) or the failure of the first question.
  [[nodiscard]] ResultCode IsRX900AndVKLM();
  // What the user is told of that result; empty for 0. An amplifier whose type could not be read is
  // -999 and no wrong amplifier: the words tell the two apart.
  [[nodiscard]] std::string IdentityText(ResultCode result) const;
  // Whether the connected amplifier repeats each line, as the connection has it.
  [[nodiscard]] bool Echoes() const { return clsSerialComm.echoBack(); }
  // Whether it acknowledges writes (Pn802); one that does not lets every write fail.
  [[nodiscard]] ResultCode AskAcknowledges(bool& acknowledges);
  [[nodiscard]] ResultCode MakeItAcknowledge();
  // Sets Pn800 and restarts the amplifier, as it takes effect then; goes online again.
  [[nodiscard]] ResultCode MakeItEcho();
  // True when an RX900 answers at the axis given as one hexadecimal digit. Needs echo on. Leaves a
  // time-out of 5000 ms behind: set 500 before each call of a scan.
  [[nodiscard]] bool GetAxis(const std::string& strThisAxis);
  // True when online with an option card of version 3 or newer.
  [[nodiscard]] bool IsOptionVersionNew();
  // Whether the amplifier still answers, by one question of half a second at most; the time-out is
  // 5000 ms afterwards.
  [[nodiscard]] bool Answers();
  // The panel display and the status bits, each within half a second; what came late is read away
  // and asked for once more. The time-out is 5000 ms afterwards.
  [[nodiscard]] ResultCode AskState(std::string& strAlarm, std::int32_t& lngStatus);
  // Rated power in watts of the connected motor, or the session's last one. Always true; connects
  // and goes offline again, and leaves the port as it was when nobody answers.
  bool GetMotorSizeWhileOffline(std::string& strMotorSize);

  [[nodiscard]] ResultCode GetEncoderInfo(std::string& strInfo);
  [[nodiscard]] ResultCode GetEncoderResolution(std::int32_t& lngCount);  // lines per turn
  [[nodiscard]] ResultCode GetEncoderResolutionBits(std::string& strResBits);
  [[nodiscard]] ResultCode GetEncoderType(std::string& strType);
  [[nodiscard]] ResultCode GetEncoderVersion(std::string& strValue);
  [[nodiscard]] ResultCode GetMotorModel(std::string& strModel);
  [[nodiscard]] ResultCode GetMotorSize(std::string& strSize);  // watts
  [[nodiscard]] ResultCode GetMotorType(std::string& strType);
  [[nodiscard]] ResultCode GetOptionType(std::string& strType);
  [[nodiscard]] ResultCode GetOptionVersion(std::string& strVersion);
  [[nodiscard]] ResultCode GetOptionYSpec(std::string& strYSpec);
  [[nodiscard]] ResultCode GetServoModel(std::string& strModel);
  [[nodiscard]] ResultCode GetServoType(std::string& strType);
  [[nodiscard]] ResultCode GetServoVersion(std::string& strVersion);
  [[nodiscard]] ResultCode GetServoYSpec(std::string& strYSpec);

  // ---- alarms
  // The panel display; "RUN" for the normal state.
  [[nodiscard]] ResultCode GetAlarm(std::string& strAlarm);
  [[nodiscard]] ResultCode GetAlarmHistory(std::int32_t Index, std::string& strAlarm);
  // The raw answer; the code stands at characters 6 to 9. Empty with echo off.
  [[nodiscard]] ResultCode GetError(std::string& strError);
  // A line break and the name of the error, or of the alarm when the error could not be read; empty
  // without a name.
  [[nodiscard]] std::string GetAlarmAndError();
  [[nodiscard]] ResultCode ClearAlarmHistory();

  // ---- values, parameters, tables
  [[nodiscard]] ResultCode GetHelixValue(std::int32_t cmd, std::int32_t& lngData);
  [[nodiscard]] ResultCode GetInertiaRatio(std::int32_t& lngReturn);  // percent
  [[nodiscard]] ResultCode GetRigidity(std::int16_t& iReturn);
  [[nodiscard]] ResultCode SetInertiaRatio();
  [[nodiscard]] ResultCode SetRigidity(std::int16_t iValue);
  [[nodiscard]] ResultCode GetParameter(const std::string& sParmNo, std::string& sParmVal);
  [[nodiscard]] ResultCode SetParameter(const std::string& sParmNo, const std::string& sParmVal);
  [[nodiscard]] ResultCode SetHomeOffset(std::int32_t lngOffset);  // counts
  // Rows count from 0.
  [[nodiscard]] ResultCode readIndexTable(std::int16_t iRow, IndexRow& strIndex);
  [[nodiscard]] ResultCode writeIndexTable(std::int16_t iRow, const IndexRow& strIndex);
  [[nodiscard]] ResultCode readZoneTable(std::int16_t iRow, ZoneRow& strZone);
  [[nodiscard]] ResultCode writeZoneTable(std::int16_t iRow, const ZoneRow& strZone);
  [[nodiscard]] ResultCode readJogTable(std::int16_t iRow, std::string& strJogSpeed);
  [[nodiscard]] ResultCode writeJogTable(std::int16_t iRow, const std::string& strJogSpeed);
  // `eItem` 7 jog, 8 index, 9 zone table (SimpleCommand); any other sends nothing and gives 0.
  [[nodiscard]] ResultCode SaveTablesToMemory(std::int32_t eItem);
  // The table that `store` stores had rows written since it was last stored or the hardware was
  // restarted from here: what the amplifier answers to a read may be lost with its power.
  [[nodiscard]] bool IsUnstored(SimpleCommand store) const { return unstored.contains(store); }

  // ---- reading back
  // Keeps the lines of the values that are written and acknowledged from now on, the latest of each
  // value in the order of the writing, and forgets those that were kept before.
  void KeepWritten(bool keep);
  [[nodiscard]] const std::vector<std::string>& Written() const { return written; }
  // Reads the value that a line of Written names. `equal`: the amplifier holds what was written.
  [[nodiscard]] ResultCode ReadBack(const std::string& strLine, std::string& strHeld, bool& equal);

  // ---- servo, motion, restart
  [[nodiscard]] ResultCode EnableServo();
  // As EnableServo, for a motor that must not stay on: see MotorMayBeOn.
  [[nodiscard]] ResultCode EnableServoForRun();
  [[nodiscard]] ResultCode DisableServo();
  // Servo on went out for a run, and neither servo off nor a restart was acknowledged since.
  [[nodiscard]] bool MotorMayBeOn() const { return motorMayBeOn; }
  // Servo off, up to three times with half a second each.
  [[nodiscard]] ResultCode SwitchOffForCertain();
  // Ends the motion, up to three times with half a second each; where none is acknowledged the
  // servo goes off instead. The result is that of ending the motion; a busy line (-8) is not tried
  // again.
  [[nodiscard]] ResultCode StopForCertain();
  // Both, where the motor may be on and the port is open. True when it is known to be off.
  bool MakeMotorSafe();
  // `iIndex` 0 forward, otherwise reverse. Serves events after its exchange.
  [[nodiscard]] ResultCode StartJog(std::int32_t iIndex, std::int32_t lngSpeed);
  [[nodiscard]] ResultCode StopJog();
  [[nodiscard]] ResultCode ResetAbsoluteEncoder();
  [[nodiscard]] ResultCode ResetHardware();
  // `eItem` 0 current alarm, 3 all parameters, 4 jog, 5 index, 6 zone table (SimpleCommand); any
  // other does nothing and gives 0. Raises ResetStatus. The parameters take a restart: the
  // amplifier comes back at 9600 and is searched for, and the speed found (0 when none) goes to the
  // session.
  [[nodiscard]] ResultCode ResetDefaults(std::int32_t eItem);

  // A write may have reached another row or parameter than it named, since the last call.
  [[nodiscard]] bool TakeStrayWrite() { return clsSerialComm.TakeStrayWrite(); }

  // The raw exchange of `strCmd`, axis included. `strReturn` becomes the line behind the echo:
  // empty, with a success all the same, when the amplifier does not echo.
  [[nodiscard]] ResultCode SendToSerial(const std::string& strCmd, std::string& strReturn);

 private:
  ResultCode GetInfo(std::int32_t cmd, std::string& strInfo);
  // The last four characters of an information word.
  ResultCode GetVersion(std::int32_t cmd, std::string& strVersion);
  ResultCode GetYSpec(std::int32_t cmd, std::string& strYSpec);
  ResultCode GetEncoderNumber(std::uint32_t& number);
  // Reads strMotorType and strMotorSize.
  ResultCode ReadMotorCodes();
  // Hands axis, port and echo of the session to the exchange, with the time-out of a search.
  void PrepareSearch(std::int32_t lngBaudRate);
  ResultCode RestartWithFactorySettings();
  // The session's amplifier, asked or searched for.
  ResultCode FindAmplifier(bool& blnEcho, std::int32_t& lngBaudRate);
  // The result of a write, by the form of its answer.
  ResultCode CheckWrite(const std::string& strLine, ResultCode lngResult);
  // Whether the amplifier holds the value that the line writes; false for a line without one.
  bool HoldsWhatWasWritten(const std::string& strLine);
  void Keep(const std::string& strLine);
  ResultCode RepeatBriefly(SimpleCommand command);
  // Repeats a search for as long as nobody answers and attempts are left.
  ResultCode RepeatWhileRestarting(const std::function<ResultCode()>& search);

  std::string strOptionType;
  std::string strServoModel;
  std::string strServoType;
  std::string strMotorType;
  std::string strMotorSize;
  std::string strEncoderInfo;
  int intRestartAttempts = 4;
  bool motorMayBeOn = false;
  bool servoTypeFailed = false;      // of the latest IsRX900AndVKLM
  std::set<SimpleCommand> unstored;  // tables, by the command that stores them
  bool keepsWritten = false;
  std::vector<std::string> written;
  ClassSerialComm clsSerialComm;
};

}  // namespace velmoor
