// The command exchange: the only class that touches the serial port.
//
// A request becomes one text line to the amplifier; one or two lines come back; the caller is
// blocked until the last has arrived or the time-out has passed. No queue, no retry, no state of
// the amplifier beyond the settings of the connection. Owned by clsHX7Helix7; one thread.
//
// Every operation returns a ResultCode and throws nothing: a port that fails inside an exchange
// gives -1. No operation shows a message. An exchange that is asked for while another is under way
// is refused with -8. Outputs stay untouched on failure unless told otherwise.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "link/CommandWords.h"
#include "link/LinkFailure.h"
#include "link/ResultCode.h"
#include "platform/SerialPort.h"

namespace velmoor {

// The eight texts of an index row: position, speed, registration distance, registration speed,
// outputs, event, loop, next, each in the amplifier's form.
using IndexRow = std::array<std::string, kIndexTableCommands.size()>;
// Lower and upper limit of a zone.
using ZoneRow = std::array<std::string, kZoneTableCommands.size()>;
// The raw lines of an exchange: with echo on the echo and the answer, otherwise the answer alone.
using RawResponse = std::array<std::string, 2>;

class ClassSerialComm {
 public:
  // ---- settings
  [[nodiscard]] std::int16_t axisNo() const { return m_axisNo; }
  void setAxisNo(std::int16_t axis) { m_axisNo = axis; }
  [[nodiscard]] std::int32_t baudRate() const { return m_baudRate; }
  // Stores the speed and hands the settings text to the port at once, open or not.
  void setBaudRate(std::int32_t bitsPerSecond);
  [[nodiscard]] bool echoBack() const { return m_echoBack; }
  void setEchoBack(bool echo) { m_echoBack = echo; }
  // Number of the port, from 1; takes effect at the next manualConnect.
  [[nodiscard]] std::int16_t comPort() const { return m_comPort; }
  void setComPort(std::int16_t number) { m_comPort = number; }
  // Milliseconds; handed to the port at once. Lasts only until the first write or raw exchange has
  // ended: these leave 5000 behind.
  [[nodiscard]] std::int32_t timeOut() const { return m_timeOut; }
  void setTimeOut(std::int32_t milliseconds);

  // The message of a result from -8 to 8; the sign is ignored. Throws std::out_of_range otherwise.
  [[nodiscard]] const std::string& ErrorMessages(ResultCode iNegativeIndex) const;

  // Takes the port, which must outlive this object, stores the arguments that are present and
  // configures the port without opening it. May be called again.
  void setupClass(SerialPort& saxCtrl, std::optional<std::int16_t> axisNo = {},
                  std::optional<std::int32_t> baudRate = {}, std::optional<bool> echoBack = {},
                  std::optional<std::int16_t> comPort = {},
                  std::optional<std::int32_t> timeOut = {});

  // ---- beside the results
  // The latest exchange that went out; empty before the first.
  [[nodiscard]] const LinkExchange& LatestExchange() const { return m_exchange; }
  // The latest operation that failed; code 0 before the first.
  [[nodiscard]] const LinkFailure& LatestFailure() const { return m_failure; }
  // Takes the place of the latest failure: whoever judges an exchange more strictly tells it here.
  void TellFailure(LinkFailure failure);
  // Judges every write behind its exchange: gets the line and the result as told, and what it
  // returns becomes the result of the operation; a row ends there. It may exchange by itself.
  // Without one the results stand as told.
  using WriteCheck = std::function<ResultCode(const std::string& line, ResultCode result)>;
  void setWriteCheck(WriteCheck check) { m_writeCheck = std::move(check); }
  // Runs once, while the next line is on its way: what would otherwise keep the line waiting. It
  // neither exchanges nor throws. Nothing: not any more.
  void whileNextIsOnItsWay(std::function<void()> work) { m_meanwhile = std::move(work); }
  // Told the speed that a search tries next; false ends the search.
  using SearchWatch = std::function<bool(std::int32_t bitsPerSecond)>;
  void setSearchWatch(SearchWatch watch) { m_searchWatch = std::move(watch); }
  // The latest autoConnect ended because its watch said so.
  [[nodiscard]] bool wasSearchStopped() const { return m_searchStopped; }

