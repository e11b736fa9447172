#include "link/AnswerName.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

#include "link/CommandWords.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::string_view kAnsweredParameter = "PN";

// The parameter of "PRM5" and of "PN005"; nothing for any other name.
std::optional<std::string> ParameterIn(std::string_view name) {
  for (const std::string_view lead : {kParameterCommand, kAnsweredParameter}) {
    if (!name.starts_with(lead)) continue;
    const auto number = ParseHex(name.substr(lead.size()));
    if (number) return std::string(kAnsweredParameter) + HexText(*number, 3);
  }
  return std::nullopt;
}

// The word with its row, however that is padded; nothing where the name is not that word's.
std::optional<std::string> RowOf(std::string_view word, std::string_view name) {
  if (name == word) return std::string(word);
  if (!name.starts_with(word)) return std::nullopt;
  const std::string_view digits = name.substr(word.size());
  if (digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  const auto row = ParseWhole(digits);
  return row ? std::optional(std::string(word) + NumberText(*row)) : std::nullopt;
}

// What the name means, in one spelling; nothing for what is no name of the vocabulary.
std::optional<std::string> Meaning(std::string_view name) {
  if (auto parameter = ParameterIn(name)) return parameter;
  const std::span<const FieldCommand> tables[] = {kIndexTableCommands, kZoneTableCommands,
                                                  kJogTableCommands};
  for (const auto fields : tables) {
    for (const FieldCommand& field : fields) {
      if (auto row = RowOf(field.word, name)) return row;
    }
  }
  const std::span<const std::string_view> questions[] = {
      kValueCommands, kReadInfoCommands, {&kAlarmHistoryCommand, 1}};
  for (const auto words : questions) {
    for (const std::string_view word : words) {
      if (auto row = RowOf(word, name)) return row;
    }
  }
  return std::nullopt;
}

// Behind the axis.
std::string NameOf(std::string_view line) {
  return UpperCase(Trim(line.substr(std::min<std::size_t>(1, line.size()))));
}

}  // namespace

bool NamesAnother(std::string_view command, std::string_view head) {
  const auto asked = Meaning(NameOf(command));
  const auto answered = Meaning(NameOf(head));
  return asked && answered && *asked != *answered;
}

}  // namespace velmoor
