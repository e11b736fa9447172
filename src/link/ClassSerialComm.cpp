// The exchange and the connection; the operations that build its lines are in
// ClassSerialCommOperations.cpp.
#include "link/ClassSerialComm.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <utility>

#include "link/AnswerName.h"
#include "link/BaudRates.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::int32_t kNormalTimeOut = 5000;
constexpr std::int32_t kQuiet = 100;  // ms without a line: nothing more is under way
constexpr int kMostLateLines = 64;
constexpr std::string_view kSuccessString = "OK";
constexpr std::string_view kRefusalMark = " ERR";
constexpr std::string_view kAlarmMark = "A.";

// Commands during which the amplifier writes its memory or restarts. JSPDSTORE, ZONESTORE, JSPDINIT
// and ZONEINIT are deliberately not among them.
constexpr std::pair<std::string_view, int> kLongCommands[] = {{"ABSPGRES", 15000},
                                                              {"PGMSTORE", 10000},
                                                              {"PGMINIT", 10000},
                                                              {"PRMINIT", 15000},
                                                              {"RES", 10000}};

std::string_view WithoutAxis(std::string_view line) {
  return line.empty() ? line : line.substr(1);
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The error number in four hexadecimal digits, or `unreadable` for anything else. A refusal with
// the number 0 counts as unreadable: a refused command must never look like a success.
ResultCode ErrorNumber(std::string_view digits, ResultCode unreadable) {
  const auto number = digits.size() == 4 ? ParseHex(digits) : std::nullopt;
  return number && *number != 0 ? static_cast<ResultCode>(*number) : unreadable;
}

ResultCode RefusalNumber(std::string_view answer, ResultCode unreadable) {
  return ErrorNumber(answer.substr(std::min<std::size_t>(1, answer.size()), 4), unreadable);
}

// The place of the first "E" when a digit follows it. Only the first one counts: a letter E before
// it, as in the axis or the word, shields a later error number.
std::optional<std::size_t> DeviceErrorPlace(std::string_view answer) {
  const std::size_t at = answer.find('E');
  if (at == std::string_view::npos || !ClassSerialComm::IsNumeric(answer.substr(at + 1, 1))) {
    return std::nullopt;
  }
  return at;
}

std::string CharacterAt(std::string_view text, std::size_t at) {
  return at < text.size() ? std::string(1, text[at]) : std::string();
}

std::string CharacterAndCode(std::string_view text, std::size_t at) {
  const std::string character = CharacterAt(text, at);
  const int code = character.empty() ? 0 : static_cast<unsigned char>(character[0]);
  return "[" + character + "] [" + NumberText(code) + "]";
}

}  // namespace

// ---- settings

void ClassSerialComm::setBaudRate(std::int32_t bitsPerSecond) {
  m_baudRate = bitsPerSecond;
  ApplySettings();
}

void ClassSerialComm::setTimeOut(std::int32_t milliseconds) {
  m_timeOut = milliseconds;
  if (m_saxComm != nullptr) m_saxComm->SetReadTimeOut(m_timeOut);
}

const std::string& ClassSerialComm::ErrorMessages(ResultCode iNegativeIndex) const {
  static const std::array<std::string, 9> kMessages{"Success.",
                                                    "Communications port not opened.",
                                                    "No response error.",
                                                    "Response does not match command error.",
                                                    "Invalid command selector error.",
                                                    "Read value not found error.",
                                                    "Unsuccessful response error.",
                                                    "Communications could not be established.",
                                                    "Busy!  Not ready for serial command."};
  const std::int64_t index = std::abs(std::int64_t{iNegativeIndex});
  if (index >= static_cast<std::int64_t>(kMessages.size())) {
    throw std::out_of_range("Subscript out of range");
  }
  return kMessages[static_cast<std::size_t>(index)];
}

void ClassSerialComm::setupClass(SerialPort& saxCtrl, std::optional<std::int16_t> axisNo,
                                 std::optional<std::int32_t> baudRate, std::optional<bool> echoBack,
                                 std::optional<std::int16_t> comPort,
                                 std::optional<std::int32_t> timeOut) {
  m_saxComm = &saxCtrl;
  m_axisNo = axisNo.value_or(m_axisNo);
  m_baudRate = baudRate.value_or(m_baudRate);
  m_echoBack = echoBack.value_or(m_echoBack);
  m_comPort = comPort.value_or(m_comPort);
  m_timeOut = timeOut.value_or(m_timeOut);
  m_saxComm->SetReadTimeOut(m_timeOut);
  ApplySettings();
}

