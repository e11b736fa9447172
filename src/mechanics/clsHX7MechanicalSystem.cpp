#include "mechanics/clsHX7MechanicalSystem.h"

#include "mechanics/frmMechanicalSystem.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/MachineUnits.h"
#include "session/Session.h"

namespace velmoor {

clsHX7MechanicalSystem::clsHX7MechanicalSystem(ParameterStore& store)
    : store_(store), frm_(std::make_unique<frmMechanicalSystem>(store)) {
  connections_ += store_.Changed.Connect([this] { frm_->StoreChanged(); });
  connections_ += frm_->ChangeAccepted.Connect([this] {
    if (!Accept(frm_->Edit())) return frm_->CommitFailed();
    frm_->Committed();
  });
  connections_ += frm_->Closed.Connect([this] { MechanicalSystemClosed.Raise(); });
}

clsHX7MechanicalSystem::~clsHX7MechanicalSystem() {
  connections_.Clear();
}

bool clsHX7MechanicalSystem::Show_MechanicalSystem() {
  return frm_->Show("Mechanical System", FormMode::modal);
}

void clsHX7MechanicalSystem::Unload_MechanicalSystem() {
  frm_->Unload();
}

GridWindow& clsHX7MechanicalSystem::Window() {
  return *frm_;
}

std::int16_t clsHX7MechanicalSystem::RowsInArray() const {
  return Narrow<std::int16_t>(MachineEdit::Rows());
}

std::int32_t clsHX7MechanicalSystem::SelectedSystem() const {
  return Description().machine.system;
}

std::string clsHX7MechanicalSystem::SelectedSystemName() const {
  return MechanicalSystemFromIndex(SelectedSystem());
}

double clsHX7MechanicalSystem::FeedConstant() const {
  return FeedConstantOf(Description().machine);
}

bool clsHX7MechanicalSystem::Accept(const MachineEdit& edit) {
  const bool stored = Trapped("clsMechanicalSystem.SaveToDB: ", [&] {
    OpenedProject().CommitMachine(edit.Wanted());
    return true;
  });
  if (stored) {
    MechanicalSystemOKed.Raise();
  } else {
    ShowExclamation("Error writing Mechanical System parameters to project file!");
  }
  return stored;
}

}  // namespace velmoor
