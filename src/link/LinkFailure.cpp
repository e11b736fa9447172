#include "link/LinkFailure.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "link/CommandWords.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::size_t kLongestQuote = 40;

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// ---- what was asked

constexpr std::pair<std::string_view, std::string_view> kWords[] = {
    {"SVON", "Servo on"},
    {"SVOFF", "Servo off"},
    {"SKIP", "Ending the motion"},
    {"JOGP", "Jogging forward"},
    {"JOGN", "Jogging in reverse"},
    {"PGMSTORE", "Storing the index table"},
    {"ZONESTORE", "Storing the zone table"},
    {"JSPDSTORE", "Storing the jog table"},
    {"PGMINIT", "Resetting the index table"},
    {"ZONEINIT", "Resetting the zone table"},
    {"JSPDINIT", "Resetting the jog table"},
    {"PRMINIT", "Resetting all parameters"},
    {"RES", "Restarting the amplifier"},
    {"ARES", "Resetting the alarm"},
    {"ALMTRCCLR", "Clearing the alarm history"},
    {"ABSPGRES", "Resetting the absolute encoder"},
    {"ZSET", "Setting the home offset"},
    {"TUNESTORE", "Storing the inertia ratio"},
    {"TYPE", "Reading the type of the option card"},
    {"SVTYPE", "Reading the type of the amplifier"},
    {"MTTYPE", "Reading the type of the motor"},
    {"MTSIZE", "Reading the size of the motor"},
    {"PGTYPE", "Reading the type of the encoder"},
    {"ALM", "Reading the alarm"},
    {"ERR", "Reading the error"}};

// The letters in front; the digit of "IN1" belongs to no argument, but no word of kWords has one.
std::string_view LettersOf(std::string_view command) {
  const auto end =
      std::ranges::find_if_not(command, [](char each) { return each >= 'A' && each <= 'Z'; });
  return command.substr(0, static_cast<std::size_t>(end - command.begin()));
}

std::string Parameter(std::string_view number) {
  const std::string digits(number);
  return "Pn" + (digits.size() < 3 ? std::string(3 - digits.size(), '0') : "") + digits;
}

// A step of the index table counts from 1, where the others show their rows as the wire has them.
std::string TableRow(std::string_view table, std::string_view row) {
  if (table != "index") return "row " + std::string(row);
  const auto number = ParseWhole(row);
  return "step " + (number ? NumberText(*number + 1) : std::string(row));
}

std::optional<std::string> TableFieldAsked(std::string_view verb, std::string_view command) {
  static constexpr std::pair<std::string_view, std::span<const FieldCommand>> kTables[] = {
      {"index", kIndexTableCommands}, {"zone", kZoneTableCommands}, {"jog", kJogTableCommands}};
  const std::string_view word = LettersOf(command);
  for (const auto& [table, fields] : kTables) {
    const auto field = std::ranges::find(fields, word, &FieldCommand::word);
    if (field == fields.end()) continue;
    return std::string(verb) + TableRow(table, command.substr(word.size())) + " of the " +
           std::string(table) + " table (" + std::string(field->field) + ")";
  }
  return std::nullopt;
}

// ---- why it failed

std::string Quoted(std::string text) {
  std::ranges::replace_if(
      text, [](char each) { return each < ' ' || each > '~'; }, '?');
  if (text.size() > kLongestQuote) text = text.substr(0, kLongestQuote - 3) + "...";
  return "\"" + text + "\"";
}

std::string Seconds(int milliseconds) {
  return NumberText(static_cast<double>(milliseconds) / 1000) + " s";
}

std::string Why(const LinkFailure& failure, const AlarmNames& names) {
  const LinkExchange& exchange = failure.exchange;
  if (failure.code > 0) return "refused with " + DeviceErrorText(failure.code, names);
  switch (failure.code) {
    case kPortNotOpen:
      return exchange.portWords.empty() ? "the port is not open"
                                        : "the line is gone: " + exchange.portWords;
    case kNoResponse:
      return "no answer within " + Seconds(exchange.timeOut);
    case kEchoMismatch:
      return "the echo was disturbed: " + Quoted(exchange.echo);
    case kValueNotFound:
      return "no usable value in the answer " + Quoted(exchange.answer);
    case kNotAcknowledged:
    case kNoAcknowledge:
      return "not acknowledged, but answered " + Quoted(exchange.answer);
    case kNoAnswerForm:
      return "not acknowledged, the answer " + Quoted(exchange.answer) + " cannot be read";
    case kBusy:
      return "the line was busy with something else";
    default:
      return {};
  }
}

}  // namespace

AnswerForm AnswerFormOf(std::string_view answer, std::string_view axis) {
  const std::string_view text = Trim(answer);
  if (text.empty()) return AnswerForm::none;
  if (Contains(text, " ERR")) return AnswerForm::refusal;
  if (!text.starts_with(axis)) return AnswerForm::noise;
  const std::string_view rest = Trim(text.substr(axis.size()));
  if (rest == "OK") return AnswerForm::acknowledge;
  if (rest == "NG") return AnswerForm::denial;
  if (rest.starts_with("A.")) return AnswerForm::alarm;
  if (rest.size() > 1 && rest[0] == 'E' && IsDigit(rest[1])) return AnswerForm::refusal;
  const std::size_t equals = rest.find('=');
  const bool isValue = (equals != std::string_view::npos && equals > 0) ||
                       rest.starts_with("ALM ") || rest.starts_with("ERR ");
  return isValue ? AnswerForm::value : AnswerForm::noise;
}

std::string WhatIsAsked(std::string_view line) {
  if (line.size() < 2) return "Asking " + Quoted(std::string(line));
  const std::string_view command = line.substr(1);
  const std::size_t equals = command.find('=');
  const std::string_view verb = equals == std::string_view::npos ? "Reading " : "Writing ";
  const std::string_view asked = command.substr(0, equals);
  if (asked.starts_with(kParameterCommand) && asked.size() > kParameterCommand.size() &&
      asked != "PRMINIT") {
    return std::string(verb) + Parameter(asked.substr(kParameterCommand.size()));
  }
  if (auto field = TableFieldAsked(verb, asked)) return *field;
  const std::string_view word = LettersOf(asked);
  const auto* const known =
      std::ranges::find(kWords, word, &std::pair<std::string_view, std::string_view>::first);
  if (known != std::end(kWords)) return std::string(known->second);
  return "Asking " + std::string(asked);
}

std::string DeviceErrorText(ResultCode code, const AlarmNames& names) {
  const std::string number = HexText(static_cast<std::uint32_t>(code));
  const std::string name = names.GetErrorName(number);
  return name.empty() ? number + ", which has no definition" : number + " \"" + name + "\"";
}

std::string CauseOf(const LinkFailure& failure, const AlarmNames& names) {
  if (!failure.reason.empty()) return failure.reason;
  if (failure.exchange.line.empty()) return {};
  const std::string why = Why(failure, names);
  if (why.empty()) return {};
  return WhatIsAsked(failure.exchange.line) + " (" + failure.exchange.line + "): " + why +
         (why.ends_with('.') ? "" : ".");
}

}  // namespace velmoor