void ClassSerialComm::ApplySettings() {
  if (m_saxComm == nullptr) return;
  m_saxComm->SetSettings(NumberText(m_baudRate) + "," + m_parity + "," + NumberText(m_dataBits) +
                         "," + NumberText(m_stopBits));
}

bool ClassSerialComm::IsPortOpen() const {
  return m_saxComm != nullptr && m_saxComm->IsOpen();
}

// ---- connection

bool ClassSerialComm::manualConnect() {
  if (m_saxComm != nullptr) {
    m_saxComm->SetPortName("COM" + NumberText(m_comPort));
    if (m_saxComm->Open()) return true;
  }
  TellFailure({.code = kPortNotOpen, .reason = m_saxComm ? m_saxComm->LastError() : ""});
  return false;
}

void ClassSerialComm::disconnect() {
  if (m_saxComm != nullptr) m_saxComm->Close();
}

ResultCode ClassSerialComm::autoConnect(bool& echoBack, std::int32_t& baudRate,
                                        std::optional<std::int16_t> axisNo,
                                        std::optional<std::int16_t> comPort) {
  m_axisNo = axisNo.value_or(m_axisNo);
  m_comPort = comPort.value_or(m_comPort);
  m_echoBack = true;
  m_searchStopped = false;
  if (!manualConnect()) return kPortNotOpen;

  const bool found = std::ranges::any_of(kBaudRates, [this](std::int32_t rate) {
    m_searchStopped = m_searchStopped || (m_searchWatch && !m_searchWatch(rate));
    if (m_searchStopped) return false;
    setBaudRate(rate);
    // The first answer at a new speed may be the remainder of noise; only the second counts.
    std::string value;
    (void)readParameter("800", value);
    ResultCode result = readParameter("800", value);
    // Answers that came late look like those of an amplifier without echo.
    if (result == kEchoMismatch) {
      Drain();
      result = readParameter("800", value);
    }
    // Without echo the first line is the answer already, which does not repeat the command.
    if (result == kEchoMismatch) m_echoBack = false;
    return result == kSuccess || result == kEchoMismatch;
  });
  if (!found) {
    TellFailure({.code = kNotEstablished,
                 .reason = m_searchStopped
                               ? "The search was stopped."
                               : "No amplifier answered on axis " +
                                     HexText(static_cast<std::uint16_t>(m_axisNo)) + " of COM" +
                                     NumberText(m_comPort) + " at 9600, 19200 or 38400 bit/s."});
    return kNotEstablished;
  }
  const ResultCode acknowledged = askForAcknowledges();
  if (acknowledged != kSuccess) {
    disconnect();
    return acknowledged;
  }
  echoBack = m_echoBack;
  baudRate = m_baudRate;
  return kSuccess;
}

// An answer that comes behind its time-out leaves every exchange one line behind.
void ClassSerialComm::Drain() {
  if (!IsPortOpen()) return;
  const int timeOut = m_saxComm->ReadTimeOut();
  m_saxComm->SetReadTimeOut(kQuiet);
  try {
    for (int lines = 0; lines < kMostLateLines && !m_saxComm->ReadLine().empty();) ++lines;
  } catch (const SerialPortError&) {
    // The next exchange tells it.
  }
  m_saxComm->SetReadTimeOut(timeOut);
}

ResultCode ClassSerialComm::askAgain() {
  std::string value;
  ResultCode result = readParameter("800", value);
  if (result == kEchoMismatch || result == kValueNotFound) {
    Drain();
    result = readParameter("800", value);
  }
  return result == kSuccess ? askForAcknowledges() : result;
}

ResultCode ClassSerialComm::askForAcknowledges() {
  ResultCode result = writeParameter("802", "1");
  if (result == kEchoMismatch) {
    Drain();
    result = writeParameter("802", "1");
  }
  if (result != kNoResponse) return result;
  std::string value;
  if (readParameter("802", value) != kSuccess) return result;
  return ParseWhole(Trim(value)) == 1 ? kSuccess : result;
}

// ---- the exchange

