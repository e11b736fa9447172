#include "rehearsal/InputScript.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "platform/Csv.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

struct InputEntry {
  std::string_view name;
  std::string_view word;
  int bit;
  std::uint32_t pn;  // its choice: one is normally open, one normally closed, 2 not used
  std::int64_t closed;
};
constexpr std::int64_t kNotUsed = 2;

// In programme mode.
constexpr InputEntry kInputs[] = {
    {"SEL0", "IN2", 3, 0x806, 1},   {"SEL1", "IN2", 4, 0x807, 1},
    {"SEL2", "IN2", 5, 0x808, 1},   {"SEL3", "IN2", 6, 0x809, 1},
    {"SEL4", "IN2", 7, 0x80A, 1},   {"SEL5", "IN1", 1, 0x833, 1},
    {"SEL6", "IN1", 5, 0x834, 1},   {"START-STOP", "IN2", 1, 0x804, 1},
    {"PGMRES", "IN2", 2, 0x805, 1}, {"RGRT", "IN1", 6, 0x80F, 1},
    {"P-OT", "IN1", 2, 0x80C, 0},   {"N-OT", "IN1", 3, 0x80D, 0},
    {"DEC", "IN1", 4, 0x80E, 1},    {"S-ON", "IN1", 0, 0x80B, 1}};

const InputEntry* Find(std::string_view name) {
  const auto* const found = std::ranges::find(kInputs, name, &InputEntry::name);
  return found == std::end(kInputs) ? nullptr : found;
}

[[noreturn]] void Refuse(std::size_t row, const std::string& words) {
  throw InputScriptError("Row " + NumberText(row) + ": " + words);
}

void ReadTime(const std::string& text, std::size_t row, ScriptedInput& entry) {
  constexpr std::string_view kStep = "step ";
  if (text.starts_with(kStep)) {
    const auto step = ParseWhole(Trim(text.substr(kStep.size())));
    if (!step || *step < 1 || *step > static_cast<std::int64_t>(kIndexRows)) {
      Refuse(row, "'" + text + "' names no step such as \"step 4\"");
    }
    entry.step = static_cast<int>(*step);
    return;
  }
  const auto seconds = ParseFloat(text);
  if (!seconds || *seconds < 0) {
    Refuse(row, "'" + text + "' is no time in seconds, and no step such as \"step 4\"");
  }
  entry.seconds = *seconds;
}

bool ReadState(const std::string& text, std::size_t row) {
  if (text == "on" || text == "1") return true;
  if (text == "off" || text == "0") return false;
  Refuse(row, "'" + text + "' is neither on nor off");
}

}  // namespace

std::vector<ScriptedInput> ReadInputScript(std::string_view csv) {
  std::vector<CsvRow> rows;
  try {
    rows = ParseCsv(csv);
  } catch (const std::runtime_error& error) {
    throw InputScriptError(error.what());
  }
  if (rows.empty() || rows.front() != CsvRow{"at", "input", "state"}) {
    throw InputScriptError("The first line must be at,input,state");
  }
  std::vector<ScriptedInput> script;
  for (std::size_t row = 1; row < rows.size(); ++row) {
    const CsvRow& fields = rows[row];
    if (fields.size() != 3) Refuse(row, "it has not three fields");
    ScriptedInput entry;
    ReadTime(std::string(Trim(fields[0])), row, entry);
    entry.input = UpperCase(Trim(fields[1]));
    if (Find(entry.input) == nullptr) {
      std::string names;
      for (const std::string& name : InputNames()) names += (names.empty() ? "" : ", ") + name;
      Refuse(row, "'" + fields[1] + "' is none of " + names);
    }
    entry.on = ReadState(std::string(Trim(fields[2])), row);
    script.push_back(std::move(entry));
  }
  return script;
}

std::vector<std::string> InputNames() {
  std::vector<std::string> names;
  for (const InputEntry& entry : kInputs) names.emplace_back(entry.name);
  return names;
}

std::optional<InputLine> LineOf(const std::string& input, bool on,
                                const ParameterMemory& parameters) {
  const InputEntry* const entry = Find(input);
  if (entry == nullptr) return std::nullopt;
  const std::int64_t choice = parameters.Value(entry->pn);
  if (choice == kNotUsed) return std::nullopt;
  return InputLine{entry->word, entry->bit, on != (choice == entry->closed)};
}

}  // namespace velmoor
