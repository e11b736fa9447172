// The operations of the exchange: which line each one sends, and what becomes of the answer.
#include <utility>

#include "link/ClassSerialComm.h"
#include "link/CommandWords.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

// The word behind a selector, or nothing when the selector lies outside the table.
std::optional<std::string_view> WordOf(std::span<const std::string_view> words,
                                       std::int32_t selector) {
  if (selector < 0 || std::cmp_greater_equal(selector, words.size())) return std::nullopt;
  return words[static_cast<std::size_t>(selector)];
}

bool IsBitString(std::int32_t cmd) {
  switch (static_cast<ValueCommand>(cmd)) {
    case ValueCommand::amplifierInputs:
    case ValueCommand::optionInputs:
    case ValueCommand::amplifierOutputs:
    case ValueCommand::optionOutputs:
    case ValueCommand::status:
      return true;
    default:
      return false;
  }
}

bool IsBlankDelimited(std::int32_t cmd) {
  return cmd == static_cast<std::int32_t>(InfoCommand::error) ||
         cmd == static_cast<std::int32_t>(InfoCommand::alarm);
}

// Where an answer would be adapted to its selector; no selector needs it today.
std::string convertReadInfoResult(std::int32_t /*cmd*/, std::string result) {
  return result;
}

}  // namespace

std::string ClassSerialComm::Line(std::string_view word, std::string_view argument) const {
  std::string line = HexText(static_cast<std::uint16_t>(m_axisNo));
  line += word;
  line += argument;
  return line;
}

// ---- tables

ResultCode ClassSerialComm::ReadRow(std::span<const FieldCommand> fields, std::int16_t row,
                                    std::span<std::string> data) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const ResultCode result = executeReadCommand(Line(fields[i].word, NumberText(row)), data[i]);
    if (result != kSuccess) return result;
  }
  return kSuccess;
}

ResultCode ClassSerialComm::WriteRow(std::span<const FieldCommand> fields, std::int16_t row,
                                     std::span<const std::string> data) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string argument = NumberText(row) + "=" + std::string(Trim(data[i]));
    const ResultCode result = WriteNumber(Line(fields[i].word, argument));
    if (result != kSuccess) return result;
  }
  return kSuccess;
}

ResultCode ClassSerialComm::readIndexTable(std::int16_t tablerow, IndexRow& data) {
  return ReadRow(kIndexTableCommands, tablerow, data);
}
ResultCode ClassSerialComm::writeIndexTable(std::int16_t tablerow, const IndexRow& data) {
  return WriteRow(kIndexTableCommands, tablerow, data);
}
ResultCode ClassSerialComm::readZoneTable(std::int16_t tablerow, ZoneRow& data) {
  return ReadRow(kZoneTableCommands, tablerow, data);
}
ResultCode ClassSerialComm::writeZoneTable(std::int16_t tablerow, const ZoneRow& data) {
  return WriteRow(kZoneTableCommands, tablerow, data);
}
ResultCode ClassSerialComm::readJogTable(std::int16_t tablerow, std::string& data) {
  return ReadRow(kJogTableCommands, tablerow, {&data, 1});
}
ResultCode ClassSerialComm::writeJogTable(std::int16_t tablerow, const std::string& data) {
  return WriteRow(kJogTableCommands, tablerow, {&data, 1});
}

// ---- parameters

ResultCode ClassSerialComm::readParameter(const std::string& pn, std::string& value) {
  return executeReadCommand(Line(kParameterCommand, Trim(pn)), value);
}

ResultCode ClassSerialComm::writeParameter(const std::string& pn, const std::string& value) {
  const std::string argument = std::string(Trim(pn)) + "=" + std::string(Trim(value));
  return WriteNumber(Line(kParameterCommand, argument));
}

// ---- commands

ResultCode ClassSerialComm::writeHomeOffset(std::int32_t data) {
  return WriteNumber(Line(kHomeOffsetCommand, NumberText(data)));
}

ResultCode ClassSerialComm::SetInertiaRatio() {
  return WriteWord(Line(kInertiaRatioCommand));
}

ResultCode ClassSerialComm::SetRigidity(std::int16_t iData) {
  return WriteNumber(Line(kRigidityCommand, NumberText(iData)));
}

ResultCode ClassSerialComm::helixJog(std::int32_t Speed, std::int32_t dir) {
  if (dir != 0 && dir != 1) return kBadSelector;
  return WriteNumber(Line(dir == 0 ? kJogForwardCommand : kJogReverseCommand, NumberText(Speed)));
}

ResultCode ClassSerialComm::helixSimpleCommand(std::int32_t cmd) {
  const auto word = WordOf(kSimpleCommands, cmd);
  return word ? WriteWord(Line(*word)) : kBadSelector;
}

// ---- questions

// With an index the word asks for an entry of the history, behind "="; without one, as an
// information command, for the present state behind a blank. Two different questions.
ResultCode ClassSerialComm::readAlarmHistory(std::int32_t Index, std::string& data) {
  return executeReadCommand(Line(kAlarmHistoryCommand, NumberText(Index)), data);
}

std::int32_t ClassSerialComm::ValueOf(std::int32_t cmd, std::string_view text) {
  return IsBitString(cmd) ? convertBinaryString(text) : Int32FromCell(Trim(text));
}

ResultCode ClassSerialComm::helixGetValue(std::int32_t cmd, std::int32_t& data) {
  const auto word = WordOf(kValueCommands, cmd);
  if (!word) return kBadSelector;
  std::string value;
  const ResultCode result = executeReadCommand(Line(*word), value);
  try {
    data = ValueOf(cmd, value);
  } catch (const NumberError&) {
    data = 0;
    TellFailure({.code = kValueNotFound, .exchange = m_exchange});
    return kValueNotFound;
  }
  return result;
}

ResultCode ClassSerialComm::helixReadInfo(std::int32_t cmd, std::string& data) {
  const auto word = WordOf(kReadInfoCommands, cmd);
  if (!word) return kBadSelector;
  std::string value;
  const std::string_view delimiter = IsBlankDelimited(cmd) ? " " : "=";
  const ResultCode result = executeReadCommand(Line(*word), value, delimiter);
  data = convertReadInfoResult(cmd, std::move(value));
  return result;
}

}  // namespace velmoor
