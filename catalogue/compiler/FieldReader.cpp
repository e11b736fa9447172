#include "compiler/FieldReader.h"

#include "platform/Numbers.h"

namespace velmoor::catalogue {

void ReadFields(const Record& record, const FieldHandlers& handlers, Problems& problems) {
  for (const Field& field : record.fields) {
    const auto handler = handlers.find(field.name);
    if (handler == handlers.end()) {
      problems.Add(field.place, "unknown field \"" + field.name + "\"");
    } else {
      handler->second(field);
    }
  }
}

std::int64_t ReadNumber(const Field& field, const std::string& text, Problems& problems) {
  const auto number = ParseWhole(text);
  if (!number) problems.Add(field.place, "\"" + text + "\" is no whole number");
  return number.value_or(0);
}

double ReadFactor(const Field& field, const std::string& text, Problems& problems) {
  const auto number = ParseFloat(text);
  if (!number || *number <= 0) {
    problems.Add(field.place, "\"" + text + "\" is no number above 0");
    return 1;
  }
  return *number;
}

Limits ReadLimits(const Field& field, const std::string& text, Problems& problems) {
  const std::vector<std::string> words = Words(text);
  if (words.size() != 3) {
    problems.Add(field.place, "least, greatest and initial value expected");
    return {};
  }
  return {ReadNumber(field, words[0], problems), ReadNumber(field, words[1], problems),
          ReadNumber(field, words[2], problems)};
}

std::size_t ReadDigitNumber(const Field& field, const std::string& text, Problems& problems) {
  const auto digit = ParseWhole(text);
  if (!digit || *digit < 0 || *digit > 3) {
    problems.Add(field.place, "\"" + text + "\" is no digit from 0 to 3");
    return 0;
  }
  return static_cast<std::size_t>(*digit);
}

std::optional<std::uint32_t> ReadCode(const Place& place, const std::string& text,
                                      Problems& problems) {
  const auto code = text.size() == 4 ? ParseHex(text) : std::nullopt;
  if (!code) problems.Add(place, "\"" + text + "\" is no code of four hexadecimal digits");
  return code;
}

Choices ReadChoices(const Field& field, Problems& problems) {
  const Split place = SplitFirst(field.value);
  Choices choices{ReadDigitNumber(field, place.first, problems), {}};
  std::string_view rest = place.rest;
  for (;;) {
    const std::size_t end = rest.find('|');
    const std::string_view meaning = Trim(rest.substr(0, end));
    if (meaning.empty()) problems.Add(field.place, "a value has no meaning");
    choices.meanings += meaning;
    if (end == std::string_view::npos) return choices;
    choices.meanings += '|';
    rest.remove_prefix(end + 1);
  }
}

void AppendText(std::string& text, const std::string& line) {
  if (!text.empty()) text += ' ';
  text += line;
}

}  // namespace velmoor::catalogue