  // ---- connection
  // Opens the port, again when it is open already. Returns whether it is open.
  [[nodiscard]] bool manualConnect();
  void disconnect();
  // Searches the speed, 9600 first, and the echo state of the amplifier, and tells it to
  // acknowledge writes. -1 the port could not be opened; -7 nobody answered, the port stays open;
  // another code is that of the acknowledge setting, the port is closed then. The outputs are set
  // on success only.
  [[nodiscard]] ResultCode autoConnect(bool& echoBack, std::int32_t& baudRate,
                                       std::optional<std::int16_t> axisNo = {},
                                       std::optional<std::int16_t> comPort = {});
  // Asks once on the open port, with speed, echo and axis as they are, and tells the amplifier to
  // acknowledge writes. The result of the first of the two that failed.
  [[nodiscard]] ResultCode askAgain();
  // Tells the amplifier to acknowledge writes. One that did not so far may leave this unanswered:
  // what it holds then tells.
  [[nodiscard]] ResultCode askForAcknowledges();

  // ---- tables; rows count from 0. A row is not atomic: the first failing field ends it, the
  // fields before it stay read or written.
  [[nodiscard]] ResultCode readIndexTable(std::int16_t tablerow, IndexRow& data);
  [[nodiscard]] ResultCode writeIndexTable(std::int16_t tablerow, const IndexRow& data);
  [[nodiscard]] ResultCode readZoneTable(std::int16_t tablerow, ZoneRow& data);
  [[nodiscard]] ResultCode writeZoneTable(std::int16_t tablerow, const ZoneRow& data);
  [[nodiscard]] ResultCode readJogTable(std::int16_t tablerow, std::string& data);
  [[nodiscard]] ResultCode writeJogTable(std::int16_t tablerow, const std::string& data);

  // ---- parameters; `pn` is the hexadecimal number without "Pn", as in "81D"
  [[nodiscard]] ResultCode readParameter(const std::string& pn, std::string& value);
  [[nodiscard]] ResultCode writeParameter(const std::string& pn, const std::string& value);

  // ---- commands
  [[nodiscard]] ResultCode writeHomeOffset(std::int32_t data);  // counts
  [[nodiscard]] ResultCode SetInertiaRatio();
  [[nodiscard]] ResultCode SetRigidity(std::int16_t iData);
  // `dir` 0 forward, 1 reverse, otherwise -4.
  [[nodiscard]] ResultCode helixJog(std::int32_t Speed, std::int32_t dir);
  // `cmd` 0 to 14 (SimpleCommand), otherwise -4.
  [[nodiscard]] ResultCode helixSimpleCommand(std::int32_t cmd);

  // ---- questions
  // The entry `Index` of the alarm history, the newest at 0.
  [[nodiscard]] ResultCode readAlarmHistory(std::int32_t Index, std::string& data);
  // What the text of an answer to ValueCommand `cmd` means. Throws NumberError.
  [[nodiscard]] static std::int32_t ValueOf(std::int32_t cmd, std::string_view text);
  // `cmd` 0 to 16 (ValueCommand), otherwise -4 and `data` untouched. A failed read, and a text that
  // is no number (-5), give 0.
  [[nodiscard]] ResultCode helixGetValue(std::int32_t cmd, std::int32_t& data);
  // `cmd` 0 to 12 (InfoCommand), otherwise -4. A failed read empties `data`.
  [[nodiscard]] ResultCode helixReadInfo(std::int32_t cmd, std::string& data);

  // Whether a write since the last call may have reached another row or parameter than it named:
  // its echo, which shows what the amplifier has taken, did not begin as it did.
  [[nodiscard]] bool TakeStrayWrite() { return std::exchange(m_strayWrite, false); }

