#include "compiler/Records.h"

#include "platform/Numbers.h"

namespace velmoor::catalogue {
namespace {

constexpr std::string_view kBlanks = " \t\r";

}  // namespace

void Problems::Add(const Place& place, const std::string& reason) {
  lines_.push_back(place.file + ":" + std::to_string(place.line) + ": " + reason);
}

Split SplitFirst(std::string_view text) {
  text = Trim(text);
  const std::size_t end = text.find_first_of(kBlanks);
  if (end == std::string_view::npos) return {std::string(text), {}};
  return {std::string(text.substr(0, end)), std::string(Trim(text.substr(end)))};
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  Split split = SplitFirst(text);
  while (!split.first.empty()) {
    words.push_back(split.first);
    split = SplitFirst(split.rest);
  }
  return words;
}

std::vector<Record> ReadRecords(const std::string& file, std::string_view text,
                                Problems& problems) {
  std::vector<Record> records;
  Place place{file, 0};
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    ++place.line;
    if (Trim(line).empty() || line.front() == '#') continue;
    const Split split = SplitFirst(line);
    if (kBlanks.find(line.front()) == std::string_view::npos) {
      records.push_back({split.first, split.rest, place, {}});
    } else if (records.empty()) {
      problems.Add(place, "a field before the first record");
    } else {
      records.back().fields.push_back({split.first, split.rest, place});
    }
  }
  return records;
}

}  // namespace velmoor::catalogue