ResultCode ClassSerialComm::Guarded(const std::string& command, AfterExchange after,
                                    const std::function<ResultCode()>& exchange) {
  m_busy = true;
  m_exchange = {.line = command, .timeOut = m_saxComm->ReadTimeOut()};
  ResultCode result = kPortNotOpen;
  try {
    result = exchange();
  } catch (const std::exception& error) {
    result = kPortNotOpen;
    m_exchange.portWords = error.what();
  }
  if (after == AfterExchange::resetTimeOut) ResetTimeOut();
  m_busy = false;
  if (result == kSuccess) return result;
  m_failure = {.code = result, .exchange = m_exchange};
  LogFailure(command, result);
  return result;
}

void ClassSerialComm::TellFailure(LinkFailure failure) {
  m_failure = std::move(failure);
}

// Of an operation that sent nothing.
ResultCode ClassSerialComm::Failed(const std::string& command, ResultCode result) {
  m_failure = {.code = result, .exchange = {.line = command}};
  return result;
}

void ClassSerialComm::SendLine(const std::string& command) {
  m_saxComm->WriteLine(command);
  if (const auto work = std::exchange(m_meanwhile, nullptr)) work();
}

std::string ClassSerialComm::ReadAnswer() {
  m_exchange.answer = m_saxComm->ReadLine();
  m_exchange.form = AnswerFormOf(m_exchange.answer, m_exchange.line.substr(0, 1));
  return m_exchange.answer;
}

void ClassSerialComm::LogFailure(const std::string& command, ResultCode result) const {
  const std::string reason =
      result > kSuccess ? "device error " + NumberText(result) : ErrorMessages(result);
  LogWarning("link", command + ": " + reason);
}

void ClassSerialComm::RaiseTimeOut(std::string_view bareCommand) {
  for (const auto& [word, milliseconds] : kLongCommands) {
    if (bareCommand == word && m_saxComm != nullptr) m_saxComm->SetReadTimeOut(milliseconds);
  }
}

// To the constant and not to m_timeOut: a shorter time-out lasts for one write exchange only.
void ClassSerialComm::ResetTimeOut() {
  if (m_saxComm != nullptr && m_saxComm->ReadTimeOut() != kNormalTimeOut) {
    m_saxComm->SetReadTimeOut(kNormalTimeOut);
  }
}

ResultCode ClassSerialComm::ReadEcho(std::string_view bareCommand) {
  if (!m_echoBack) return kSuccess;
  std::string& echo = m_exchange.echo;
  echo = m_saxComm->ReadLine();
  if (echo.empty()) return kNoResponse;
  return Contains(echo, bareCommand) ? kSuccess : kEchoMismatch;
}

ResultCode ClassSerialComm::executeWriteCommand(const std::string& command) {
  if (!IsPortOpen()) return Failed(command, kPortNotOpen);
  const std::string_view bareCommand = WithoutAxis(command);
  RaiseTimeOut(bareCommand);
  // The raised time-out deliberately stays in force on this path.
  if (m_busy) return Failed(command, kBusy);
  return Guarded(command, AfterExchange::resetTimeOut, [&]() -> ResultCode {
    if (m_saxComm->WaitingBytes() > 0) m_saxComm->DiscardInput();
    SendLine(command);
    const ResultCode echo = ReadEcho(bareCommand);
    if (echo != kSuccess) return echo;
    const std::string answer = ReadAnswer();
    return answer.empty() ? kNoResponse : JudgeAcknowledge(answer);
  });
}

ResultCode ClassSerialComm::Checked(const std::string& command, ResultCode result) {
  return m_writeCheck ? m_writeCheck(command, result) : result;
}

ResultCode ClassSerialComm::WriteWord(const std::string& command) {
  return Checked(command, executeWriteCommand(command));
}

ResultCode ClassSerialComm::WriteNumber(const std::string& command) {
  ResultCode result = executeWriteCommand(command);
  const std::string& echo = m_exchange.echo;
  if (result == kEchoMismatch) {
    const std::string_view bareCommand = WithoutAxis(command);
    m_strayWrite |= !Contains(echo, bareCommand.substr(0, bareCommand.find('=') + 1));
  }
  if (result == kSuccess && !echo.empty() && !Trim(echo).ends_with(WithoutAxis(command))) {
    result = kEchoMismatch;
    TellFailure({.code = result, .exchange = m_exchange});
  }
  return Checked(command, result);
}