  // Reads and forgets what still comes of former exchanges, until a tenth of a second is quiet.
  void Drain();

  // The raw exchange: `command` goes out as given, axis included; nothing is parsed or compared. A
  // closed port is not tested for and gives -2. With echo off response[1] stays untouched.
  [[nodiscard]] ResultCode writeToSerial(const std::string& command, RawResponse& response);
  // Sends `command` and gives every line that follows to `heard` until it returns false or a wait
  // of `milliseconds` passes without a line. -1, -8 or 0. The time-out is 5000 ms afterwards.
  [[nodiscard]] ResultCode sendAndListen(const std::string& command, std::int32_t milliseconds,
                                         const std::function<bool(const std::string&)>& heard);

  [[nodiscard]] static std::string getDLLVersion() { return "2.00.00"; }

  // ---- the exchange and its helpers, for the operations above and their tests
  // `command` is the whole line with its axis.
  [[nodiscard]] ResultCode executeReadCommand(const std::string& command, std::string& response,
                                              std::string_view overrideValueDelimeter = {});
  [[nodiscard]] ResultCode executeWriteCommand(const std::string& command);
  // "0" and "1" as bits, the last character lowest; other characters are skipped. Throws
  // NumberError beyond 31 bits.
  [[nodiscard]] static std::int32_t convertBinaryString(std::string_view value);
  [[nodiscard]] static bool IsNumeric(std::string_view strChar);
  // Diagnostic, called by no operation: a message about the first character of `echo` that differs
  // from `command`, none when they agree.
  static void checkEchoChars(std::string_view echo, std::string_view command);

 private:
  enum class AfterExchange { keepTimeOut, resetTimeOut };

  // Runs the exchange of `command` under the guard and clears it whatever happens; a failure is
  // told to the log.
  ResultCode Guarded(const std::string& command, AfterExchange after,
                     const std::function<ResultCode()>& exchange);
  // Makes it the latest failure and tells the log; gives `result`.
  ResultCode Failed(const std::string& command, ResultCode result);
  void LogFailure(const std::string& command, ResultCode result) const;
  void SendLine(const std::string& command);
  [[nodiscard]] std::string ReadAnswer();
  ResultCode Checked(const std::string& command, ResultCode result);
  ResultCode WriteWord(const std::string& command);
  ResultCode ReadEcho(std::string_view bareCommand);
  // As WriteWord for a line that ends in a number. The amplifier takes what its echo shows: an echo
  // that goes on behind the command is that of another number, and gives -3.
  ResultCode WriteNumber(const std::string& command);
  [[nodiscard]] static ResultCode JudgeAcknowledge(std::string_view answer);
  void RaiseTimeOut(std::string_view bareCommand);
  void ResetTimeOut();
  [[nodiscard]] bool IsPortOpen() const;
  void ApplySettings();
  // The line of a word with its arguments, axis in front.
  [[nodiscard]] std::string Line(std::string_view word, std::string_view argument = {}) const;
  ResultCode ReadRow(std::span<const FieldCommand> fields, std::int16_t row,
                     std::span<std::string> data);
  ResultCode WriteRow(std::span<const FieldCommand> fields, std::int16_t row,
                      std::span<const std::string> data);

  bool m_busy = false;  // a line is out and its answer is awaited
  LinkExchange m_exchange;
  LinkFailure m_failure;
  WriteCheck m_writeCheck;
  std::function<void()> m_meanwhile;
  SearchWatch m_searchWatch;
  bool m_searchStopped = false;
  bool m_strayWrite = false;
  std::int16_t m_axisNo = 0;
  std::int32_t m_baudRate = 19200;
  bool m_echoBack = true;
  std::string m_parity = "e";
  std::int16_t m_dataBits = 7;
  std::int16_t m_stopBits = 2;
  std::int16_t m_comPort = 1;
  std::int32_t m_timeOut = 5000;
  SerialPort* m_saxComm = nullptr;
};

}  // namespace velmoor
