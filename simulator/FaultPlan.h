// Misbehaviour on demand: which command lines go wrong, and how.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

enum class FaultKind : std::uint8_t {
  silence,      // neither echo nor answer, and nothing is done
  noAnswer,     // done and echoed, not answered
  lateAnswer,   // answered after the delay
  alteredEcho,  // the last character of the echo is another
  noDelimiter,  // an answer without its "="
  notGood,      // "0NG", and nothing is done
  alarmAnswer,  // "0A.9F"
  junkError,    // "0ZZZZ ERR"
  zeroError,    // "00000 ERR"
  deviceError,  // the axis and the fault's text, "E5A1" where it has none
  wrongAnswer,  // the fault's text as it stands
  noLineEnd,    // the answer without its line end
  halfLine,     // the first half of the answer, without a line end
  garbage,      // noise in place of the answer
  valueAnswer,  // a value in place of the answer, and nothing is done
  unkept,       // acknowledged, and nothing is done
  restart,      // the amplifier restarts in place of doing it: an echo, no answer
  hangUp        // the line vanishes before anything is done
};

struct Fault {
  FaultKind kind = FaultKind::silence;
  std::string match{};  // front of the command without its axis; empty matches every command
  int skip = 0;         // matching commands that pass unharmed first
  int count = 1;        // how many are harmed then; 0 all
  std::chrono::milliseconds delay{6000};  // of a late answer
  std::string text{};
};

class FaultPlan {
 public:
  void Add(Fault fault) { faults_.push_back(std::move(fault)); }
  void Clear() { faults_.clear(); }
  // The fault that this command meets: the first planned one whose turn it is. Every planned fault
  // that matches counts the command.
  std::optional<Fault> Take(std::string_view command);
  [[nodiscard]] const std::vector<Fault>& Planned() const { return faults_; }

 private:
  std::vector<Fault> faults_;
};

// The names of the kinds as they are typed, such as "late".
[[nodiscard]] std::optional<FaultKind> FaultKindOf(std::string_view name);
[[nodiscard]] std::string_view NameOf(FaultKind kind);
// All names, joined by blanks.
[[nodiscard]] std::string FaultNames();

}  // namespace velmoor
