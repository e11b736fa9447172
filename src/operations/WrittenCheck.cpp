#include "operations/WrittenCheck.h"

#include <algorithm>

#include "link/CommandWords.h"
#include "link/LinkFailure.h"
#include "platform/Events.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr int kCharactersOfAnExchange = 25;
constexpr int kBitsOfACharacter = 11;
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

}  // namespace

WrittenCheck::WrittenCheck(SessionState& session) : session_(session) {
  session_.Helix7()->KeepWritten(true);
}

WrittenCheck::~WrittenCheck() {
  session_.Helix7()->KeepWritten(false);
}

int WrittenCheck::Seconds(int values, std::int32_t bitsPerSecond) {
  const std::int64_t rate = std::max(1, bitsPerSecond);
  const std::int64_t bits = std::int64_t{values} * kCharactersOfAnExchange * kBitsOfACharacter;
  return static_cast<int>((bits + rate - 1) / rate);
}

bool WrittenCheck::ReadAll(const Progress& progress) {
  const std::vector<std::string> fresh = session_.Helix7()->Written();
  session_.Helix7()->KeepWritten(true);
  lines_.insert(lines_.end(), fresh.begin(), fresh.end());
  return Read(fresh, progress);
}

bool WrittenCheck::ReadSample() {
  std::vector<std::string> sample;
  const std::size_t count = std::min(kSample, lines_.size());
  for (std::size_t i = 0; i < count; ++i) sample.push_back(lines_[i * lines_.size() / count]);
  return Read(sample, [](int, int) { return true; });
}

bool WrittenCheck::Read(const std::vector<std::string>& lines, const Progress& progress) {
  std::vector<std::string> words;
  std::vector<std::string> parameters;
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
    const std::string strPn = ParameterIn(line);
    if (!strPn.empty()) parameters.push_back(strPn);
  }
  if (words.empty()) return true;
  session_.OwnProject()->MarkParameters(parameters);
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
