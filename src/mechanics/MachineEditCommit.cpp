// What a machine under edit asks and tells before its commit, and what it hands over.
#include "mechanics/MachineEdit.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"

namespace velmoor {

bool MachineEdit::ResolutionDirty() const {
  return machine_.resolution != original_.resolution;
}

bool MachineEdit::NeedUpdateOverTravel() const {
  const bool wasRotary = original_.system == kRotaryTable;
  const bool isRotary = machine_.system == kRotaryTable;
  if (wasRotary != isRotary) return true;
  return isRotary && (machine_.length != original_.length || ResolutionDirty());
}

std::string MachineEdit::CommitQuestion() const {
  if (ResolutionDirty() && SystemDirty()) {
    return "Programming resolution and mechanical system have been changed!\r\r"
           "Accepting change would invalidate existing Index Table and Zone Table!\r"
           "Also, existing parameters of numeric values may no longer be valid!\r"
           "(Pn81B-Pn81D and Pn825-Pn828 may no longer be within allowable ranges.)\r\r"
           "Do you wish to accept the change?";
  }
  if (egrDirty_ && !ResolutionDirty()) {
    return "Electronic gear ratio has been changed!\r\r"
           "Existing Index Table entries, Zone Table entries, and\r"
           "Over Travel switch settings may no longer be valid!\r"
           "Please review aforementioned values if changes are accepted.\r\r"
           "Do you wish to accept the change?";
  }
  return {};
}

std::string MachineEdit::CommitInformation() const {
  if (!ResolutionDirty() || SystemDirty()) return {};
  return "Programming resolution has been changed!\r\r"
         "All values have been updated to the new resolution.\r"
         "Please review values to check if changes are acceptable.";
}

void MachineEdit::UpdateCheckSum() {
  if (machine_.length == 0.0F || machine_.n1 == 0 || machine_.n2 == 0) return;
  const std::string checksum = world().rx900Utils->MechSystemChecksum(
      machine_.n1, machine_.n2, machine_.resolution, machine_.length, Value("Pn82E"));
  Put("Pn829", Left(checksum, 8));
  Put("Pn82A", Right(checksum, 8));
}

MechanicalSystemEdit MachineEdit::TakeForCommit() {
  UpdateCheckSum();
  MechanicalSystemEdit edit;
  edit.rows = rows_;
  edit.isDirty = dirty_;
  edit.resolutionDirty = ResolutionDirty() || TimeBaseDirty();
  edit.systemDirty = SystemDirty() && ResolutionDirty();
  edit.needUpdateOverTravel = NeedUpdateOverTravel();
  return edit;
}

}  // namespace velmoor
