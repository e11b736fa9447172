#include "operations/WrittenCheck.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "link/CommandWords.h"
#include "link/LinkFailure.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::size_t kSample = 12;
constexpr std::size_t kNamed = 8;  // differences; the others are counted

// "Pn81D: sent 12500, holds 12400".
std::string Difference(const std::string& line, const std::string& held) {
  constexpr std::string_view kLead = "Writing ";
  std::string what = WhatIsAsked(line);
  if (what.starts_with(kLead)) what.erase(0, kLead.size());
  const auto shown = [](std::string_view value) {
    return value.empty() ? std::string("nothing") : std::string(value);
  };
  return what + ": sent " + shown(line.substr(line.find('=') + 1)) + ", holds " + shown(Trim(held));
}

// The parameter that a line writes; empty for a row of a table.
std::string ParameterIn(const std::string& line) {
  const std::string_view name = std::string_view(line).substr(1, line.find('=') - 1);
  if (!name.starts_with(kParameterCommand)) return {};
  return "Pn" + std::string(name.substr(kParameterCommand.size()));
}

struct TableRow {
  Tool part;
  int row;  // from 1
};

// The row of a table that a line writes, "0POST4=I+100"; nothing for a parameter.
std::optional<TableRow> RowIn(const std::string& line) {
  const std::string_view name = std::string_view(line).substr(1, line.find('=') - 1);
  const std::string_view word = name.substr(0, name.find_first_of("0123456789"));
  const auto isOf = [&](const auto& commands) {
    return std::ranges::find(commands, word, &FieldCommand::word) != std::end(commands);
  };
  const auto row = ParseWhole(name.substr(word.size()));
  if (!row) return std::nullopt;
  const int place = static_cast<int>(*row) + 1;
  if (isOf(kIndexTableCommands)) return TableRow{Tool::position, place};
  if (isOf(kZoneTableCommands)) return TableRow{Tool::zone, place};
  if (isOf(kJogTableCommands)) return TableRow{Tool::jog, place};
  return std::nullopt;
}

std::vector<std::string> ParametersIn(const std::vector<std::string>& lines) {
  std::vector<std::string> parameters;
  for (const std::string& line : lines) {
    std::string strPn = ParameterIn(line);
    if (!strPn.empty()) parameters.push_back(std::move(strPn));
  }
  return parameters;
}

}  // namespace

WrittenCheck::WrittenCheck(SessionState& session) : session_(session) {
  session_.Helix7()->KeepWritten(true);
}

WrittenCheck::~WrittenCheck() {
  session_.Helix7()->KeepWritten(false);
}

bool WrittenCheck::ReadAll(const Progress& progress) {
  const std::vector<std::string> fresh = session_.Helix7()->Written();
  session_.Helix7()->KeepWritten(true);
  lines_.insert(lines_.end(), fresh.begin(), fresh.end());
  std::vector<std::string> different;
  if (Read(fresh, progress, different)) return true;
  session_.OwnProject()->MarkHeldOtherwise({.parameters = ParametersIn(different), .rows = {}});
  return false;
}

bool WrittenCheck::ReadSample() {
  std::vector<std::string> sample;
  const std::size_t count = std::min(kSample, lines_.size());
  for (std::size_t i = 0; i < count; ++i) sample.push_back(lines_[i * lines_.size() / count]);
  std::vector<std::string> different;
  if (Read(
          sample, [](int, int) { return true; }, different))
    return true;
  clsHX7Project::HeldOtherwise lost{.parameters = ParametersIn(different), .rows = {}};
  for (const std::string& line : different) {
    if (const auto row = RowIn(line)) lost.rows[row->part];
  }
  for (const std::string& line : lines_) {
    const auto row = RowIn(line);
    if (row && lost.rows.contains(row->part)) lost.rows[row->part].push_back(row->row);
  }
  session_.OwnProject()->MarkHeldOtherwise(lost);
  return false;
}

bool WrittenCheck::Read(const std::vector<std::string>& lines, const Progress& progress,
                        std::vector<std::string>& different) {
  std::vector<std::string> words;
  const auto total = static_cast<int>(lines.size());
  int count = 0;
  for (const std::string& line : lines) {
    if (!progress(++count, total)) return false;
    std::string held;
    bool equal = false;
    if (session_.Helix7()->ReadBack(line, held, equal) != kSuccess) return false;
    YieldEvents();
    if (equal) continue;
    words.push_back(Difference(line, held));
    different.push_back(line);
  }
  if (words.empty()) return true;
  TellDifferences(words);
  return false;
}

void WrittenCheck::TellDifferences(const std::vector<std::string>& words) {
  std::string reason = words.size() == 1 ? "Read back, one value is not what was sent:"
                                         : "Read back, " + std::to_string(words.size()) +
                                               " values are not what was sent:";
  for (std::size_t i = 0; i < std::min(kNamed, words.size()); ++i) reason += "\r" + words[i];
  if (words.size() > kNamed) {
    reason += "\rand " + std::to_string(words.size() - kNamed) + " more";
  }
  session_.Helix7()->SerialComm().TellFailure({.code = kNoAcknowledge, .reason = reason});
}

}  // namespace velmoor
