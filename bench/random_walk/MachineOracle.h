// What has to become of a machine that somebody enters, told by arithmetic of its own: the gear
// terms, the range of resolutions, the records of the file, or the words of the refusal.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace velmoor::walk {

// In the order in which the amplifier counts them.
inline constexpr std::array<const char*, 5> kSystems{"Leadscrew", "Tangential/Belt Drive",
                                                     "Material Feeder", "Rotary Table", "Other"};
inline constexpr std::array<const char*, 6> kUnits{"cm", "mm", "inch", "ft", "deg", "rad"};
inline constexpr std::array<const char*, 3> kEncoders{"2048", "16384", "32768"};

// A description as it is typed.
struct TypedMachine {
  int system = 0;  // among kSystems
  std::string measure = "5";
  std::string n1 = "1";
  std::string n2 = "1";
  std::string resolution = "3";
  std::string units = "mm";
  std::string time = "seconds";
  std::string encoder = "2048";

  // "system=Leadscrew measure=5 n1=1 ...", a word an assignment.
  [[nodiscard]] std::vector<std::string> Assignments() const;
  [[nodiscard]] std::string Text() const;
};

[[nodiscard]] std::string SystemName(int system);
// Travel of a turn for one of the measure.
[[nodiscard]] double MultiplierOf(const TypedMachine& machine);
[[nodiscard]] inline bool IsRotary(int system) {
  return system == 3;
}

struct Judgement {
  bool valid = false;
  // A difference of the last bit decides, or the rules leave it open; `reason` tells.
  bool doubtful = false;
  std::string reason;
  // What a refusal may say: one of these, line ends as blanks.
  std::vector<std::string> words;
  long a = 0, b = 0;
  bool hasRange = false;
  int low = 0, high = 0;
  // What the amplifier takes, by parameter: the description, its checksum and the gear terms.
  std::map<std::string, std::string> records;
};

[[nodiscard]] Judgement Judge(const TypedMachine& machine);

// A row of the project that is shown in units.
struct UnitRow {
  std::string text;
  std::string count;
};
struct ExpectedRow {
  std::vector<std::string> texts;  // any of these; empty: whatever means its count
  std::string count;               // empty: whatever its text means
};

// What a change of machine makes of the row `pn`, which lies within the counts `low` to `high`.
[[nodiscard]] ExpectedRow AfterChange(const std::string& pn, const UnitRow& row,
                                      const TypedMachine& before, const TypedMachine& after,
                                      long low, long high);

}  // namespace velmoor::walk
