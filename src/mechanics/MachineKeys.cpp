#include "mechanics/MachineKeys.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

using Form = MachineKey::Form;

constexpr std::array<MachineKey, 8> kKeys{{{"system", "Pn82E.2", Form::choice},
                                           {"encoder", "Pn82E.3", Form::count},
                                           {"units", "Pn82E.0", Form::word},
                                           {"time", "Pn82E.1", Form::word},
                                           {"measure", "Pn82F.0", Form::number},
                                           {"n1", "Pn82B", Form::whole},
                                           {"n2", "Pn82C", Form::whole},
                                           {"resolution", "Pn82D", Form::whole}}};

std::string ChooseSystem(MachineEdit& edit, const std::string& text) {
  for (std::int32_t index = 0; index < 5; ++index) {
    if (LowerCase(MechanicalSystemFromIndex(index)) != LowerCase(text)) continue;
    (void)edit.SetSystem(index);
    return {};
  }
  return "'" + text + "' is no mechanical system!";
}

std::string ChooseEncoder(MachineEdit& edit, const std::string& text) {
  for (std::int32_t index = 0; index < 3; ++index) {
    if (NumberText(EncoderCountFromIndex(index)) != text) continue;
    (void)edit.SetEncoder(index);
    return {};
  }
  return "'" + text + "' is no encoder!";
}

}  // namespace

std::span<const MachineKey> MachineKeys() {
  return kKeys;
}

const MachineKey* MachineKeyNamed(std::string_view name) {
  const auto* const found = std::ranges::find(kKeys, name, &MachineKey::name);
  return found == kKeys.end() ? nullptr : found;
}

std::string ValueOf(const MachineDescription& description, const MachineKey& key) {
  const Machine& machine = description.machine;
  if (key.name == "system") return MechanicalSystemFromIndex(machine.system);
  if (key.name == "encoder") return NumberText(machine.encoderCount);
  if (key.name == "units") return description.distanceUnits;
  if (key.name == "time") return description.timeUnits;
  if (key.name == "measure") return NumberText(machine.length);
  if (key.name == "n1") return NumberText(machine.n1);
  return NumberText(key.name == "n2" ? machine.n2 : machine.resolution);
}

std::string Assign(MachineEdit& edit, const MachineKey& key, const std::string& text) {
  if (key.form == Form::choice) return ChooseSystem(edit, text);
  if (key.form == Form::count) return ChooseEncoder(edit, text);
  const MachineCheck check = edit.SetValue(std::string(key.row), text);
  const bool stands = check.Accepted() || check.kind == MachineCheck::Kind::whole;
  // The last line asks or tells what becomes of a window's cell.
  return stands ? std::string() : check.words.substr(0, check.words.find_last_of('\r'));
}

}  // namespace velmoor
