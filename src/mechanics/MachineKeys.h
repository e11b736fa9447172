// The machine by words, "measure" and "n1": on the command line and in a project's text.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "mechanics/MachineEdit.h"

namespace velmoor {

struct MachineKey {
  std::string_view name;
  std::string_view row;  // of a MachineEdit
  enum class Form : std::uint8_t { choice, count, whole, number, word } form;
};

// In the order in which they are assigned: a resolution that was asked for stands beside every
// system and encoder.
[[nodiscard]] std::span<const MachineKey> MachineKeys();
// Null where there is none of that name.
[[nodiscard]] const MachineKey* MachineKeyNamed(std::string_view name);

// As it is assigned: "Leadscrew", "5", "mm".
[[nodiscard]] std::string ValueOf(const MachineDescription& machine, const MachineKey& key);

// Takes the value, judged alone; the machine as a whole is judged by its figures when all are
// there. Returns the words of a refusal, or an empty text.
[[nodiscard]] std::string Assign(MachineEdit& edit, const MachineKey& key, const std::string& text);

}  // namespace velmoor
