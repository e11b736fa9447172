#include "mechanics/MachineDescription.h"

#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/Utility.h"
#include "platform/World.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

std::int16_t WholeOf(const std::string& controller) {
  return Narrow<std::int16_t>(Int32FromText(controller));
}

// The four digits of Pn82E: encoder, system, time, distance, from left to right.
std::string Selections(const MachineDescription& description) {
  std::string encoder = "0";
  for (std::int32_t index = 0; index < 3; ++index) {
    if (EncoderCountFromIndex(index) == description.machine.encoderCount) {
      encoder = NumberText(index);
      break;
    }
  }
  return encoder + HexText(static_cast<std::uint32_t>(description.machine.system)) +
         TimeUnitsIndex(description.timeUnits) + DistanceUnitsIndex(description.distanceUnits);
}

}  // namespace

bool MachineDescription::SameGear(const MachineDescription& other) const {
  const Machine& a = machine;
  const Machine& b = other.machine;
  return a.system == b.system && a.length == b.length && a.n1 == b.n1 && a.n2 == b.n2 &&
         a.resolution == b.resolution && a.encoderCount == b.encoderCount;
}

std::string MachineDescription::UnitFault() const {
  const bool rotaryUnits = distanceUnits == "deg" || distanceUnits == "rad";
  if (machine.system >= 0 && machine.system <= 2 && rotaryUnits) {
    return "Selected system cannot have rotary units!";
  }
  if (machine.system == kRotaryTable && !rotaryUnits) {
    return "Selected system cannot have linear units!";
  }
  return {};
}

MachineDescription DescribeMachine(const ParameterStore& store) {
  return DescribeMachine([&store](const char* strPn) { return store.Get(strPn).controller; });
}

MachineDescription DescribeMachine(const ControllerValues& valueOf) {
  const std::string bits = valueOf("Pn82E");
  MachineDescription description;
  Machine& machine = description.machine;
  machine.system = SelectionDigit(bits, 2);
  machine.encoderCount = EncoderCountFromIndex(SelectionDigit(bits, 3));
  machine.n1 = WholeOf(valueOf("Pn82B"));
  machine.n2 = WholeOf(valueOf("Pn82C"));
  machine.resolution = WholeOf(valueOf("Pn82D"));
  machine.length = world().rx900Utils->DecToFloat(valueOf("Pn82F") + valueOf("Pn830"));
  description.timeUnits = TimeUnitsFromIndex(SelectionDigit(bits, 1));
  description.distanceUnits = DistanceUnitsFromIndex(SelectionDigit(bits, 0));
  return description;
}

GearRatio StoredRatio(const ParameterStore& store) {
  return {Int32FromText(store.Get("Pn203").controller),
          Int32FromText(store.Get("Pn202").controller)};
}

ParameterChanges DescriptionChanges(const ParameterStore& store, const MachineChange& change) {
  const Machine& machine = change.to.machine;
  const std::string bits = Selections(change.to);
  const std::string measure = world().rx900Utils->FloatToDec(machine.length);
  ParameterChanges changes;
  const auto put = [&](const char* strPn, const std::string& controller) {
    if (store.Get(strPn).controller == controller) return;
    const Tool by = IsMechSystemPn(strPn) ? Tool::mechanicalSystem : Tool::editor;
    changes[strPn] = {controller, controller, MarkChange::set, by};
  };
  put("Pn82B", NumberText(machine.n1));
  put("Pn82C", NumberText(machine.n2));
  put("Pn82D", NumberText(machine.resolution));
  put("Pn82E", bits);
  put("Pn82F", Left(measure, 8));
  put("Pn830", Right(measure, 8));
  // Terms that were never derived stay, where the description is the one they stand beside.
  if (change.ratio.a > 0 && change.ratio.b > 0) {
    put("Pn202", NumberText(change.ratio.b));
    put("Pn203", NumberText(change.ratio.a));
  }
  if (machine.length != 0.0F && machine.n1 != 0 && machine.n2 != 0) {
    const std::string checksum = world().rx900Utils->MechSystemChecksum(
        machine.n1, machine.n2, machine.resolution, machine.length, bits);
    put("Pn829", Left(checksum, 8));
    put("Pn82A", Right(checksum, 8));
  }
  return changes;
}

}  // namespace velmoor