ResultCode ClassSerialComm::JudgeAcknowledge(std::string_view answer) {
  if (Contains(answer, kRefusalMark)) return RefusalNumber(answer, kNotAcknowledged);
  // What was damaged may have been the letter of an error.
  if (answer.find(kDamagedCharacter) != std::string_view::npos) return kNotAcknowledged;
  if (!Contains(answer, kAlarmMark)) {
    // Whatever the answer says: without an "E" the write counts as done.
    if (!Contains(answer, "E")) return kSuccess;
    if (const auto at = DeviceErrorPlace(answer)) {
      return ErrorNumber(answer.substr(*at, 4), kNotAcknowledged);
    }
  }
  return Trim(WithoutAxis(answer)) == kSuccessString ? kSuccess : kNotAcknowledged;
}

ResultCode ClassSerialComm::executeReadCommand(const std::string& command, std::string& response,
                                               std::string_view overrideValueDelimeter) {
  const std::string_view delimiter = overrideValueDelimeter.empty() ? "=" : overrideValueDelimeter;
  if (!IsPortOpen()) return Failed(command, kPortNotOpen);
  if (m_busy) return Failed(command, kBusy);
  // Unlike a write, a read throws no waiting bytes away and leaves the time-out as it is.
  return Guarded(command, AfterExchange::keepTimeOut, [&]() -> ResultCode {
    SendLine(command);
    const ResultCode echo = ReadEcho(WithoutAxis(command));
    if (echo != kSuccess) return echo;
    const std::string answer = ReadAnswer();
    if (answer.empty()) return kNoResponse;
    if (Contains(answer, kRefusalMark)) return RefusalNumber(answer, kValueNotFound);
    // The whole line is looked at, the value included; only alarm texts are exempt.
    const auto error = DeviceErrorPlace(answer);
    if (error && !Contains(answer, kAlarmMark)) {
      return ErrorNumber(std::string_view(answer).substr(*error, 4), kValueNotFound);
    }
    const std::size_t at = answer.find(delimiter);
    if (at == std::string::npos) return kValueNotFound;
    if (NamesAnother(command, std::string_view(answer).substr(0, at))) return kValueNotFound;
    const std::string value = answer.substr(at + delimiter.size());
    if (value.find(kDamagedCharacter) != std::string::npos) return kValueNotFound;
    response = value;
    return kSuccess;
  });
}

ResultCode ClassSerialComm::writeToSerial(const std::string& command, RawResponse& response) {
  RaiseTimeOut(WithoutAxis(command));
  if (m_busy) return Failed(command, kBusy);
  if (m_saxComm == nullptr) return Failed(command, kPortNotOpen);
  return Guarded(command, AfterExchange::resetTimeOut, [&]() -> ResultCode {
    SendLine(command);
    response[0] = m_saxComm->ReadLine();
    if (response[0].empty()) return kNoResponse;
    if (!m_echoBack) return kSuccess;
    response[1] = m_saxComm->ReadLine();
    return response[1].empty() ? kNoResponse : kSuccess;
  });
}

ResultCode ClassSerialComm::sendAndListen(const std::string& command, std::int32_t milliseconds,
                                          const std::function<bool(const std::string&)>& heard) {
  if (!IsPortOpen()) return Failed(command, kPortNotOpen);
  if (m_busy) return Failed(command, kBusy);
  m_saxComm->SetReadTimeOut(milliseconds);
  return Guarded(command, AfterExchange::resetTimeOut, [&]() -> ResultCode {
    SendLine(command);
    std::string line = m_saxComm->ReadLine();
    while (!line.empty() && heard(line)) line = m_saxComm->ReadLine();
    return kSuccess;
  });
}

// ---- helpers

std::int32_t ClassSerialComm::convertBinaryString(std::string_view value) {
  std::int32_t result = 0;
  int bit = 0;
  for (auto it = value.rbegin(); it != value.rend(); ++it) {
    if (*it != '0' && *it != '1') continue;
    if (*it == '1') {
      if (bit > 30) throw NumberError("Overflow");
      result += std::int32_t{1} << bit;
    }
    ++bit;
  }
  return result;
}

bool ClassSerialComm::IsNumeric(std::string_view strChar) {
  return strChar.size() == 1 && strChar[0] >= '0' && strChar[0] <= '9';
}

void ClassSerialComm::checkEchoChars(std::string_view echo, std::string_view command) {
  for (std::size_t at = 0; at < echo.size(); ++at) {
    if (CharacterAt(echo, at) == CharacterAt(command, at)) continue;
    ShowInformation("ascii check: [" + NumberText(at + 1) + "]\recho char: " +
                    CharacterAndCode(echo, at) + "\rcmd char: " + CharacterAndCode(command, at));
    return;
  }
}

}  // namespace velmoor
