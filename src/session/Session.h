// What every layer may know of the session above it: its properties and nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

class clsHX7Helix7;
class clsHX7Procedure;
class Project;
class Recorder;
class SerialPort;

// The alarm definitions as the lower layers ask them. A text without a definition gives an empty
// text.
class AlarmNames {
 public:
  virtual ~AlarmNames() = default;
  // The readable name of a panel display such as "A.9F".
  [[nodiscard]] virtual std::string GetAlarmName(const std::string& strDisplay) const = 0;
  // The readable name of a code given in hexadecimal, such as "E210".
  [[nodiscard]] virtual std::string GetErrorName(const std::string& strDisplay) const = 0;
  // The panel display of a code given in decimal: intended, though GetErrorName takes the other
  // form.
  [[nodiscard]] virtual std::string GetErrorPanelDisplay(const std::string& strCode) const = 0;
  // The code to show for a panel display; a text that is no alarm comes back unchanged.
  [[nodiscard]] virtual std::string GetAlarmCode(const std::string& strDisplay) const = 0;
};

// The combo lists of the catalogue: entry i (from 0) is the list with the key i + 1, its items
// joined by "|"; an item's position is its controller value.
using ComboLists = std::vector<std::string>;

class Session {
 public:
  virtual ~Session() = default;

  virtual Project* CurrentProject() = 0;  // null where no project was ever opened
  virtual clsHX7Helix7* Helix7() = 0;     // null before the session is built
  virtual const AlarmNames* Alarm() const = 0;
  virtual const ComboLists& ComboList() const = 0;
  virtual clsHX7Procedure* Procedure() = 0;  // the running transfer's progress, or null
  virtual SerialPort& Comm() = 0;
  virtual Recorder* Record() { return nullptr; }  // of what is read; null where nothing records

  [[nodiscard]] virtual bool IsOnline() const = 0;
  // The stop request of a running transfer; the tools look at it between rows.
  [[nodiscard]] virtual bool StopProcedure() const = 0;
  virtual void SetStopProcedure(bool stop) = 0;

  // The catalogue's working copy and the names of its three tables.
  [[nodiscard]] virtual std::string THDatabasePath() const = 0;
  [[nodiscard]] virtual std::string ParametersTable() const = 0;
  [[nodiscard]] virtual std::string NibbleTable() const = 0;
  [[nodiscard]] virtual std::string DecDataTable() const = 0;

  // One upper-case hexadecimal digit, "0" to "F".
  [[nodiscard]] virtual std::string Axis() const = 0;
  virtual void SetAxis(const std::string& axis) = 0;
  // The PC side's speed in bits per second; 0 after a failed search.
  [[nodiscard]] virtual std::int32_t BaudRate() const = 0;
  virtual void SetBaudRate(std::int32_t rate) = 0;
  // Index of the serial port from 0: COM1 is 0.
  [[nodiscard]] virtual std::int16_t COM() const = 0;
  virtual void SetCOM(std::int16_t index) = 0;
  // 1 when the amplifier repeats each command line, 0 when not.
  [[nodiscard]] virtual std::int16_t Echo() const = 0;
  virtual void SetEcho(std::int16_t echo) = 0;
  // The serial channel exists.
  virtual void SetHelix7CommExists(bool exists) = 0;

  // The catalogue's language; 2 is English.
  [[nodiscard]] virtual std::int32_t Language() const = 0;
  // Rated power in watts, as decimal text.
  [[nodiscard]] virtual std::string LastMotorSize() const = 0;
  virtual void SetLastMotorSize(const std::string& watts) = 0;
};

// The one global reference to the session. Set in one place a program; null before and after.
extern Session* gMainForm;

// The open project. Throws std::logic_error where there is none.
[[nodiscard]] Project& OpenedProject();

}  // namespace velmoor
